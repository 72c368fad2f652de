#include <algorithm>

#include "platform/page/DetailFiles.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

std::string MoneyText(CurrencyAmount amount) {
    std::string text = amount.ToText();
    const std::size_t point = text.find('.');
    if (point == std::string::npos) return text + ".00";
    if (text.size() - point < 3) text += '0';
    return text;
}

void AppendField(std::string_view windows1252, std::string& out) {
    if (windows1252.find_first_of(",\"\r\n") == std::string_view::npos) {
        AppendUtf8(windows1252, out);
        return;
    }
    std::string quoted = "\"";
    for (const char c : windows1252) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    AppendUtf8(quoted + '"', out);
}

void AppendCell(const DetailCell& cell, const DetailColumn& column, std::string& out) {
    if (const auto* text = std::get_if<std::string>(&cell)) {
        AppendField(AsSpreadsheetText(RTrim(*text)), out);
    } else if (const auto* date = std::get_if<Date>(&cell)) {
        if (!date->IsNone()) out += FormatIsoDate(*date);
    } else if (const auto* number = std::get_if<std::int64_t>(&cell)) {
        out += std::to_string(*number);
    } else if (const auto* amount = std::get_if<CurrencyAmount>(&cell)) {
        out += column.Picture.empty() ? MoneyText(*amount) : amount->ToText();
    }
}

}  // namespace

std::string AsSpreadsheetText(std::string_view text) {
    const bool formula = !text.empty() && std::string_view("=+-@").find(text.front()) != std::string_view::npos;
    return (formula ? "'" : "") + std::string(text);
}

std::string DetailCsv(const DetailTable& table) {
    const std::vector<DetailColumn>& columns = table.Columns();
    std::string out;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i > 0) out += ',';
        AppendField(columns[i].Heading, out);
    }
    out += "\r\n";
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (i > 0) out += ',';
            AppendCell(table.Cell(row, i), columns[i], out);
        }
        out += "\r\n";
    }
    const bool ascii = std::all_of(out.begin(), out.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (!ascii) out.insert(0, "\xEF\xBB\xBF");
    return out;
}

}  // namespace tallymar
