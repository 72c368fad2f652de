#include "platform/spooler/CupsConnection.h"

#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr int kToConnect = 10000;  // milliseconds
constexpr double kToAnswer = 30;   // seconds

}  // namespace

CupsConnection ConnectToCups() {
    CupsConnection http(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, kToConnect, nullptr));
    // A service that stops answering ends the request instead of holding the window for ever.
    if (http) {
        httpSetTimeout(
            http.get(), kToAnswer, [](http_t*, void*) { return 0; }, nullptr);
    }
    return http;
}

CupsConnection RequireCups() {
    CupsConnection http = ConnectToCups();
    if (!http) throw PlatformError(Failure::DeviceError, "The print service does not answer");
    return http;
}

PlatformError CupsFailure(const std::string& queue) {
    const char* said = cupsLastErrorString();
    return PlatformError(Failure::DeviceError, "The printer \"" + queue + "\" did not take the print: " +
                                                   FromUtf8(said != nullptr ? said : "no reason given"));
}

}  // namespace tallymar
