#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/Date.h"

namespace tallymar {

// The default date text of a United States desk: "8/15/2003"; with a time of day "8/15/2003 2:05:00 PM"; date 0, which has
// neither, is "12:00:00 AM".
std::string FormatShortDate(Date date);

// The date that a United States user typed: month, day and year separated by "/", "-", "." or blanks; month names, whole or their
// first three letters (or "Sept"), in any case, before or after the day, with or without a comma; year first when it has four
// digits (2003-08-15); a month and day alone mean the year of `today`; six or eight digits alone are mmddyy and mmddyyyy.
// Two-digit years 00 to 29 are 20xx, 30 to 99 are 19xx. A time of day after it ("2:05 PM") is taken along. nullopt for anything
// else, and for a day that the calendar does not have: day and month are never exchanged to make sense of a text.
std::optional<Date> ParseDate(std::string_view text, Date today);
inline std::optional<Date> ParseDate(std::string_view text) {
    return ParseDate(text, Today());
}

// YYYY-MM-DD, the form of files; no other form is read. A time of day follows as "THH:MM:SS" when there is one. Whole days come
// back exactly, times to the second.
std::string FormatIsoDate(Date date);
std::optional<Date> ParseIsoDate(std::string_view text);

}  // namespace tallymar
