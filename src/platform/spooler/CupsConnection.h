#pragma once

#include <cups/cups.h>

#include <memory>
#include <string>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

struct CloseCups {
    void operator()(http_t* http) const { httpClose(http); }
};
using CupsConnection = std::unique_ptr<http_t, CloseCups>;

// A connection to the print service of this user (CUPS_SERVER and client.conf tell which); null when there is none.
CupsConnection ConnectToCups();
// The same, or Failure::DeviceError.
CupsConnection RequireCups();

// What the print service said last, about a queue.
PlatformError CupsFailure(const std::string& queue);

}  // namespace tallymar
