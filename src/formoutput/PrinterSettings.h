#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/spooler/PrintDestination.h"
#include "store/AppPath.h"

namespace tallymar {

// Which printer the program prints to, and where the form pages and soft fonts go, which are sent raw: to that printer, to
// another printer's own port, or into a file. Kept in the user's folder as Printer.dat, three quoted lines.
struct PrinterSettings {
    std::string Printer;   // a queue; empty: none has been chosen
    PrintDestination Raw;  // Kind::None: to the printer

    PrintDestination RawTo() const;

    friend bool operator==(const PrinterSettings&, const PrinterSettings&) = default;
};

// Where they are kept.
std::filesystem::path PrinterSettingsFile(const std::filesystem::path& folder);
// As they were saved; none without a file, or with one that says nothing usable.
std::optional<PrinterSettings> SavedPrinterSettings(const std::filesystem::path& folder);
// The same or else the print service's default printer, if it has one.
PrinterSettings LoadPrinterSettings(const std::filesystem::path& folder);
// Failures as SequentialWriter's.
void SavePrinterSettings(const std::filesystem::path& folder, const PrinterSettings& settings);

// A destination as it stands before a print.
struct PrintTarget {
    PrintDestination To;
    bool TakesPcl = true;   // else pages go to it as PDF
    bool TakesPdf = false;  // the print service makes of a PDF what the printer understands
    std::string Says;       // "The printer \"HP4\", which prints PCL"
};
// Asks the print service about a queue. Failures: those of AbilitiesOf; DeviceError when no printer has been chosen; those of
// RequireNoFormFile.
PrintTarget LookAt(const PrintDestination& to, const AppPath& paths, const std::filesystem::path& folder);
// Failure::InvalidCall for a printer that has no use for soft fonts.
void RequireTakesSoftFonts(const PrintTarget& target);
// Failure::InvalidCall for a printer that takes pages neither raw nor as PDF.
void RequireTakesPages(const PrintTarget& target);

}  // namespace tallymar
