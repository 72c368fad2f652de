#pragma once

#include <cstdint>
#include <string_view>

namespace tallymar {

// Numbers in the data of commands, the high byte first. The caller has looked that they are there.
inline int PclByte(std::string_view data, std::size_t at) {
    return static_cast<unsigned char>(data[at]);
}
inline int PclSigned8(std::string_view data, std::size_t at) {
    return static_cast<std::int8_t>(data[at]);
}
inline int PclUnsigned16(std::string_view data, std::size_t at) {
    return PclByte(data, at) << 8 | PclByte(data, at + 1);
}
inline int PclSigned16(std::string_view data, std::size_t at) {
    return static_cast<std::int16_t>(PclUnsigned16(data, at));
}

}  // namespace tallymar
