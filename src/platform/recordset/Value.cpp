#include "platform/recordset/Value.h"

#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::recordset {

void Value::Fail() const {
    throw PlatformError(IsNull() ? Failure::InvalidUseOfNull : Failure::TypeMismatch);
}

bool operator==(const Value& a, const Value& b) {
    if (a.kind_ != b.kind_) return false;
    switch (a.kind_) {
        case Value::Kind::Null:
            return true;
        case Value::Kind::Text:
            return a.Text() == b.Text();
        case Value::Kind::Date:
            return a.real_ == b.real_;
        default:
            return a.whole_ == b.whole_;
    }
}

std::string Value::ToText() const {
    switch (kind_) {
        case Kind::Null:
            return {};
        case Kind::Text:
            return std::string(Text());
        case Kind::Date:
            return FormatShortDate(AsDate());
        case Kind::Currency:
            return Currency().ToText();
        case Kind::Integer:
            return std::to_string(whole_);
        case Kind::Boolean:
            return whole_ != 0 ? "True" : "False";
    }
    return {};
}

}  // namespace tallymar::recordset
