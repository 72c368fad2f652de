#include "interchange/FieldText.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

using recordset::FieldType;
using recordset::Value;

constexpr char kSerialMark = '@';

// A moment by its days alone, for those that have no calendar form of their own.
std::optional<Date> ParseSerial(std::string_view text) {
    if (!text.starts_with(kSerialMark)) return std::nullopt;
    text.remove_prefix(1);
    double days = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), days);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(days)) return std::nullopt;
    return Date::FromSerial(days);
}

std::string DateField(Date date) {
    std::string text;
    try {
        text = FormatIsoDate(date);
    } catch (const PlatformError&) {
        // Outside the calendar.
    }
    if (!text.empty() && ParseIsoDate(text) == date) return text;
    char digits[32];
    const auto written = std::to_chars(digits, digits + sizeof digits, date.Serial());
    return kSerialMark + std::string(digits, written.ptr);
}

// "6/30/2003". A year of two digits would be a guess.
std::optional<Date> ParseUnitedStatesDate(std::string_view text) {
    const std::size_t year = text.rfind('/');
    const bool isPlain = text.find_first_not_of("0123456789/") == std::string_view::npos;
    if (!isPlain || year == std::string_view::npos || text.size() - year - 1 != 4) return std::nullopt;
    return ParseDate(text, Date());
}

// " $ 1,250.00 " and "(1,250.00)" as "1250.00" and "-1250.00". A text whose commas do not stand between thousands, or with a sign
// that is out of place, comes back as it is, to be refused.
std::string PlainAmount(std::string_view text) {
    std::string_view rest = Trim(text);
    bool negative = false;
    if (rest.starts_with('(') && rest.ends_with(')')) {
        negative = true;
        rest = rest.substr(1, rest.size() - 2);
    } else if (rest.starts_with('-')) {
        negative = true;
        rest.remove_prefix(1);
    }
    if (rest.starts_with('$')) rest = Trim(rest.substr(1));
    if (rest.empty() || rest.find_first_not_of("0123456789,.") != std::string_view::npos) return std::string(text);

    const std::string_view whole = rest.substr(0, rest.find('.'));
    std::string plain = negative ? "-" : "";
    if (whole.find(',') != std::string_view::npos) {
        for (std::size_t i = 0; i < whole.size(); ++i) {
            if ((whole[i] == ',') != (i > 0 && (whole.size() - i) % 4 == 0)) return std::string(text);
        }
        if (whole.front() == ',') return std::string(text);
    }
    for (const char c : whole) {
        if (c != ',') plain += c;
    }
    return plain.append(rest.substr(whole.size()));
}

bool HasMoreThanFourDecimals(std::string_view number) {
    const std::size_t point = number.find('.');
    return point != std::string_view::npos && number.size() - point - 1 > 4;
}

[[noreturn]] void Refuse(Failure failure, std::string_view utf8, const std::string& complaint) {
    throw PlatformError(failure, QuotedFieldText(utf8) + " " + complaint);
}

// Every command reads the parts of a date.
Date RequireCalendar(Date date, std::string_view utf8) {
    try {
        date.Year();
        return date;
    } catch (const PlatformError& failure) {
        Refuse(failure.Code(), utf8, "is not within the years 100 to 9999");
    }
}

Value ParseText(const recordset::Field& field, std::string_view utf8, std::string& buffer) {
    bool lossy = false;
    buffer = FromUtf8(utf8, &lossy);
    if (lossy) Refuse(Failure::TypeMismatch, utf8, "has a character that Windows-1252 does not have (shown as ?)");
    if (buffer.empty() && !field.AllowZeroLength) throw PlatformError(Failure::ZeroLengthNotAllowed, "the text may not be empty");
    if (buffer.size() > static_cast<std::size_t>(field.Size)) {
        Refuse(Failure::FieldTooSmall, utf8,
               "has " + std::to_string(buffer.size()) + " characters; the column holds " + std::to_string(field.Size));
    }
    return Value(buffer);
}

Value ParseInteger(std::string_view utf8) {
    std::int16_t number = 0;
    const auto [end, error] = std::from_chars(utf8.data(), utf8.data() + utf8.size(), number);
    if (error == std::errc::result_out_of_range) Refuse(Failure::Overflow, utf8, "is not within -32768 to 32767");
    if (error != std::errc() || end != utf8.data() + utf8.size()) Refuse(Failure::TypeMismatch, utf8, "is no whole number");
    return Value(number);
}

}  // namespace

std::string QuotedFieldText(std::string_view utf8) {
    constexpr std::size_t kLongestQuoted = 60;
    if (utf8.size() > kLongestQuoted) return "A text of " + std::to_string(utf8.size()) + " bytes";
    std::string quoted = "\"";
    for (const char c : FromUtf8(utf8)) quoted += IsControl(c) ? '?' : c;
    return quoted + '"';
}

Value ParseFieldText(const recordset::Field& field, std::string_view utf8, std::string& buffer) {
    switch (field.Type) {
        case FieldType::Text:
            return ParseText(field, utf8, buffer);
        case FieldType::Date: {
            std::optional<Date> date = ParseIsoDate(utf8);
            if (!date) date = ParseUnitedStatesDate(utf8);
            if (!date) date = ParseSerial(utf8);
            if (!date) Refuse(Failure::TypeMismatch, utf8, "is no date of the form YYYY-MM-DD or m/d/yyyy");
            return Value(RequireCalendar(*date, utf8));
        }
        case FieldType::Currency: {
            const std::string plain = PlainAmount(utf8);
            const std::optional<CurrencyAmount> amount = CurrencyAmount::Parse(plain);
            if (!amount || HasMoreThanFourDecimals(plain)) {
                Refuse(Failure::TypeMismatch, utf8, "is no amount (digits, a point, at most four decimals)");
            }
            return Value(*amount);
        }
        case FieldType::Integer:
            return ParseInteger(utf8);
        case FieldType::Boolean:
            if (UCase(utf8) == "TRUE" || UCase(utf8) == "YES") return Value(true);
            if (UCase(utf8) == "FALSE" || UCase(utf8) == "NO") return Value(false);
            Refuse(Failure::TypeMismatch, utf8, "is neither True nor False");
    }
    throw PlatformError(Failure::TypeMismatch);
}

Value NullFieldValue(const recordset::Field& field) {
    if (field.Type == FieldType::Boolean) {
        throw PlatformError(Failure::InvalidUseOfNull, "True or False is wanted, and the field is empty");
    }
    return Value();
}

void AppendFieldText(const Value& value, std::string& utf8) {
    switch (value.Type()) {
        case Value::Kind::Null:
            break;
        case Value::Kind::Text:
            AppendUtf8(value.Text(), utf8);
            break;
        case Value::Kind::Date:
            utf8 += DateField(value.AsDate());
            break;
        case Value::Kind::Currency:
            utf8 += value.Currency().ToText();
            break;
        case Value::Kind::Integer:
            utf8 += std::to_string(value.Integer());
            break;
        case Value::Kind::Boolean:
            utf8 += value.Boolean() ? "True" : "False";
            break;
    }
}

}  // namespace tallymar
