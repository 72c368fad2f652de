#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"

namespace tallymar::recordset {

// What a field holds: Null or one value of the field's type. A text is a view: one read from a recordset lasts until the
// recordset moves, one handed to Set only for that call. Two words long, so that it is handed over in registers: a pass over a
// company makes hundreds of them a row.
class Value {
 public:
    enum class Kind : std::uint8_t { Null, Text, Date, Currency, Integer, Boolean };

    constexpr Value() = default;  // Null
    constexpr Value(std::string_view text)
        : text_(text.data()), length_(static_cast<std::uint32_t>(text.size())), kind_(Kind::Text) {}
    constexpr Value(const char* text) : Value(std::string_view(text)) {}
    Value(const std::string& text) : Value(std::string_view(text)) {}
    constexpr Value(tallymar::Date date) : real_(date.Serial()), kind_(Kind::Date) {}
    constexpr Value(CurrencyAmount amount) : whole_(amount.TenThousandths()), kind_(Kind::Currency) {}
    constexpr Value(std::int16_t number) : whole_(number), kind_(Kind::Integer) {}
    constexpr Value(bool flag) : whole_(flag ? -1 : 0), kind_(Kind::Boolean) {}
    // What would otherwise slide into one of the above unasked.
    Value(int) = delete;
    Value(double) = delete;

    constexpr Kind Type() const { return kind_; }
    constexpr bool IsNull() const { return kind_ == Kind::Null; }
    constexpr bool IsDate() const { return kind_ == Kind::Date; }

    // Each fails with Failure::InvalidUseOfNull on Null and with Failure::TypeMismatch on a value of another kind.
    std::string_view Text() const {
        Require(Kind::Text);
        return {text_, length_};
    }
    tallymar::Date AsDate() const {
        Require(Kind::Date);
        return tallymar::Date::FromSerial(real_);
    }
    CurrencyAmount Currency() const {
        Require(Kind::Currency);
        return CurrencyAmount::FromTenThousandths(whole_);
    }
    std::int16_t Integer() const {
        Require(Kind::Integer);
        return static_cast<std::int16_t>(whole_);
    }
    bool Boolean() const {
        Require(Kind::Boolean);
        return whole_ != 0;
    }

    // As the old run time showed a value joined to a text: Null is "", a Boolean "True" or "False", a date FormatShortDate.
    std::string ToText() const;

    friend bool operator==(const Value& a, const Value& b);

 private:
    void Require(Kind wanted) const {
        if (kind_ != wanted) Fail();
    }
    [[noreturn]] void Fail() const;

    union {
        std::int64_t whole_ = 0;
        double real_;
        const char* text_;
    };
    std::uint32_t length_ = 0;  // of the text
    Kind kind_ = Kind::Null;
};

}  // namespace tallymar::recordset
