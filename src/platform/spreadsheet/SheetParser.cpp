#include "platform/spreadsheet/SheetParser.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/runtime/PlatformError.h"

namespace tallymar::sheets {

void RefuseWorkbook(const std::string& complaint) {
    throw PlatformError(Failure::UnrecognizedFormat, complaint);
}

void RefuseTooLarge(const std::string& complaint) {
    throw PlatformError(Failure::FieldTooSmall, complaint);
}

void AppendBounded(std::string_view text, std::string& to) {
    constexpr std::size_t kMost = SheetReader::kLongestText + 1;
    to.append(text.substr(0, kMost - std::min(kMost, to.size())));
}

bool ParseNumber(std::string_view text, double& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
}

void RowQueue::BeginRow(std::int64_t number) {
    if (number > SheetReader::kMostRows) RefuseTooLarge("has more rows than a sheet may have");
    building_.Number = number;
    building_.Cells.clear();
}

void RowQueue::Put(std::size_t column, const SheetCell& cell, std::uint64_t times) {
    if (cell.Kind == CellKind::Empty) return;
    const std::string place = "row " + std::to_string(building_.Number);
    if (column >= SheetReader::kMostColumns || times > SheetReader::kMostColumns - column)
        RefuseTooLarge("has more columns than belong in a company, in " + place);
    if (cell.Text.size() > SheetReader::kLongestText)
        RefuseTooLarge("has a text longer than any that belongs in a company, in " + place);
    building_.Cells.resize(std::max(building_.Cells.size(), column + times));
    std::fill_n(building_.Cells.begin() + static_cast<std::ptrdiff_t>(column), times, cell);
}

void RowQueue::EndRow(std::uint64_t times) {
    if (building_.Cells.empty()) return;
    if (times > static_cast<std::uint64_t>(SheetReader::kMostRows - building_.Number + 1))
        RefuseTooLarge("has more rows than a sheet may have");
    waiting_.push_back({building_, times});
    building_.Cells.clear();
}

bool RowQueue::Pop(SheetRow& row) {
    if (waiting_.empty()) return false;
    Waiting& first = waiting_.front();
    if (first.Times > 1) {
        row = first.Row;
        ++first.Row.Number;
        --first.Times;
    } else {
        row = std::move(first.Row);
        waiting_.pop_front();
    }
    return true;
}

}  // namespace tallymar::sheets
