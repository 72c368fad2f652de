#pragma once

#include <string>
#include <string_view>

namespace tallymar {

// A text, such as a company's name, as a file name that every file system takes, this one's and that of a stick it is carried
// on: what they refuse becomes a "-", dots and blanks at the ends go. May come out empty. Windows-1252, as the text.
std::string AsFileName(std::string_view text);

}  // namespace tallymar
