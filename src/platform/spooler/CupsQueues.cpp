#include <algorithm>
#include <memory>
#include <string_view>

#include "platform/runtime/Windows1252.h"
#include "platform/spooler/CupsConnection.h"
#include "platform/spooler/PrintQueues.h"

namespace tallymar {

namespace {

constexpr const char* kAsked[] = {"printer-device-id", "printer-make-and-model", "document-format-supported"};

struct DeleteIpp {
    void operator()(ipp_t* message) const { ippDelete(message); }
};

std::string TextOf(ipp_t* message, const char* name) {
    ipp_attribute_t* attribute = ippFindAttribute(message, name, IPP_TAG_ZERO);
    const char* text = attribute != nullptr ? ippGetString(attribute, 0, nullptr) : nullptr;
    return text != nullptr ? FromUtf8(text) : std::string();
}

}  // namespace

std::vector<PrintQueue> PrintQueues() {
    const CupsConnection http = ConnectToCups();
    std::vector<PrintQueue> queues;
    if (!http) return queues;
    cups_dest_t* found = nullptr;
    const int count = cupsGetDests2(http.get(), &found);
    for (int i = 0; i < count; ++i) {
        const cups_dest_t& one = found[i];
        if (one.instance != nullptr) continue;  // the same queue with other options, which a raw print does not have
        const auto option = [&](const char* name) {
            const char* text = cupsGetOption(name, one.num_options, one.options);
            return text != nullptr ? FromUtf8(text) : std::string();
        };
        std::string description = option("printer-info");
        if (description.empty() || description == one.name) description = option("printer-make-and-model");
        queues.push_back({one.name, description, one.is_default != 0});
    }
    cupsFreeDests(count, found);
    std::sort(queues.begin(), queues.end(),
              [](const PrintQueue& a, const PrintQueue& b) { return LCase(a.Name) < LCase(b.Name); });
    return queues;
}

bool IsPrintQueue(const std::string& name) {
    const std::vector<PrintQueue> queues = PrintQueues();
    return std::any_of(queues.begin(), queues.end(), [&](const PrintQueue& queue) { return queue.Name == name; });
}

QueueAbilities AbilitiesOf(const std::string& queue) {
    const CupsConnection http = RequireCups();
    ipp_t* request = ippNewRequest(IPP_OP_GET_PRINTER_ATTRIBUTES);
    char address[HTTP_MAX_URI];
    httpAssembleURIf(HTTP_URI_CODING_ALL, address, sizeof(address), "ipp", nullptr, "localhost", 0, "/printers/%s",
                     queue.c_str());
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, address);
    ippAddStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", static_cast<int>(std::size(kAsked)),
                  nullptr, kAsked);
    const std::unique_ptr<ipp_t, DeleteIpp> answer(cupsDoRequest(http.get(), request, "/"));
    if (!answer || cupsLastError() > IPP_STATUS_OK_EVENTS_COMPLETE) throw CupsFailure(queue);
    QueueAbilities abilities{TextOf(answer.get(), kAsked[0]), TextOf(answer.get(), kAsked[1]), {}};
    if (ipp_attribute_t* formats = ippFindAttribute(answer.get(), kAsked[2], IPP_TAG_MIMETYPE)) {
        for (int i = 0; i < ippGetCount(formats); ++i) abilities.Formats.emplace_back(ippGetString(formats, i, nullptr));
    }
    return abilities;
}

}  // namespace tallymar
