#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

// What a print sends of a values file: its lines from the second one on, each without its first two characters when it has more
// than two, with CR and LF, and a form feed behind the last one. No file: nothing. Failures: those of ReadValuesFile.
std::string PrintedValues(const std::filesystem::path& values);

// Those bytes on their way to the printer.
class PrintBuffer {
 public:
    static constexpr std::size_t kSize = 4096;  // COMPAT: a page of more lacks its end

    // Appends the page. Failure::SubscriptOutOfRange when it is longer than what is left; the buffer is then full with as much of
    // it as has room. Failures of reading: those of PrintedValues.
    void Fill(const std::filesystem::path& values);
    void Clear();

    std::string_view Bytes() const { return {bytes_.data(), count_}; }

 private:
    std::array<char, kSize> bytes_{};
    std::size_t count_ = 0;
};

}  // namespace tallymar
