#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/prompts/Prompts.h"
#include "store/AssetRecord.h"
#include "store/CompanySession.h"

namespace tallymar {

// One command that may change any asset: every row in order of AssetNum is read, handed to `change`, and written when that says
// so. One batch: rows done before a failure stay, and after a crash none or all are changed. A failure comes as PlatformError
// with the asset's number before its text and, after it, how many assets were changed before. Returns how many were changed.
std::int64_t ChangeAssets(CompanySession& session, Prompts& prompts, const std::function<bool(AssetRecord&)>& change);

// The filter by in-service year of the commands that change assets.
// COMPAT: the year that it is compared with is 0 for every asset, so blank and 0 select all and any other year selects none.
bool SelectsYear(std::string_view year);

// Fails with InvalidCall, naming the field, unless book is 1 to 4.
void RequireBook(int book, std::string_view field);

// "Number of Assets changed 3"
std::string NumberChangedText(std::int64_t count);

}  // namespace tallymar
