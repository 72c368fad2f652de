#pragma once

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>

#include "platform/page/PageDocument.h"
#include "reports/ReportWriter.h"

namespace tallymar::test {

// The pages of a document on a character grid, for golden files that a person can read. A text stands at the grid column that its
// left edge was sent to, or ends at the one that its right edge was sent to; any other text is centred and stands where its
// middle is. Rules stand on a line of their own above the texts of their row. Each line begins with its row.
class PageGrid {
 public:
    explicit PageGrid(const PageDocument& canvas, float charsPerInch = ReportWriter::kCharsPerInch,
                      float linesPerInch = ReportWriter::kLinesPerInch)
        : canvas_(canvas), charsPerInch_(charsPerInch), linesPerInch_(linesPerInch) {}

    std::string Page(int page) const {
        std::map<int, std::string> texts;  // by half rows
        std::map<int, std::string> rules;
        for (const PageItem* item = canvas_.PageBegin(page); item != canvas_.PageEnd(page); ++item) {
            const int halfRow = Nearest(item->Y * 2.0 * linesPerInch_ / 1440);
            if (item->Op == PageItem::Kind::Line) {
                const int from = Nearest(item->X * 1.0 * charsPerInch_ / 1440);
                Put(rules[halfRow], from,
                    std::string(static_cast<std::size_t>(Nearest(item->X2 * 1.0 * charsPerInch_ / 1440) - from), '-'));
            } else {
                const std::string text(canvas_.Text(*item));
                Put(texts[halfRow], ColumnOf(*item, text), text.substr(0, text.find('\r')));
            }
        }
        for (const auto& [row, line] : rules) texts[row];
        std::string grid;
        for (const auto& [row, line] : texts) {
            if (const auto rule = rules.find(row); rule != rules.end()) grid += "     |" + Trimmed(rule->second) + "\n";
            if (Trimmed(line).empty()) continue;
            char number[16];
            std::snprintf(number, sizeof number, row % 2 == 0 ? "%3.0f  |" : "%5.1f|", row / 2.0);
            grid += number + Trimmed(line) + "\n";
        }
        return grid;
    }

    std::string Document() const {
        std::string document;
        for (int page = 1; page <= canvas_.PageCount(); ++page)
            document += Page(page) + "=== end of page " + std::to_string(page) + "\n";
        return document;
    }

 private:
    static int Nearest(double value) { return static_cast<int>(value + (value < 0 ? -0.5 : 0.5)); }

    static std::string Trimmed(const std::string& line) { return line.substr(0, line.find_last_not_of(' ') + 1); }

    int ColumnOf(const PageItem& item, const std::string& text) const {
        const int left = Nearest(item.X * 1.0 * charsPerInch_ / 1440);
        if (GridToTwips(static_cast<float>(left), charsPerInch_) == item.X) return left;
        const int right = Nearest(item.X2 * 1.0 * charsPerInch_ / 1440);
        const int length = static_cast<int>(text.size());
        if (GridToTwips(static_cast<float>(right), charsPerInch_) == item.X2) return right - length;
        return Nearest((item.X + item.X2) / 2.0 * charsPerInch_ / 1440 - length / 2.0);
    }

    static void Put(std::string& line, int column, const std::string& text) {
        const auto start = static_cast<std::size_t>(std::max(column, 0));
        if (line.size() < start + text.size()) line.resize(start + text.size(), ' ');
        std::copy(text.begin(), text.end(), line.begin() + static_cast<std::ptrdiff_t>(start));
    }

    const PageDocument& canvas_;
    float charsPerInch_;
    float linesPerInch_;
};

// The text of every item that is one, in drawing order.
inline std::vector<std::string> TextsOf(const PageDocument& canvas) {
    std::vector<std::string> texts;
    for (int page = 1; page <= canvas.PageCount(); ++page) {
        for (const PageItem* item = canvas.PageBegin(page); item != canvas.PageEnd(page); ++item) {
            if (item->Op == PageItem::Kind::Text) texts.emplace_back(canvas.Text(*item));
        }
    }
    return texts;
}

}  // namespace tallymar::test
