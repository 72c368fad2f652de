#include "loans/DueDates.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr int kFirstYear = 100;  // the calendar's
constexpr int kLastYear = 9999;
constexpr int kFirstYearOfLastCentury = 21;
constexpr int kHalfMonth = 15;
constexpr int kHalfMonthsAYear = 24;

int MonthLength(int year, int month) {
    constexpr std::array<int, 12> kLengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && year % 4 == 0 ? 29 : kLengths.at(static_cast<std::size_t>(month - 1));
}

DueDate MonthsAfter(const DueDate& date, int months) {
    const int count = date.Month - 1 + months;
    DueDate later{date.Year + count / 12, count % 12 + 1, date.Day};
    later.Day = std::min(later.Day, MonthLength(later.Year, later.Month));
    return later;
}

DueDate DaysAfter(DueDate date, int days) {
    date.Day += days;
    while (date.Day > MonthLength(date.Year, date.Month)) {
        date.Day -= MonthLength(date.Year, date.Month);
        if (++date.Month > 12) {
            date.Month = 1;
            ++date.Year;
        }
    }
    return date;
}

int DayNumber(const DueDate& date) {
    int number = date.Year * 365 + (date.Year + 3) / 4 + date.Day;
    for (int month = 1; month < date.Month; ++month) number += MonthLength(date.Year, month);
    return number;
}

struct Group {
    int Value = 0;
    std::size_t Digits = 0;
};

// The three numbers of a date; nullopt when the text is anything else.
std::optional<std::array<Group, 3>> ThreeNumbers(std::string_view text) {
    std::string_view separators = " ";  // before the first number; a sign is none
    std::array<Group, 3> groups;
    for (Group& group : groups) {
        text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), group.Value);
        if (error != std::errc()) return std::nullopt;
        group.Digits = static_cast<std::size_t>(end - text.data());
        text.remove_prefix(group.Digits);
        separators = "/-. ";
    }
    if (text.find_first_not_of(' ') != std::string_view::npos) return std::nullopt;
    return groups;
}

}  // namespace

Date DueDate::AsDate() const {
    if (Year > kLastYear) throw PlatformError(Failure::Overflow, "The schedule runs past the year 9999");
    return Date::FromYmd(Year, Month, Date::IsCalendarDay(Year, Month, Day) ? Day : Day - 1);
}

std::optional<DueDate> ReadDueDate(std::string_view text) {
    const auto numbers = ThreeNumbers(text);
    if (!numbers) return std::nullopt;
    auto [first, second, third] = *numbers;
    if (first.Digits == 4) {
        const Group year = first;
        first = second;
        second = third;
        third = year;
    } else if (third.Digits <= 2) {
        third.Value += third.Value < kFirstYearOfLastCentury ? 2000 : 1900;
    }
    const DueDate date{third.Value, first.Value, second.Value};
    const bool exists = date.Year >= kFirstYear && date.Year <= kLastYear && date.Month >= 1 && date.Month <= 12 &&
                        date.Day >= 1 && date.Day <= MonthLength(date.Year, date.Month);
    return exists ? std::optional(date) : std::nullopt;
}

int DaysFromTo(const DueDate& from, const DueDate& to) {
    return DayNumber(to) - DayNumber(from);
}

void DueDates::MoveNext() {
    ++moves_;
    if (perYear_ == kHalfMonthsAYear) {
        current_ = MonthsAfter(first_, moves_ / 2);
        if (moves_ % 2 != 0) current_ = DaysAfter(current_, kHalfMonth);
    } else if (12 % perYear_ == 0) {
        current_ = MonthsAfter(first_, moves_ * (12 / perYear_));
    } else {
        current_ = DaysAfter(current_, std::max(1, (365 + perYear_ / 2) / perYear_));
    }
}

}  // namespace tallymar
