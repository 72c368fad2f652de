#include "platform/recordset/Value.h"

#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::recordset {

namespace {

void Require(Value::Kind held, Value::Kind wanted) {
    if (held == wanted) return;
    throw PlatformError(held == Value::Kind::Null ? Failure::InvalidUseOfNull : Failure::TypeMismatch);
}

}  // namespace

std::string_view Value::Text() const {
    Require(kind_, Kind::Text);
    return text_;
}

tallymar::Date Value::AsDate() const {
    Require(kind_, Kind::Date);
    return tallymar::Date::FromSerial(real_);
}

CurrencyAmount Value::Currency() const {
    Require(kind_, Kind::Currency);
    return CurrencyAmount::FromTenThousandths(whole_);
}

std::int16_t Value::Integer() const {
    Require(kind_, Kind::Integer);
    return static_cast<std::int16_t>(whole_);
}

bool Value::Boolean() const {
    Require(kind_, Kind::Boolean);
    return whole_ != 0;
}

std::string Value::ToText() const {
    switch (kind_) {
        case Kind::Null:
            return {};
        case Kind::Text:
            return std::string(text_);
        case Kind::Date:
            return FormatShortDate(tallymar::Date::FromSerial(real_));
        case Kind::Currency:
            return CurrencyAmount::FromTenThousandths(whole_).ToText();
        case Kind::Integer:
            return std::to_string(whole_);
        case Kind::Boolean:
            return whole_ != 0 ? "True" : "False";
    }
    return {};
}

}  // namespace tallymar::recordset
