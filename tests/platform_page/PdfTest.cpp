#include <gmock/gmock.h>

#include <QPageLayout>
#include <QPrinter>
#include <QRegularExpression>

#include "SampleReport.h"
#include "platform/fonts/FontMetrics.h"
#include "platform/page/frmPrint.h"
#include "platform/runtime/InputFile.h"
#include "platform/runtime/Windows1252.h"
#include "support/TempFolder.h"

namespace tallymar::test {
namespace {

using testing::HasSubstr;

struct Word {
    QString Text;
    double Left;  // points
    double Right;
};

std::vector<Word> WordsOf(const std::filesystem::path& pdf) {
    const QString html = QString::fromStdString(OutputOf("pdftotext -bbox '" + pdf.string() + "' -"));
    static const QRegularExpression word(
        QStringLiteral("<word xMin=\"([-.0-9]+)\" yMin=\"[-.0-9]+\" xMax=\"([-.0-9]+)\"[^>]*>([^<]*)<"));
    std::vector<Word> words;
    for (auto match = word.globalMatch(html); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        words.push_back({found.captured(3), found.captured(1).toDouble(), found.captured(2).toDouble()});
    }
    return words;
}

// Each text of the model in the order of drawing, split into words at blanks.
std::vector<Word> WordsOf(const PageDocument& pages) {
    std::vector<Word> words;
    for (int page = 1; page <= pages.PageCount(); ++page) {
        for (const PageItem* item = pages.PageBegin(page); item != pages.PageEnd(page); ++item) {
            if (item->Op != PageItem::Kind::Text) continue;
            const std::string text(pages.Text(*item));
            PageDocument ruler;
            ruler.FontSize = pages.Font(*item).Size;
            std::size_t begin = text.find_first_not_of(' ');
            while (begin != std::string::npos) {
                const std::size_t end = std::min(text.find(' ', begin), text.size());
                words.push_back({QString::fromStdString(ToUtf8(text.substr(begin, end - begin))),
                                 (item->X + ruler.TextWidth(text.substr(0, begin))) / 20.0,
                                 (item->X + ruler.TextWidth(text.substr(0, end))) / 20.0});
                begin = text.find_first_not_of(' ', end);
            }
        }
    }
    return words;
}

void ExpectSameWords(std::vector<Word> drawn, std::vector<Word> model) {
    const auto byPlace = [](const Word& a, const Word& b) {
        return a.Text != b.Text ? a.Text < b.Text : std::lround(a.Left) < std::lround(b.Left);
    };
    std::stable_sort(drawn.begin(), drawn.end(), byPlace);
    std::stable_sort(model.begin(), model.end(), byPlace);
    ASSERT_EQ(drawn.size(), model.size());
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        ASSERT_EQ(drawn[i].Text, model[i].Text);
        // One twip is a twentieth of a point; the model rounds each width to one.
        EXPECT_NEAR(drawn[i].Left, model[i].Left, 0.06) << drawn[i].Text.toStdString();
        EXPECT_NEAR(drawn[i].Right, model[i].Right, 0.06) << drawn[i].Text.toStdString();
    }
}

TEST(Pdf, TextIsSelectableAndStandsWhereTheModelPutIt) {
    if (OutputOf("command -v pdftotext").empty()) GTEST_SKIP() << "poppler-utils is not installed";
    const TempFolder folder;
    const auto report = SampleReport(2);
    const std::filesystem::path pdf = DeliverToFile(report->Pages, report->Details, folder / "report.pdf");
    ExpectSameWords(WordsOf(pdf), WordsOf(report->Pages));

    const std::string info = OutputOf("pdfinfo " + pdf.string());
    EXPECT_THAT(info, HasSubstr("Fixed Asset Report - Caf\xC3\xA9"));
    EXPECT_THAT(info, HasSubstr("792 x 612 pts"));
    EXPECT_THAT(info, testing::ContainsRegex("Pages: +2"));
    EXPECT_THAT(OutputOf("pdffonts " + pdf.string()),
                testing::ContainsRegex("Liberation.*yes [a-z]+ +yes"));  // embedded, with Unicode
}

TEST(Pdf, EveryCharacterIsCopiedAsItself) {
    if (OutputOf("command -v pdftotext").empty()) GTEST_SKIP() << "poppler-utils is not installed";
    const TempFolder folder;
    PageDocument v;
    std::string expected;
    for (int row = 2; row < 16; ++row) {
        std::string line = "<";
        for (int byte = row * 16; byte < row * 16 + 16; ++byte) {
            if (const char c = static_cast<char>(byte); DrawnAs(c) == c && c != ' ') line += c;
        }
        PrintLeft(v, row, 1, line + ">");
        expected += ToUtf8(line) + ">\n";
    }
    const std::filesystem::path pdf = DeliverToFile(v, {}, folder / "characters.pdf");
    EXPECT_EQ(OutputOf("pdftotext -nopgbrk " + pdf.string() + " - | grep ."), expected);

    const std::filesystem::path again = DeliverToFile(v, {}, folder / "again.pdf");
    EXPECT_EQ(ReadWholeFile(pdf), ReadWholeFile(again));
}

TEST(Pdf, APageThatRunsOnEndsOnThePaper) {
    if (OutputOf("command -v pdftotext").empty()) GTEST_SKIP() << "poppler-utils is not installed";
    const TempFolder folder;
    PageDocument v;
    v.Margin = 360;
    PrintLeft(v, 1, 1, "First");
    PrintLeft(v, 69, 1, "Last");
    v.NewPage();
    PrintLeft(v, 56, 1, "Usual");
    const std::filesystem::path pdf = DeliverToFile(v, {}, folder / "long.pdf");
    const std::string html = OutputOf("pdftotext -bbox " + pdf.string() + " -");
    const auto top = [&](const std::string& word) {
        const std::size_t line = html.rfind("yMin=\"", html.find(">" + word + "<"));
        return std::stod(html.substr(line + 6));
    };
    EXPECT_NEAR(top("Last"), 612 - 18 - v.FontSize * 1.117, 1);  // a line above the lower margin
    EXPECT_NEAR(top("Usual"), 18 + 56 * 9, 1);
    EXPECT_LT(top("First"), 18 + 9);
}

TEST(Pdf, LabelSheetsStandUpright) {
    if (OutputOf("command -v pdftotext").empty()) GTEST_SKIP() << "poppler-utils is not installed";
    const TempFolder folder;
    PageDocument v(kLetterPortrait);
    v.FontName = "Courier New";
    v.PrintText("000123");
    const std::filesystem::path pdf = DeliverToFile(v, {}, folder / "labels.pdf");
    EXPECT_THAT(OutputOf("pdfinfo " + pdf.string()), HasSubstr("612 x 792 pts"));
    EXPECT_THAT(OutputOf("pdffonts " + pdf.string()), HasSubstr("LiberationMono"));
    EXPECT_THAT(OutputOf("pdftotext " + pdf.string() + " -"), HasSubstr("000123"));
}

TEST(Printing, PutsTheChosenPagesOnThePaper) {
    if (OutputOf("command -v pdftotext").empty()) GTEST_SKIP() << "poppler-utils is not installed";
    const TempFolder folder;
    const auto report = SampleReport(4);
    const std::filesystem::path pdf = folder / "printed.pdf";
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(pdf.string()));
    PrintPages(report->Pages, printer, 2, 3);
    const std::string text = OutputOf("pdftotext -layout " + pdf.string() + " -");
    for (const int page : {1, 2, 3, 4}) {
        EXPECT_EQ(text.find("Page " + std::to_string(page)) != std::string::npos, page == 2 || page == 3) << page;
    }
    EXPECT_THAT(OutputOf("pdfinfo " + pdf.string()), HasSubstr("792 x 612 pts"));
    const std::vector<Word> words = WordsOf(pdf);
    const auto number =
        std::find_if(words.begin(), words.end(), [](const Word& word) { return word.Text == QLatin1String("000041"); });
    ASSERT_NE(number, words.end());
    EXPECT_NEAR(number->Left, AtColumn(1) / 20.0, 0.06);
}

}  // namespace
}  // namespace tallymar::test
