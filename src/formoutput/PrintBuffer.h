#pragma once

#include <array>
#include <filesystem>
#include <string_view>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

// The bytes of a form page's values on their way to the printer: the lines of the file from the second one on, each without its
// first two characters when it has more than two, with CR and LF, and a form feed behind the last one.
class PrintBuffer {
 public:
    static constexpr std::size_t kSize = 4096;

    // Appends the page. No file: nothing. Failure::SubscriptOutOfRange when the page is longer than what is left; the buffer is
    // then full with as much of it as has room. Failures of reading: those of ReadValuesFile.
    void Fill(const std::filesystem::path& values);
    void Clear();

    std::string_view Bytes() const { return {bytes_.data(), count_}; }

 private:
    void Append(std::string_view bytes);

    std::array<char, kSize> bytes_{};
    std::size_t count_ = 0;
};

// How many bytes a print of the page sends behind its blank; 0 without a file. More than PrintBuffer::kSize do not fit.
std::size_t PrintedLength(const std::filesystem::path& values);

}  // namespace tallymar
