// The list of update sites, an address that somebody types or a page points to, and what a page says of the current release.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/runtime/PlatformError.h"
#include "shell/UpdateSites.h"

using namespace tallymar;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    try {
        const UpdateSites sites = UpdateSites::Parse(input, "update.txt");
        if (sites.Sites.empty() || sites.Sites.size() > 4 || !sites.Follow(sites.Page)) std::abort();
    } catch (const PlatformError&) {
        // What is no such list is refused.
    }
    static const UpdateSites kSites{"https://update.tallymar.example/", {"update.tallymar.example"}};
    if (const auto address = kSites.Follow(input)) {
        const auto host = HostOf(*address);
        if (!host || !host->ends_with("update.tallymar.example") || address->find('@') != std::string::npos) std::abort();
    }
    const std::string version = VersionNamed(input);
    if (version.size() > 19) std::abort();
    IsNewerVersion(input, "1.4");
    return 0;
}
