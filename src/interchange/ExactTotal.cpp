#include "interchange/ExactTotal.h"

#include <algorithm>

namespace tallymar {

std::string ExactTotal::ToText() const {
    constexpr int kDecimals = 4;
    // From the right; the digits of a negative number are taken one by one, for the least has no positive counterpart.
    std::string text;
    int place = 0;
    for (Wide rest = count_; rest != 0 || place <= kDecimals; rest /= 10, ++place) {
        const int digit = static_cast<int>(rest % 10);
        if (place == kDecimals && !text.empty()) text += '.';
        if (place >= kDecimals || digit != 0 || !text.empty()) text += static_cast<char>('0' + (digit < 0 ? -digit : digit));
    }
    if (count_ < 0) text += '-';
    std::reverse(text.begin(), text.end());
    return text;
}

}  // namespace tallymar
