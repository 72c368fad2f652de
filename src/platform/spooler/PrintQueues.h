#pragma once

#include <string>
#include <vector>

namespace tallymar {

// A queue of the print service (CUPS).
struct PrintQueue {
    std::string Name;
    std::string Description;  // its make and model, or what its owner calls it; may be empty
    bool IsDefault = false;
};

// The queues that the print service knows, by name; none when there is no print service.
std::vector<PrintQueue> PrintQueues();
bool IsPrintQueue(const std::string& name);

// What a queue says of the printer behind it.
struct QueueAbilities {
    std::string DeviceId;              // IEEE 1284: "MFG:...;CMD:PCL,PJL;"
    std::string MakeAndModel;          // "Local Raw Printer" of a queue that hands everything on as it is
    std::vector<std::string> Formats;  // MIME types
};

// Does it print PCL 5 sent raw? By the languages of its device id; without one, a raw queue does, one whose name says PCL, and
// one that takes application/vnd.hp-PCL by itself. What can only print what the print service has made of it does not.
bool TakesPcl(const QueueAbilities& queue);
// Does it hand everything on as it is? Then a PDF is for the printer itself to understand.
bool IsRaw(const QueueAbilities& queue);
// Asks the print service. Failure::DeviceError, with one line, when it does not answer or knows no such queue.
QueueAbilities AbilitiesOf(const std::string& queue);

}  // namespace tallymar
