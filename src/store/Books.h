#pragma once

#include <array>
#include <string_view>

#include "platform/runtime/PerBook.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

// One of the four books in which every asset is depreciated side by side.
struct BookInfo {
    std::string_view Name;           // in messages and on the command line
    std::string_view ShortName;      // in headings and lists
    std::string_view YearEndColumn;  // of the company: the book's fiscal year end
};

inline constexpr std::array<BookInfo, kLastBook> kBooks = {{
    {"Federal", "Federal", "FYEFederal"},
    {"State", "State", "FYEState"},
    {"Bookkeeping", "Book", "FYEBook"},
    {"A.M.T.", "AMT", "FYEAMT"},
}};

// By the book's number; Failure::SubscriptOutOfRange outside 1 to 4.
constexpr const BookInfo& BookOf(int book) {
    if (book < kFirstBook || book > kLastBook) throw PlatformError(Failure::SubscriptOutOfRange);
    return kBooks[static_cast<std::size_t>(book - kFirstBook)];
}

// A company without a year end in a book depreciates nothing there: every command that needs one says so.
inline constexpr std::string_view kYearEndsMissing = "Company fiscal year end dates\nhave not been set up properly";

}  // namespace tallymar
