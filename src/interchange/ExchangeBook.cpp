#include "interchange/ExchangeBook.h"

#include <algorithm>
#include <string>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

int ExchangeBook(std::string_view name) {
    const auto found = std::find(kExchangeBooks.begin(), kExchangeBooks.end(), name);
    if (found == kExchangeBooks.end())
        throw PlatformError(Failure::InvalidCall, "There is no book \"" + std::string(name) + "\"");
    return static_cast<int>(found - kExchangeBooks.begin());
}

}  // namespace tallymar
