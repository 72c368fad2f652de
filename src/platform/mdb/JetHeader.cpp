#include "platform/mdb/JetHeader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <utility>

namespace tallymar::mdb {

namespace {

constexpr std::string_view kName("Standard Jet DB\0", 16);
constexpr std::size_t kNameAt = 0x04;
constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kHiddenAt = 0x18;  // from here on the header is enciphered, with the same key in every file
constexpr std::size_t kCodePageAt = 0x3C;
constexpr std::size_t kPageKeyAt = 0x3E;
constexpr std::size_t kPasswordAt = 0x42;
constexpr std::size_t kDateAt = 0x72;  // of creation, a double; the mask of a Jet 4 password

constexpr std::size_t kHiddenLength3 = 126;
constexpr std::size_t kHiddenLength4 = 128;
constexpr std::size_t kPasswordLength3 = 20;
constexpr std::size_t kPasswordLength4 = 40;

static_assert(std::endian::native == std::endian::little, "the fields are read as they lie");

template <typename T>
T At(std::string_view bytes, std::size_t offset) {
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

// RC4, in place.
void Decipher(char* bytes, std::size_t length) {
    constexpr std::array<unsigned, 4> kKey = {0xC7, 0xDA, 0x39, 0x6B};
    std::array<unsigned char, 256> state;
    std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
    for (unsigned i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + kKey[i % kKey.size()]) % 256;
        std::swap(state[i], state[j]);
    }
    unsigned j = 0;
    for (unsigned n = 0; n < length; ++n) {
        const unsigned i = (n + 1) % 256;
        j = (j + state[i]) % 256;
        std::swap(state[i], state[j]);
        bytes[n] = static_cast<char>(bytes[n] ^ state[(state[i] + state[j]) % 256]);
    }
}

// Jet 4 lays the day of creation over the password, four bytes wide, so that an empty one is not all zeros.
std::uint32_t PasswordMask(std::string_view header) {
    const double day = At<double>(header, kDateAt);
    return day > -1e9 && day < 1e9 ? static_cast<std::uint32_t>(static_cast<std::int32_t>(day)) : 0;
}

bool HoldsPassword(std::string_view header, bool jet3) {
    const std::uint32_t mask = jet3 ? 0 : PasswordMask(header);
    const std::size_t end = kPasswordAt + (jet3 ? kPasswordLength3 : kPasswordLength4);
    for (std::size_t at = kPasswordAt; at < end; at += sizeof mask) {
        if (At<std::uint32_t>(header, at) != mask) return true;
    }
    return false;
}

}  // namespace

std::optional<JetHeader> JetHeader::Parse(std::string_view bytes) {
    if (bytes.size() < kLength || bytes.substr(kNameAt, kName.size()) != kName) return std::nullopt;
    JetHeader header;
    const auto version = At<std::uint32_t>(bytes, kVersionAt);
    if (version > 1) return header;
    header.Version = version == 0 ? 3 : 4;

    std::array<char, kLength> plain;
    std::copy_n(bytes.begin(), kLength, plain.begin());
    Decipher(plain.data() + kHiddenAt, version == 0 ? kHiddenLength3 : kHiddenLength4);
    const std::string_view fields(plain.data(), plain.size());
    header.CodePage = At<std::uint16_t>(fields, kCodePageAt);
    header.IsEncoded = At<std::uint32_t>(fields, kPageKeyAt) != 0;
    header.HasPassword = HoldsPassword(fields, version == 0);
    return header;
}

std::string RefusalOf(const JetHeader& header, std::uintmax_t fileSize) {
    constexpr int kCodePage = 1252;
    if (header.Version == 0) return "is a Jet database of a version that cannot be read; only 3 and 4 can";
    if (header.HasPassword || header.IsEncoded) {
        const std::string what = !header.IsEncoded    ? "has a database password"
                                 : header.HasPassword ? "has a database password and encoded pages"
                                                      : "has encoded pages";
        return what + "; it can be read once that has been taken off with the program that set it";
    }
    // Jet 4 keeps text as Unicode, whatever its code page.
    if (header.Version == 3 && header.CodePage != kCodePage) {
        return "keeps its text in code page " + std::to_string(header.CodePage) + "; only " + std::to_string(kCodePage) +
               " can be read";
    }
    if (fileSize % header.PageSize() != 0) return "is cut short: its last page is not whole";
    return {};
}

}  // namespace tallymar::mdb
