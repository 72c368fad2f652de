#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tallymar::mdb {

// What the first page of a Jet file says of the rest. Passwords and encoding are read here because libmdb passes over both.
struct JetHeader {
    static constexpr std::size_t kLength = 0x98;  // of the bytes that it is read from

    int Version = 0;  // 3, 4; 0 for one not known
    int CodePage = 0;
    bool HasPassword = false;
    bool IsEncoded = false;

    std::size_t PageSize() const { return Version == 3 ? 2048 : 4096; }

    // nullopt when these bytes do not begin a Jet file.
    static std::optional<JetHeader> Parse(std::string_view bytes);
};

// Why a file with this header and of this size is not read, as the second half of a sentence that begins with the file's name;
// empty when it is.
std::string RefusalOf(const JetHeader& header, std::uintmax_t fileSize);

}  // namespace tallymar::mdb
