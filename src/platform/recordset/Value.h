#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"

namespace tallymar::recordset {

// What a field holds: Null or one value of the field's type. A text is a view: one read from a recordset lasts until the
// recordset moves, one handed to SetField only for that call.
class Value {
 public:
    enum class Kind : std::uint8_t { Null, Text, Date, Currency, Integer, Boolean };

    constexpr Value() = default;  // Null
    constexpr Value(std::string_view text) : kind_(Kind::Text), text_(text) {}
    constexpr Value(const char* text) : Value(std::string_view(text)) {}
    Value(const std::string& text) : Value(std::string_view(text)) {}
    constexpr Value(tallymar::Date date) : kind_(Kind::Date), real_(date.Serial()) {}
    constexpr Value(CurrencyAmount amount) : kind_(Kind::Currency), whole_(amount.TenThousandths()) {}
    constexpr Value(std::int16_t number) : kind_(Kind::Integer), whole_(number) {}
    constexpr Value(bool flag) : kind_(Kind::Boolean), whole_(flag ? -1 : 0) {}
    // What would otherwise slide into one of the above unasked.
    Value(int) = delete;
    Value(double) = delete;

    constexpr Kind Type() const { return kind_; }
    constexpr bool IsNull() const { return kind_ == Kind::Null; }
    constexpr bool IsDate() const { return kind_ == Kind::Date; }

    // Each fails with Failure::InvalidUseOfNull on Null and with Failure::TypeMismatch on a value of another kind.
    std::string_view Text() const;
    tallymar::Date AsDate() const;
    CurrencyAmount Currency() const;
    std::int16_t Integer() const;
    bool Boolean() const;

    // As the old run time showed a value joined to a text: Null is "", a Boolean "True" or "False", a date FormatShortDate.
    std::string ToText() const;

    friend bool operator==(const Value&, const Value&) = default;

 private:
    Kind kind_ = Kind::Null;
    std::int64_t whole_ = 0;
    double real_ = 0.0;
    std::string_view text_;
};

}  // namespace tallymar::recordset
