#pragma once

#include <array>
#include <string_view>

namespace tallymar {

// What an exchange of assets is of: the whole company or one book.
inline constexpr std::array<std::string_view, 5> kExchangeBooks = {"Company", "Federal", "State", "Book", "AMT"};

// 0 for "Company", 1 to 4 for "Federal", "State", "Book" and "AMT"; InvalidCall for anything else.
int ExchangeBook(std::string_view name);

}  // namespace tallymar
