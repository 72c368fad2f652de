#include "platform/pcl/PclReader.h"

#include <gmock/gmock.h>

#include "platform/page/FormPdf.h"
#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"
#include "support/Failures.h"
#include "support/Output.h"
#include "support/TempFolder.h"

namespace tallymar::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

const fs::path kShare = TALLYMAR_BINARY_DIR "/share/tallymar";

std::string Esc(std::string_view rest) {
    return "\x1B" + std::string(rest);
}

std::vector<std::string> TextsOf(const PclDrawing& drawing, std::size_t page = 0) {
    std::vector<std::string> texts;
    for (const PclOp& op : drawing.Pages.at(page).Ops) {
        if (op.Op == PclOp::Kind::Text) texts.emplace_back(drawing.Text(op));
    }
    return texts;
}

TEST(PclReader, ValuesPrintOverTheirBlankOnOneSheet) {
    SoftFonts fonts;
    for (const auto& file : fs::directory_iterator(kShare / "fonts")) fonts.Download(ReadWholeFile(file.path()));
    EXPECT_EQ(fonts.All().size(), 8U);
    const std::string blank = ReadWholeFile(kShare / "Laser" / "245621.HP");
    const PclDrawing form = ReadPcl(blank, fonts);
    const PclDrawing page =
        ReadPcl(blank + "First line  12.50\r\n" + std::string(63, '\n') + std::string(79, ' ') + "X\r\n\f", fonts);
    ASSERT_EQ(page.Pages.size(), 1U);
    EXPECT_EQ(page.Pages[0].Ops.size(), form.Pages.at(0).Ops.size() + 3);
    const std::vector<std::string> texts = TextsOf(page);
    EXPECT_THAT(std::vector(texts.end() - 3, texts.end()), ElementsAre("First line", "12.50", "X"));
    // Column 80 of line 65, in Courier of 10 to the inch.
    const PclOp& last = page.Pages[0].Ops.back();
    EXPECT_EQ(last.X / kPclUnitsPerDot, 75 + 79 * 30);
    EXPECT_EQ(last.Y, 64 * 1200 + 900);
    EXPECT_EQ(page.Fonts[last.Font].Face, "Courier New");
    EXPECT_NEAR(page.Fonts[last.Font].Size, 12, 0.01);
    // No blank of ours needs dots: what it reads is text.
    for (const PclFont& font : page.Fonts) EXPECT_NE(font.Face, "");
    EXPECT_EQ(page.MissingFonts, 0);
    EXPECT_GT(ReadPcl(blank, {}).MissingFonts, 0);
}

TEST(PclReader, TellsWhatItSkipsAndWhereTheStreamIsCut) {
    EXPECT_EQ(ReadPcl(Esc("&b5Wabcde") + Esc("*z1Q") + "text", {}).SkippedCommands, 2);
    EXPECT_THAT(TextsOf(ReadPcl(Esc("&b5Wabcde") + Esc("*z1q2Q") + "text", {})), ElementsAre("text"));
    EXPECT_EQ(ReadPcl(Esc("&a0r78C") + "abcd", {}).SkippedCharacters, 2);
    for (const char* cut : {"\x1B", "\x1B&", "\x1B&l66", "\x1B&l66f", "\x1B*b10Wabc", "\x1B&f0Xabc"}) {
        EXPECT_TRUE(ReadPcl(std::string("x") + cut, {}).CutShort) << cut;
    }
    EXPECT_FALSE(ReadPcl("x" + Esc("&l66f0L"), {}).CutShort);
}

TEST(PclReader, ASoftFontIsATextOnlyWhereItIsLikeItsTypeface) {
    SoftFonts fonts;
    fonts.Download(ReadWholeFile(kShare / "fonts" / "neltx10b.fnt"));
    const auto [number, font] = *fonts.All().begin();
    const std::string stream = Esc("(" + std::to_string(number) + "X") + "Part I";
    EXPECT_EQ(ReadPcl(stream, fonts).Fonts.at(0).Face, "Arial Bold");

    SoftFont wider = *font;
    wider.Glyphs['a'].DeltaX += 8;  // two dots
    fonts.Add(number, std::make_shared<const SoftFont>(wider));
    const PclDrawing drawing = ReadPcl(stream, fonts);
    EXPECT_EQ(drawing.Fonts.at(0).Face, "");
    EXPECT_EQ(drawing.Bitmaps.size(), 4U);  // each letter once; the I is a rectangle
    EXPECT_THAT(TextsOf(drawing), ElementsAre("Part I"));
}

TEST(PclReader, GreysLieUnderWhatWasDrawnBefore) {
    const PclDrawing drawing = ReadPcl("text" + Esc("*p0x0Y") + Esc("*c300a200b20g2P") + Esc("*c50a50b1P") + Esc("*c9a9b2P"), {});
    std::vector<int> greys;
    for (const PclOp& op : drawing.Pages.at(0).Ops) greys.push_back(op.Op == PclOp::Kind::Text ? -1 : op.Grey);
    EXPECT_THAT(greys, ElementsAre(217, -1, 255, 217));
}

TEST(PclReader, EndlessStreamsFailInOneLine) {
    const std::string doubling = Esc("&f1y0X") + std::string(50'000, 'x') + Esc("&f1X") + Esc("&f2y0X") + [] {
        std::string calls = Esc("&f1Y");
        for (int i = 0; i < 10'000; ++i) calls += Esc("&f2X");
        return calls;
    }() + Esc("&f1X") + Esc("&f2y2X");
    std::string sheets;
    for (int i = 0; i < 100'000; ++i) sheets += '\f';
    for (const std::string& stream : {doubling, sheets, std::string(40'000'000, ' ')}) {
        const auto failure = ErrorOf([&] { ReadPcl(stream, {}); });
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->Code(), Failure::Overflow);
        EXPECT_THAT(failure->what(), testing::StartsWith("The page holds too much to be shown: too many "));
    }
    // A macro that runs itself ends.
    EXPECT_EQ(ReadPcl(Esc("&f1y0X") + "a" + Esc("&f1y2X") + Esc("&f1X") + Esc("&f1y2X"), {}).Pages.size(), 1U);
}

// A line that wraps ends the page, whose macro deletes the very character that is to be printed.
TEST(PclReader, AMacroMayDeleteWhatTheLineGoesOnWith) {
    const PclDrawing drawing = ReadPcl(ReadWholeFile(TALLYMAR_SOURCE_DIR "/tests/fuzz/corpus/Pcl/wrap-into-macro.pcl"), {});
    ASSERT_EQ(drawing.Pages.size(), 1U);
    EXPECT_THAT(TextsOf(drawing), ElementsAre("A"));
}

// The page's dots after each way of packing them.
TEST(PclReader, RasterRowsAreUnpacked) {
    const std::string start = Esc("*t300R") + Esc("*r1A");
    const auto bitmap = [&](const std::string& rows) {
        const PclDrawing drawing = ReadPcl(start + rows + Esc("*rC"), {});
        return drawing.Bitmaps.empty() ? std::string() : drawing.Bitmaps[0].Rows;
    };
    const std::string expected = "\xFF\xFF\xFF\x0F";
    EXPECT_EQ(bitmap(Esc("*b4W") + expected), expected);
    EXPECT_EQ(bitmap(Esc("*b1m4W") + std::string("\x02\xFF\x00\x0F", 4)), expected);
    EXPECT_EQ(bitmap(Esc("*b2m4W") + std::string("\xFE\xFF\x00\x0F", 4)), expected);
    EXPECT_EQ(bitmap(Esc("*b4W") + "\xFF\x01\xFF\x0F" + Esc("*b3m2W") + "\x01\xFF"), "\xFF\x01\xFF\x0F" + expected);
    EXPECT_EQ(bitmap(Esc("*b5m10W") + std::string("\x00\x00\x04\xFF\xFF\xFF\x0F\x05\x00\x01", 10)), expected + expected);
}

TEST(FormPdf, HoldsWhatThePageReads) {
    if (OutputOf("command -v pdftotext").empty()) GTEST_SKIP() << "poppler-utils is not installed";
    SoftFonts fonts;
    for (const auto& file : fs::directory_iterator(kShare / "fonts")) fonts.Download(ReadWholeFile(file.path()));
    const std::string blank = ReadWholeFile(kShare / "Laser" / "2D1.HP");
    std::vector<FormSheet> sheets;
    sheets.push_back({"2D1", ReadPcl(blank + "\n\n\n\n\n" + "  Caf\xE9 (Elm) \\ Sons    1,234.56\r\n\f", fonts)});
    sheets.push_back({"2D2", ReadPcl("another\f", fonts)});
    const TempFolder folder;
    const fs::path pdf = folder / "forms.pdf";
    FileReplacement file(pdf);
    WriteFormPdf(sheets, "Elm", file);
    file.Commit();
    const std::string text = OutputOf("pdftotext -layout '" + pdf.string() + "' -");
    EXPECT_THAT(text, HasSubstr("Caf\xC3\xA9 (Elm) \\ Sons"));
    EXPECT_THAT(text, HasSubstr("1,234.56"));
    EXPECT_THAT(text, HasSubstr("Capital Gains and Losses"));
    EXPECT_THAT(text, HasSubstr("another"));
    const std::string raw = ReadWholeFile(pdf);
    EXPECT_THAT(raw, HasSubstr("/Nums[0<</P<FEFF003200440031>>>1<</P<FEFF003200440032>>>]"));
}

}  // namespace
}  // namespace tallymar::test
