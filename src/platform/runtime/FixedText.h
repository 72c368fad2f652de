#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tallymar {

// Exactly N characters, left-justified, padded with blanks or cut.
template <std::size_t N>
class FixedText {
 public:
    FixedText() { characters_.fill(' '); }
    explicit FixedText(std::string_view text) { Assign(text); }
    FixedText& operator=(std::string_view text) {
        Assign(text);
        return *this;
    }

    std::string_view View() const { return {characters_.data(), N}; }  // at full width
    std::string_view Trimmed() const {                                 // without the trailing blanks
        const std::string_view all = View();
        return all.substr(0, all.find_last_not_of(' ') + 1);
    }
    std::string ToString() const { return std::string(View()); }
    bool IsBlank() const { return Trimmed().empty(); }

    friend bool operator==(const FixedText&, const FixedText&) = default;
    friend bool operator==(const FixedText& a, std::string_view b) { return a.View() == b; }

 private:
    void Assign(std::string_view text) {
        const std::size_t length = std::min(N, text.size());
        std::copy_n(text.data(), length, characters_.data());
        std::fill(characters_.begin() + static_cast<std::ptrdiff_t>(length), characters_.end(), ' ');
    }

    std::array<char, N> characters_;
};

}  // namespace tallymar
