#pragma once

#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "platform/page/Delivery.h"
#include "support/Files.h"
#include "support/Output.h"

namespace tallymar::test {

// A page grid of 17 columns and 8 rows to the inch, as reports have it.
inline int AtColumn(double column) {
    return static_cast<int>(std::nearbyint(column * 1440 / 17));
}
inline int AtRow(double row) {
    return static_cast<int>(std::nearbyint(row * 1440 / 8));
}

inline void PrintLeft(PageDocument& v, double row, double column, std::string_view text) {
    v.CurrentX = AtColumn(column);
    v.CurrentY = AtRow(row);
    v.PrintText(text);
}
// Ends at the right edge of the column.
inline void PrintRight(PageDocument& v, double row, double column, std::string_view text) {
    v.CurrentX = AtColumn(column + 1) - v.TextWidth(text);
    v.CurrentY = AtRow(row);
    v.PrintText(text);
}
inline void PrintCentered(PageDocument& v, double row, double column, std::string_view text) {
    v.CurrentX = AtColumn(column + 1) - v.TextWidth(text) / 2;
    v.CurrentY = AtRow(row);
    v.PrintText(text);
}
inline void PrintRule(PageDocument& v, double row, double from, double to) {
    v.DrawWidth = 2;
    v.DrawLine(AtColumn(from), AtRow(row), AtColumn(to + 1), AtRow(row));
}

// Pages with a head and 40 assets each: number, description, two amounts.
inline std::shared_ptr<PrintedDocument> SampleReport(int pages) {
    auto document = std::make_shared<PrintedDocument>();
    PageDocument& v = document->Pages;
    v.Title = "Fixed Asset Report - Caf\xE9";
    document->Details.AddColumn("Asset", DetailKind::Text);
    for (int page = 1; page <= pages; ++page) {
        if (page > 1) v.NewPage();
        v.FontSize = 12;
        PrintCentered(v, 1, 88, "Caf\xE9 \x93Sofa\x94, Inc.");
        v.FontSize = 7.5F;
        PrintRight(v, 1, 170, "Page " + std::to_string(page));
        PrintRule(v, 4, 1, 6);
        for (int line = 0; line < 40; ++line) {
            const int number = (page - 1) * 40 + line + 1;
            std::array<char, 32> text{};
            std::snprintf(text.data(), text.size(), "%06d", number);
            PrintLeft(v, 4 + line, 1, text.data());
            PrintLeft(v, 4 + line, 9, number % 2 ? "Office waffle iron" : "AVA Truck");
            std::snprintf(text.data(), text.size(), number % 3 ? "%d,%03d.%02d " : "(%d,%03d.%02d)", number, number % 1000,
                          number % 100);
            PrintRight(v, 4 + line, 60, text.data());
            PrintRight(v, 4 + line, 75, "0.00 ");
            document->Details.AddRow();
            document->Details.Add("Asset " + std::to_string(number));
        }
    }
    return document;
}

}  // namespace tallymar::test
