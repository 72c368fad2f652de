#include "platform/runtime/FileName.h"

#include <algorithm>

namespace tallymar {

std::string AsFileName(std::string_view text) {
    static constexpr std::string_view kRefused = "/\\:*?\"<>|";
    static constexpr std::string_view kNotAtAnEnd = " .";
    const std::size_t first = text.find_first_not_of(kNotAtAnEnd);
    if (first == std::string_view::npos) return {};
    std::string name(text.substr(first, text.find_last_not_of(kNotAtAnEnd) - first + 1));
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || kRefused.find(c) != std::string_view::npos; }, '-');
    return name;
}

}  // namespace tallymar
