#include <filesystem>

#include <QString>

#include <gtest/gtest.h>

#include "SampleReport.h"
#include "TrueTypeFile.h"
#include "platform/fonts/FontMetrics.h"
#include "platform/page/PageSearch.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::test {
namespace {

// The widths by which reports clip their cells are those of the installed font, character by character.
TEST(FontMetrics, AgreeWithTheInstalledFonts) {
    const std::filesystem::path folder = "/usr/share/fonts/truetype/liberation";
    const std::pair<const char*, const char*> fonts[] = {{"Arial", "LiberationSans-Regular.ttf"},
                                                         {"Arial Bold", "LiberationSans-Bold.ttf"},
                                                         {"Courier New", "LiberationMono-Regular.ttf"}};
    for (const auto& [name, file] : fonts) {
        if (!std::filesystem::exists(folder / file)) GTEST_SKIP() << "fonts-liberation is not installed";
        const tools::TrueTypeFile font(folder / file);
        const FontMetrics& metrics = FindFontMetrics(name);
        EXPECT_EQ(metrics.UnitsPerEm, font.UnitsPerEm());
        EXPECT_EQ(metrics.Ascent, font.Ascent());
        EXPECT_EQ(metrics.Descent, font.Descent());
        for (int byte = 0; byte < 256; ++byte) {
            const char drawn = DrawnAs(static_cast<char>(byte));
            const std::u32string character = QString::fromStdString(ToUtf8(std::string_view(&drawn, 1))).toStdU32String();
            ASSERT_EQ(character.size(), 1u);
            EXPECT_NE(font.GlyphOf(character[0]), 0) << name << " lacks " << byte;
            EXPECT_EQ(metrics.Advances[static_cast<std::size_t>(byte)], font.AdvanceOf(character[0])) << name << ' ' << byte;
        }
    }
}

TEST(PageDocument, WidthsAreRoundedOnceHalfToEven) {
    PageDocument v;
    EXPECT_EQ(v.TextWidth(""), 0);
    // A digit is 1139/2048 em: 83.42 twips at 7.5 points; ten of them 834.2, not ten times 83.
    EXPECT_EQ(v.TextWidth("0"), 83);
    EXPECT_EQ(v.TextWidth("0123456789"), 834);
    EXPECT_EQ(v.TextWidth("AVAVA"), 500);  // 5 x 1366: no kerning
    // The long dash is one em wide: halves come to the even twip.
    for (const auto& [size, width] : {std::pair{0.125F, 2}, {0.375F, 8}}) {
        v.FontSize = size;
        EXPECT_EQ(v.TextWidth("\x97"), width);
    }
    v.FontName = "Courier New";
    v.FontSize = 10;
    EXPECT_EQ(v.TextWidth("iW"), 240);
    v.FontName = "Comic Sans";
    EXPECT_THROW(v.TextWidth("a"), PlatformError);
    EXPECT_THROW(v.PrintText("a"), PlatformError);
}

TEST(PageDocument, KeepsWhatWasDrawnPageByPage) {
    PageDocument v;
    v.PrintText("Page ");
    v.PrintText("1");
    v.DrawWidth = 2;
    v.DrawLine(10, 20, 30, 20);
    v.NewPage();
    v.FontSize = 12;
    v.PrintText("two");
    EXPECT_EQ(v.PageBegin(1)[1].X, v.PageBegin(1)->X2);
    EXPECT_EQ(v.PageBegin(1)[2].LineWidth, 2);
    EXPECT_EQ(v.Font(*v.PageBegin(1)), (PageFont{"Arial", 7.5F}));
    EXPECT_EQ(v.Font(*v.PageBegin(2)), (PageFont{"Arial", 12}));
    EXPECT_EQ(v.PageBegin(2)->X, 0);
    for (const int page : {0, 3}) EXPECT_THROW(v.PageBegin(page), PlatformError);
}

TEST(PageSearch, FindsEveryPlaceWhateverTheCase) {
    PageDocument v;
    v.CurrentX = 1000;
    v.PrintText("\xC9t\xE9 abc ABC");
    v.NewPage();
    v.PrintText("xabcx");
    const std::vector<PageHit> hits = SearchPages(v, "aBc");
    ASSERT_EQ(hits.size(), 3u);
    EXPECT_EQ(hits[0].X, 1000 + v.TextWidth("\xC9t\xE9 "));
    EXPECT_EQ(hits[0].X2, 1000 + v.TextWidth("\xC9t\xE9 abc"));
    EXPECT_GT(hits[1].X, hits[0].X2);
    EXPECT_EQ(hits[2].Page, 2);
    EXPECT_EQ(SearchPages(v, "\xE9T\xC9").size(), 1u);
    EXPECT_TRUE(SearchPages(v, "abcd").empty());
    EXPECT_TRUE(SearchPages(v, "").empty());
}

}  // namespace
}  // namespace tallymar::test
