#include "platform/page/PageItems.h"

#include <array>
#include <charconv>

#include "platform/runtime/FileReplacement.h"
#include "platform/runtime/JsonWriter.h"

namespace tallymar {

namespace {

template <typename Number>
void AppendNumber(std::string_view name, Number value, std::string& out) {
    std::array<char, 32> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    out += ",\"";
    out += name;
    out += "\":";
    out.append(digits.data(), result.ptr);
}

void AppendText(std::string_view name, std::string_view windows1252, std::string& out) {
    out += ",\"";
    out += name;
    out += "\":";
    AppendJsonText(windows1252, out);
}

void AppendItem(const PageDocument& pages, const PageItem& item, std::string& out) {
    if (item.Op == PageItem::Kind::Text) {
        const PageFont& font = pages.Font(item);
        out += ",\"op\":\"text\"";
        AppendNumber("x", item.X, out);
        AppendNumber("y", item.Y, out);
        AppendNumber("w", item.X2 - item.X, out);
        AppendNumber("size", font.Size, out);
        if (font.Name != "Arial") AppendText("font", font.Name, out);
        AppendText("text", pages.Text(item), out);
    } else {
        out += ",\"op\":\"line\"";
        AppendNumber("x1", item.X, out);
        AppendNumber("x2", item.X2, out);
        AppendNumber("y", item.Y, out);
        if (item.Y2 != item.Y) AppendNumber("y2", item.Y2, out);
    }
    out += "}\n";
}

}  // namespace

std::string PageItems(const PageDocument& pages, int page) {
    const std::string head = "{\"page\":" + std::to_string(page);
    std::string out;
    for (const PageItem* item = pages.PageBegin(page); item != pages.PageEnd(page); ++item) {
        out += head;
        AppendItem(pages, *item, out);
    }
    return out;
}

void WritePageItems(const PageDocument& pages, FileReplacement& file) {
    for (int page = 1; page <= pages.PageCount(); ++page) file.Write(PageItems(pages, page));
}

}  // namespace tallymar
