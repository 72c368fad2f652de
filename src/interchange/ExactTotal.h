#pragma once

#include <string>

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// The sum of as many amounts as there are, exact where a CurrencyAmount would overflow.
class ExactTotal {
 public:
    void Add(CurrencyAmount amount) { count_ += amount.TenThousandths(); }
    // As CurrencyAmount writes it.
    std::string ToText() const;

    friend bool operator==(const ExactTotal&, const ExactTotal&) = default;

 private:
    __extension__ using Wide = __int128;

    Wide count_ = 0;
};

}  // namespace tallymar
