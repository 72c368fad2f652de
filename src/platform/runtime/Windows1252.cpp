#include "platform/runtime/Windows1252.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace tallymar {

namespace {

// What 0x80 to 0x9F stand for; everywhere else the byte is the code point.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr unsigned char Byte(char c) {
    return static_cast<unsigned char>(c);
}

constexpr char32_t CodePointOf(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? char32_t(kUpperControls[byte - 0x80]) : char32_t(byte);
}

// The byte of a character, or -1.
int ByteOf(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<int>(character);
    for (std::size_t i = 0; i < kUpperControls.size(); ++i) {
        if (kUpperControls[i] == character) return static_cast<int>(0x80 + i);
    }
    return -1;
}

// Nearly all text is plain ASCII; eight characters are looked at in one step.
std::size_t AsciiPrefix(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080u;
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t eight;
        std::memcpy(&eight, text.data() + i, 8);
        if ((eight & kHighBits) != 0) break;
    }
    while (i < text.size() && Byte(text[i]) < 0x80) ++i;
    return i;
}

struct Decoded {
    char32_t Character;
    std::size_t Length;  // bytes consumed, at least one
    bool Valid;
};

// The character at the start of utf8. Overlong forms, surrogates and what lies beyond U+10FFFF are malformed; of a malformed
// sequence as much is consumed as could have begun a character.
Decoded Decode(std::string_view utf8) {
    const unsigned char lead = Byte(utf8[0]);
    std::size_t following = 0;
    char32_t character = 0;
    unsigned char least = 0x80;
    unsigned char most = 0xBF;
    if (lead < 0x80) {
        return {lead, 1, true};
    } else if (lead >= 0xC2 && lead <= 0xDF) {
        following = 1;
        character = lead & 0x1Fu;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        following = 2;
        character = lead & 0x0Fu;
        if (lead == 0xE0) least = 0xA0;
        if (lead == 0xED) most = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        following = 3;
        character = lead & 0x07u;
        if (lead == 0xF0) least = 0x90;
        if (lead == 0xF4) most = 0x8F;
    } else {
        return {0, 1, false};
    }
    for (std::size_t i = 1; i <= following; ++i) {
        if (i >= utf8.size() || Byte(utf8[i]) < least || Byte(utf8[i]) > most) return {0, i, false};
        character = (character << 6) | (Byte(utf8[i]) & 0x3Fu);
        least = 0x80;
        most = 0xBF;
    }
    return {character, following + 1, true};
}

constexpr std::array<char, 256> CaseTable(bool toUpper) {
    std::array<char, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<char>(i);
    const auto pair = [&](std::size_t upper, std::size_t lower) {
        table[toUpper ? lower : upper] = static_cast<char>(toUpper ? upper : lower);
    };
    for (std::size_t c = 'A'; c <= 'Z'; ++c) pair(c, c + 0x20);
    for (std::size_t c = 0xC0; c <= 0xDE; ++c) {
        if (c != 0xD7) pair(c, c + 0x20);  // D7 and F7 are the signs of multiplication and division
    }
    pair(0x8A, 0x9A);
    pair(0x8C, 0x9C);
    pair(0x8E, 0x9E);
    pair(0x9F, 0xFF);
    return table;
}

constexpr std::array<char, 256> kToUpper = CaseTable(true);
constexpr std::array<char, 256> kToLower = CaseTable(false);

}  // namespace

void AppendUtf8(std::string_view windows1252, std::string& out) {
    for (;;) {
        const std::size_t plain = AsciiPrefix(windows1252);
        out.append(windows1252.substr(0, plain));
        if (plain == windows1252.size()) return;
        const char32_t character = CodePointOf(Byte(windows1252[plain]));
        if (character < 0x800) {
            out += static_cast<char>(0xC0 | (character >> 6));
        } else {
            out += static_cast<char>(0xE0 | (character >> 12));
            out += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        }
        out += static_cast<char>(0x80 | (character & 0x3F));
        windows1252.remove_prefix(plain + 1);
    }
}

std::string ToUtf8(std::string_view windows1252) {
    std::string out;
    out.reserve(windows1252.size());
    AppendUtf8(windows1252, out);
    return out;
}

std::string FromUtf8(std::string_view utf8, bool* lossy) {
    std::string out;
    out.reserve(utf8.size());
    for (;;) {
        const std::size_t plain = AsciiPrefix(utf8);
        out.append(utf8.substr(0, plain));
        if (plain == utf8.size()) return out;
        utf8.remove_prefix(plain);
        const Decoded decoded = Decode(utf8);
        const int byte = decoded.Valid ? ByteOf(decoded.Character) : -1;
        if (byte < 0 && lossy != nullptr) *lossy = true;
        out += byte < 0 ? '?' : static_cast<char>(byte);
        utf8.remove_prefix(decoded.Length);
    }
}

bool LooksLikeUtf8(std::string_view text) {
    for (bool hasLetters = false;; hasLetters = true) {
        text.remove_prefix(AsciiPrefix(text));
        if (text.empty()) return hasLetters;
        const Decoded decoded = Decode(text);
        if (!decoded.Valid) return false;
        text.remove_prefix(decoded.Length);
    }
}

bool IsInWindows1252(char32_t character) {
    return ByteOf(character) >= 0;
}

char ToUpper(char c) {
    return kToUpper[Byte(c)];
}

char ToLower(char c) {
    return kToLower[Byte(c)];
}

std::string UCase(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = ToUpper(c);
    return out;
}

std::string LCase(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = ToLower(c);
    return out;
}

std::string_view RTrim(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view LTrim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view Trim(std::string_view text) {
    return LTrim(RTrim(text));
}

}  // namespace tallymar
