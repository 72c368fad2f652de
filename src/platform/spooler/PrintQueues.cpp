#include "platform/spooler/PrintQueues.h"

#include <algorithm>
#include <string_view>

#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::string_view kRawQueue = "RAW";
constexpr std::string_view kPclFormat = "APPLICATION/VND.HP-PCL";

// The value of a key of a device id: "CMD:PCL,PJL;" has "PCL,PJL" at "CMD".
std::string_view ValueOf(std::string_view deviceId, std::string_view key) {
    while (!deviceId.empty()) {
        const std::string_view entry = Trim(deviceId.substr(0, deviceId.find(';')));
        deviceId.remove_prefix(std::min(deviceId.find(';'), deviceId.size() - 1) + 1);
        if (entry.size() > key.size() && entry.starts_with(key) && entry[key.size()] == ':') return entry.substr(key.size() + 1);
    }
    return {};
}

// PCL 5 and what speaks it too: "PCL", "PCL4", "PCL5e", "PCL5c", "PCL6". PCLXL alone is another language, and PCL3GUI is rasters
// only.
bool IsPcl(std::string_view language) {
    return language == "PCL" || language.starts_with("PCL4") || language.starts_with("PCL5") || language == "PCL6";
}

bool HasWord(std::string_view text, bool (*isIt)(std::string_view)) {
    constexpr std::string_view kBetween = " ,/()-";
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(kBetween), text.size());
        if (isIt(text.substr(0, end))) return true;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
}

}  // namespace

bool IsRaw(const QueueAbilities& queue) {
    return HasWord(UCase(queue.MakeAndModel), [](std::string_view word) { return word == kRawQueue; });
}

bool TakesPcl(const QueueAbilities& queue) {
    const std::string id = UCase(queue.DeviceId);
    std::string_view languages = ValueOf(id, "CMD");
    if (languages.empty()) languages = ValueOf(id, "COMMAND SET");
    if (!languages.empty()) return HasWord(languages, IsPcl);
    if (IsRaw(queue) || HasWord(UCase(queue.MakeAndModel), IsPcl)) return true;
    // The print service lists for a queue of its own what it can make something of; a PCL printer on the network names PCL.
    return std::any_of(queue.Formats.begin(), queue.Formats.end(),
                       [](const std::string& format) { return UCase(format) == kPclFormat; });
}

}  // namespace tallymar
