#include "forms/LineFont.h"

#include <cstdlib>
#include <functional>
#include <string_view>

#include "forms/BlankForm.h"

namespace tallymar::tools {

namespace {

constexpr int kWidth = kColumnDots;
constexpr int kHeight = kLineDots;
constexpr int kBaseline = 38;  // down from the top of the cell, as that of the printed values
constexpr int kMiddleX = kWidth / 2;
constexpr int kMiddleY = kHeight / 2;
constexpr int kQuarters = 4;

using Black = std::function<bool(int x, int y)>;

SoftGlyph Cell(const Black& black) {
    SoftGlyph glyph;
    glyph.Top = kBaseline;
    glyph.Width = kWidth;
    glyph.Height = kHeight;
    glyph.DeltaX = kWidth * kQuarters;
    constexpr int kStride = (kWidth + 7) / 8;
    glyph.Rows.assign(static_cast<std::size_t>(kStride) * kHeight, '\0');
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            if (black(x, y)) glyph.Rows[static_cast<std::size_t>(y * kStride + x / 8)] |= static_cast<char>(0x80 >> x % 8);
        }
    }
    return glyph;
}

// Arms from the middle of the cell, those of `directions` (l, r, u, d), `dots` thick.
Black Arms(std::string_view directions, int dots) {
    return [=](int x, int y) {
        const auto has = [&](char c) { return directions.find(c) != std::string_view::npos; };
        const int half = dots / 2;
        const bool inRow = y >= kMiddleY - half && y < kMiddleY - half + dots;
        const bool inColumn = x >= kMiddleX - half && x < kMiddleX - half + dots;
        return (inRow && ((has('l') && x < kMiddleX + half) || (has('r') && x >= kMiddleX - half))) ||
               (inColumn && ((has('u') && y < kMiddleY + half) || (has('d') && y >= kMiddleY - half)));
    };
}

// A square on the baseline, as wide as the cell lets it be.
bool InBox(int x, int y, bool marked) {
    constexpr int kLeft = 2;
    constexpr int kSide = kWidth - 2 * kLeft;
    const int across = x - kLeft;
    const int down = y - (kBaseline - kSide);
    if (across < 0 || across >= kSide || down < 0 || down >= kSide) return false;
    const bool edge = across < 2 || across >= kSide - 2 || down < 2 || down >= kSide - 2;
    const bool cross = std::abs(across - down) < 2 || std::abs(across + down - (kSide - 1)) < 2;
    return edge || (marked && cross);
}

bool InArrow(int x, int y) {
    constexpr int kArrowHeight = 22;
    const int fromTop = y - (kBaseline - kArrowHeight);
    return fromTop >= 0 && fromTop < kArrowHeight && x < kArrowHeight - std::abs(kArrowHeight - 1 - 2 * fromTop);
}

}  // namespace

SoftFont LineFont() {
    SoftFont font;
    font.Pitch = kWidth * kQuarters;
    font.Height = kHeight * kQuarters;
    font.Baseline = kBaseline;
    font.CellWidth = kWidth;
    font.CellHeight = kHeight;
    font.Name = "TALLYMAR LINES";
    const auto add = [&](char character, const Black& black) {
        font.Glyphs.emplace(static_cast<std::uint8_t>(character), Cell(black));
    };
    struct Frame {
        char Character;
        std::string_view Arms;
    };
    constexpr Frame kFrames[] = {{'-', "lr"},  {'|', "ud"},   {'+', "lrud"}, {'7', "rd"}, {'8', "lrd"}, {'9', "ld"},
                                 {'4', "rud"}, {'5', "lrud"}, {'6', "lud"},  {'1', "ru"}, {'2', "lru"}, {'3', "lu"}};
    for (const Frame& frame : kFrames) add(frame.Character, Arms(frame.Arms, 2));
    add('=', Arms("lr", 6));
    add('!', Arms("ud", 6));
    add('o', [](int x, int y) { return InBox(x, y, false); });
    add('x', [](int x, int y) { return InBox(x, y, true); });
    add('#', [](int, int) { return true; });
    add('%', [](int x, int y) { return x % 4 == (y / 2 % 2) * 2 && y % 2 == 0; });
    add('>', InArrow);
    SoftGlyph blank;
    blank.DeltaX = kWidth * kQuarters;
    font.Glyphs.emplace(static_cast<std::uint8_t>(' '), blank);
    return font;
}

}  // namespace tallymar::tools
