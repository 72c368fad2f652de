// Workbooks of spreadsheet programs, damaged. An input that begins as a zip file is one; any other is the parts of a workbook,
// each after a line "=== NAME", so that what is changed gets past the packing.

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/PlatformError.h"
#include "platform/spreadsheet/SheetReader.h"
#include "platform/spreadsheet/ZipParts.h"
#include "support/Workbooks.h"

namespace {

using namespace tallymar;

std::unique_ptr<sheets::Parts> PartsOf(std::string_view text) {
    if (text.starts_with("PK")) return std::make_unique<sheets::ZipParts>(text);
    constexpr std::string_view kMark = "=== ";
    std::map<std::string, std::string> parts;
    for (std::size_t at = text.find(kMark); at != std::string_view::npos;) {
        const std::size_t next = text.find(kMark, at + kMark.size());
        const std::string_view part =
            text.substr(at + kMark.size(), next == std::string_view::npos ? next : next - at - kMark.size());
        const std::size_t line = part.find('\n');
        if (line != std::string_view::npos) parts[std::string(part.substr(0, line))] = part.substr(line + 1);
        at = next;
    }
    return std::make_unique<test::MemoryParts>(std::move(parts));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int kEnoughRows = 200;  // a repeated row stands for a million
    try {
        sheets::SheetReader reader(PartsOf({reinterpret_cast<const char*>(data), size}), "in");
        sheets::SheetRow row;
        std::int64_t last = 0;
        for (int rows = 0; rows < kEnoughRows && reader.ReadRow(row); ++rows) {
            if (row.Number <= last || row.Number > sheets::SheetReader::kMostRows || row.Cells.empty()) std::abort();
            if (row.Cells.size() > sheets::SheetReader::kMostColumns) std::abort();
            last = row.Number;
            for (const sheets::SheetCell& cell : row.Cells) {
                if (cell.Text.size() > sheets::SheetReader::kLongestText) std::abort();
            }
        }
    } catch (const PlatformError&) {
        // The failure that a damaged file should be.
    }
    return 0;
}
