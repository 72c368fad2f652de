#include "platform/runtime/DateText.h"

#include <array>
#include <charconv>
#include <optional>

#include "platform/runtime/Clock.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"january", "february", "march",     "april",   "may",      "june",
                                                      "july",    "august",   "september", "october", "november", "december"};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string Digits(int value, std::size_t width) {
    std::string digits = std::to_string(value);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return digits;
}

int ToNumber(std::string_view digits) {
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

// 1 to 12 for a month's name, whole or its first three letters (and "Sept"); 0 for another word.
int MonthOf(std::string_view word) {
    const std::string lower = LCase(word);
    if (lower == "sept") return 9;
    for (std::size_t i = 0; i < kMonths.size(); ++i) {
        if (lower == kMonths[i] || lower == kMonths[i].substr(0, 3)) return static_cast<int>(i) + 1;
    }
    return 0;
}

class Cursor {
 public:
    explicit Cursor(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }
    char Peek() const { return rest_.empty() ? '\0' : rest_.front(); }
    bool Accept(char c) {
        if (Peek() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }
    bool AcceptBlanks() {
        const std::string_view before = rest_;
        rest_ = LTrim(rest_);
        return rest_.size() < before.size();
    }
    std::string_view TakeDigits() { return TakeWhile(IsDigit); }
    std::string_view TakeWord() { return TakeWhile(IsLetter); }

 private:
    std::string_view TakeWhile(bool (*belongs)(char)) {
        std::size_t length = 0;
        while (length < rest_.size() && belongs(rest_[length])) ++length;
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }

    std::string_view rest_;
};

struct TimeOfDay {
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

// "2:05 PM", "14:05:30", "2 PM": all that is left of the text.
std::optional<TimeOfDay> TakeTime(Cursor& cursor) {
    const auto twoDigits = [&cursor](int limit) -> std::optional<int> {
        const std::string_view digits = cursor.TakeDigits();
        if (digits.empty() || digits.size() > 2 || ToNumber(digits) >= limit) return std::nullopt;
        return ToNumber(digits);
    };
    const std::optional<int> hour = twoDigits(24);
    if (!hour) return std::nullopt;
    TimeOfDay time{.Hour = *hour};
    const bool hasMinutes = cursor.Accept(':');
    if (hasMinutes) {
        const std::optional<int> minute = twoDigits(60);
        if (!minute) return std::nullopt;
        time.Minute = *minute;
        if (cursor.Accept(':')) {
            const std::optional<int> second = twoDigits(60);
            if (!second) return std::nullopt;
            time.Second = *second;
        }
    }
    cursor.AcceptBlanks();
    const std::string half = UCase(cursor.TakeWord());
    if (!cursor.AtEnd()) return std::nullopt;
    if (half.empty()) return hasMinutes ? std::optional(time) : std::nullopt;
    if ((half != "AM" && half != "PM") || time.Hour < 1 || time.Hour > 12) return std::nullopt;
    time.Hour = time.Hour % 12 + (half == "PM" ? 12 : 0);
    return time;
}

// One part of a date as typed, with what stands before it.
struct Part {
    std::string_view Text;
    bool IsWord = false;
    bool AfterComma = false;
};

struct Parts {
    std::array<Part, 3> Items;
    std::size_t Count = 0;
    std::optional<TimeOfDay> Time;
};

// Up to three numbers or words and perhaps a time after them; nullopt when the text has another shape.
std::optional<Parts> TakeApart(std::string_view text) {
    Parts parts;
    Cursor cursor(text);
    bool afterComma = false;
    bool timeMayFollow = false;
    for (;;) {
        if (timeMayFollow) {
            Cursor ahead = cursor;
            parts.Time = TakeTime(ahead);
            if (parts.Time) return parts;
        }
        if (parts.Count == parts.Items.size()) return std::nullopt;
        const std::string_view word = cursor.TakeWord();
        const std::string_view taken = word.empty() ? cursor.TakeDigits() : word;
        if (taken.empty()) return std::nullopt;
        parts.Items[parts.Count++] = {.Text = taken, .IsWord = !word.empty(), .AfterComma = afterComma};

        const bool blanks = cursor.AcceptBlanks();
        if (cursor.AtEnd()) return parts;
        afterComma = cursor.Accept(',');
        const bool apart = afterComma || cursor.Accept('/') || cursor.Accept('-') || cursor.Accept('.');
        cursor.AcceptBlanks();
        if (cursor.AtEnd()) return std::nullopt;
        timeMayFollow = blanks && !apart;
    }
}

std::optional<int> YearOf(std::string_view digits) {
    const int year = ToNumber(digits);
    if (digits.size() == 4) return year;
    if (digits.size() > 2) return std::nullopt;
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<int> MonthOrDayOf(std::string_view digits) {
    if (digits.size() > 2) return std::nullopt;
    return ToNumber(digits);
}

std::optional<Date> DayOf(std::optional<int> year, std::optional<int> month, std::optional<int> day) {
    if (!year || !month || !day || !Date::IsCalendarDay(*year, *month, *day)) return std::nullopt;
    return Date::FromYmd(*year, *month, *day);
}

std::optional<Date> DayOf(const Parts& parts, Date today) {
    const auto& items = parts.Items;
    std::size_t named = parts.Count;
    for (std::size_t i = 0; i < parts.Count; ++i) {
        if (!items[i].IsWord) continue;
        if (named != parts.Count || i == 2) return std::nullopt;
        named = i;
    }

    if (named != parts.Count) {
        if (parts.Count < 2 || items[1].AfterComma) return std::nullopt;
        const std::optional<int> day = MonthOrDayOf(items[1 - named].Text);
        const std::optional<int> year = parts.Count == 3 ? YearOf(items[2].Text) : today.Year();
        return DayOf(year, MonthOf(items[named].Text), day);
    }
    for (std::size_t i = 0; i < parts.Count; ++i) {
        if (items[i].AfterComma) return std::nullopt;
    }
    const std::string_view first = items[0].Text;
    if (parts.Count == 1) {
        if (first.size() != 6 && first.size() != 8) return std::nullopt;
        return DayOf(YearOf(first.substr(4)), ToNumber(first.substr(0, 2)), ToNumber(first.substr(2, 2)));
    }
    if (parts.Count == 2) return DayOf(today.Year(), MonthOrDayOf(first), MonthOrDayOf(items[1].Text));
    if (first.size() == 4) return DayOf(YearOf(first), MonthOrDayOf(items[1].Text), MonthOrDayOf(items[2].Text));
    return DayOf(YearOf(items[2].Text), MonthOrDayOf(first), MonthOrDayOf(items[1].Text));
}

}  // namespace

std::string FormatShortDate(Date date) {
    const Clock clock = ClockOf(date);
    std::string text;
    if (!clock.IsEpochDay) {
        text = std::to_string(clock.Month) + '/' + std::to_string(clock.Day) + '/' + Digits(clock.Year, 4);
        if (clock.IsMidnight()) return text;
        text += ' ';
    }
    text += std::to_string((clock.Hour + 11) % 12 + 1);
    text += ':' + Digits(clock.Minute, 2) + ':' + Digits(clock.Second, 2);
    text += clock.Hour < 12 ? " AM" : " PM";
    return text;
}

std::optional<Date> ParseDate(std::string_view text, Date today) {
    const std::optional<Parts> parts = TakeApart(Trim(text));
    if (!parts) return std::nullopt;
    const std::optional<Date> day = DayOf(*parts, today);
    if (!day || !parts->Time) return day;
    return AtTime(*day, parts->Time->Hour, parts->Time->Minute, parts->Time->Second);
}

std::string FormatIsoDate(Date date) {
    const Clock clock = ClockOf(date);
    std::string text = Digits(clock.Year, 4) + '-' + Digits(clock.Month, 2) + '-' + Digits(clock.Day, 2);
    if (!clock.IsMidnight()) {
        text += 'T' + Digits(clock.Hour, 2) + ':' + Digits(clock.Minute, 2) + ':' + Digits(clock.Second, 2);
    }
    return text;
}

std::optional<Date> ParseIsoDate(std::string_view text) {
    constexpr std::string_view kShape = "0000-00-00T00:00:00";
    if (text.size() != kShape.size() && text.size() != kShape.find('T')) return std::nullopt;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kShape[i] == '0' ? !IsDigit(text[i]) : text[i] != kShape[i]) return std::nullopt;
    }
    const std::optional<Date> day = DayOf(ToNumber(text.substr(0, 4)), ToNumber(text.substr(5, 2)), ToNumber(text.substr(8, 2)));
    if (!day || text.size() < kShape.size()) return day;
    const int hour = ToNumber(text.substr(11, 2));
    const int minute = ToNumber(text.substr(14, 2));
    const int second = ToNumber(text.substr(17, 2));
    if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return AtTime(*day, hour, minute, second);
}

}  // namespace tallymar
