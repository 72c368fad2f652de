#pragma once

#include <string>
#include <string_view>

namespace tallymar {

// Text in memory is Windows-1252, one byte a character. These convert where it leaves memory.
// The five bytes that the code page leaves undefined (81, 8D, 8F, 90, 9D) stand for the C1 control of the same number, both ways,
// so that every byte survives.
std::string ToUtf8(std::string_view windows1252);
void AppendUtf8(std::string_view windows1252, std::string& out);

// A character that Windows-1252 does not have, or a malformed sequence, becomes "?"; *lossy is then set to true.
std::string FromUtf8(std::string_view utf8, bool* lossy = nullptr);

// Is it well-formed UTF-8 that is not all ASCII? A text in Windows-1252 hardly ever is.
bool LooksLikeUtf8(std::string_view text);

bool IsInWindows1252(char32_t character);

// A character that neither prints nor is a blank: 00 to 1F, 7F, and the five that the code page leaves undefined.
constexpr bool IsControl(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < 0x20 || code == 0x7F || code == 0x81 || code == 0x8D || code == 0x8F || code == 0x90 || code == 0x9D;
}

// Letter case and trimming of Windows-1252 text, accented letters included.
char ToUpper(char c);
char ToLower(char c);
std::string UCase(std::string_view text);
std::string LCase(std::string_view text);
std::string_view RTrim(std::string_view text);
std::string_view LTrim(std::string_view text);
std::string_view Trim(std::string_view text);  // blanks only, as all three

}  // namespace tallymar
