#include "formoutput/PrinterSettings.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "formoutput/FormFiles.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/SequentialFile.h"
#include "platform/spooler/PrintQueues.h"
#include "platform/spooler/Spooler.h"

namespace tallymar {

namespace {

using Kind = PrintDestination::Kind;
constexpr auto kKinds = std::to_array<std::pair<Kind, std::string_view>>({
    {Kind::None, "printer"},
    {Kind::Port, "port"},
    {Kind::File, "file"},
});

std::string DefaultPrinter() {
    const std::vector<PrintQueue> queues = PrintQueues();
    const auto found = std::find_if(queues.begin(), queues.end(), [](const PrintQueue& queue) { return queue.IsDefault; });
    return found == queues.end() ? std::string() : found->Name;
}

PrintDestination RawOf(std::string_view kind, const std::string& text) {
    if (kind == "file" && !text.empty()) return PrintDestination::File(text);
    if (kind == "port") return PrintDestination::Parse(text, [](const std::string&) { return false; });
    return {};
}

}  // namespace

PrintDestination PrinterSettings::RawTo() const {
    if (Raw.To() != Kind::None || Printer.empty()) return Raw;
    return PrintDestination::Queue(Printer);
}

std::filesystem::path PrinterSettingsFile(const std::filesystem::path& folder) {
    return folder / "Printer.dat";
}

std::optional<PrinterSettings> SavedPrinterSettings(const std::filesystem::path& folder) {
    try {
        SequentialReader reader(PrinterSettingsFile(folder));
        PrinterSettings settings;
        settings.Printer = reader.ReadText();
        const std::string kind = reader.ReadText();
        settings.Raw = RawOf(kind, reader.ReadText());
        return settings;
    } catch (const PlatformError&) {
        return std::nullopt;
    }
}

PrinterSettings LoadPrinterSettings(const std::filesystem::path& folder) {
    if (auto saved = SavedPrinterSettings(folder)) return *saved;
    return {.Printer = DefaultPrinter(), .Raw = {}};
}

void SavePrinterSettings(const std::filesystem::path& folder, const PrinterSettings& settings) {
    if (settings.Raw.Text().find('"') != std::string::npos) {
        throw PlatformError(Failure::InvalidCall, "The file's name holds a double quote, which the settings cannot");
    }
    SequentialWriter writer(PrinterSettingsFile(folder));
    writer.WriteQuotedLine(settings.Printer);
    const auto kind = std::find_if(kKinds.begin(), kKinds.end(), [&](const auto& one) { return one.first == settings.Raw.To(); });
    writer.WriteQuotedLine(kind == kKinds.end() ? kKinds.front().second : kind->second);
    writer.WriteQuotedLine(settings.Raw.Text());
    writer.Close();
}

PrintTarget LookAt(const PrintDestination& to, const AppPath& paths, const std::filesystem::path& folder) {
    switch (to.To()) {
        case Kind::Queue: {
            const QueueAbilities queue = AbilitiesOf(to.QueueName());
            PrintTarget target{to, TakesPcl(queue), !IsRaw(queue), "The printer \"" + to.QueueName() + "\", which "};
            target.Says += target.TakesPcl   ? "prints PCL"
                           : target.TakesPdf ? "is no PCL printer: it gets the page as PDF"
                                             : "prints neither PCL nor PDF: the page can be saved as a PDF file";
            return target;
        }
        case Kind::Port:
            return {to, true, false, "The printer at " + to.Text()};
        case Kind::File:
            RequireNoFormFile(to.FilePath(), paths, folder);
            return {to, true, false, "The file " + to.Text() + ", which is replaced"};
        case Kind::None:
            break;
    }
    throw NoPrinterChosen();
}

void RequireTakesSoftFonts(const PrintTarget& target) {
    if (target.TakesPcl) return;
    throw PlatformError(Failure::InvalidCall,
                        "The printer \"" + target.To.QueueName() + "\" is no PCL printer: it has no use for soft fonts");
}

void RequireTakesPages(const PrintTarget& target) {
    if (!target.TakesPcl && !target.TakesPdf) throw PlatformError(Failure::InvalidCall, target.Says);
}

}  // namespace tallymar
