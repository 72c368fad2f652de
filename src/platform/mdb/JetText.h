#pragma once

#include <string>
#include <string_view>

namespace tallymar::mdb {

// A text as Jet 4 stores it: UTF-16, or, after the bytes FF FE, compressed. `text` becomes its Windows-1252 form, with "?" for
// what that does not have; returned is the first such character, 0 when there is none, U+FFFD where the bytes are no character.
char32_t DecodeJet4Text(std::string_view stored, std::string& text);

}  // namespace tallymar::mdb
