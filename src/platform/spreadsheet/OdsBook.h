#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/spreadsheet/SheetParser.h"

namespace tallymar::sheets {

inline constexpr const char* kOdsContent = "content.xml";

// Fails with UnrecognizedFormat when the workbook is protected by a password.
void RequireOdsReadable(Parts& parts);

// The rows of the first sheet in an .ods, from its content; `named` hears the sheet's name, in UTF-8.
std::unique_ptr<SheetParser> ParseOdsSheet(std::function<void(std::string_view)> named);

}  // namespace tallymar::sheets
