#include "platform/page/PdfFile.h"

#include <vector>

#include "platform/fonts/FontMetrics.h"
#include "platform/page/PagePlacement.h"
#include "platform/page/PdfCore.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr double kTwipsPerDot = 4.8;  // of 1/300 inch
constexpr int kTwipsPerPoint = 20;

// A font of the file: the page fonts of one name and any size.
struct PdfFont {
    const FontMetrics* Metrics;
    UsedBytes Used;
    int Number = 0;
};

class PdfFile {
 public:
    PdfFile(const PageDocument& pages, FileReplacement& file) : pages_(pages), file_(file) { CollectFonts(); }

    void Write() {
        for (PdfFont& font : fonts_) font.Number = file_.AddFont(*font.Metrics, font.Used);
        for (int page = 1; page <= pages_.PageCount(); ++page) WritePage(page);
        file_.Finish(Trim(pages_.Title));
    }

 private:
    static double Points(int twips) { return static_cast<double>(twips) / kTwipsPerPoint; }
    static unsigned char Drawn(char c) { return static_cast<unsigned char>(DrawnAs(c)); }

    void CollectFonts() {
        for (const PageFont& font : pages_.Fonts()) {
            const FontMetrics* metrics = &FindFontMetrics(font.Name);
            std::size_t i = 0;
            while (i < fonts_.size() && fonts_[i].Metrics != metrics) ++i;
            if (i == fonts_.size()) fonts_.push_back({metrics, {}});
            fontOf_.push_back(i);
        }
        for (int page = 1; page <= pages_.PageCount(); ++page) {
            for (const PageItem* item = pages_.PageBegin(page); item != pages_.PageEnd(page); ++item) {
                if (item->Op != PageItem::Kind::Text) continue;
                UsedBytes& used = fonts_[fontOf_[item->Font]].Used;
                for (const char c : pages_.Text(*item)) used.set(Drawn(c));
            }
        }
    }

    void WritePage(int page) {
        contents_.Clear();
        contents_.Write("q .05 0 0 .05 0 0 cm\n");  // twips, counted from the lower left corner
        const PagePlacement placement(pages_, page);
        bool hasTexts = false;
        for (const PageItem* item = pages_.PageBegin(page); item != pages_.PageEnd(page); ++item) {
            if (item->Op == PageItem::Kind::Line) {
                AppendLine(placement, *item);
            } else {
                hasTexts = true;
            }
        }
        if (hasTexts) AppendTexts(placement, page);
        contents_.Write("Q");
        file_.AddPage(contents_.Text(), Points(pages_.Paper().Width), Points(pages_.Paper().Height));
    }

    double FromFoot(double y) const { return pages_.Paper().Height - y; }

    void AppendNumbers(std::initializer_list<double> numbers) {
        for (const double number : numbers) contents_.Number(number);
    }

    void AppendLine(const PagePlacement& placement, const PageItem& item) {
        const PagePlacement::Place from = placement.PlaceOf(item);
        const PagePlacement::Place to = placement.EndOf(item);
        AppendNumbers({item.LineWidth * kTwipsPerDot});
        contents_.Write("w ");
        AppendNumbers({from.X, FromFoot(from.Y)});
        contents_.Write("m ");
        AppendNumbers({to.X, FromFoot(to.Y)});
        contents_.Write("l S\n");
    }

    // Each text begins at a distance from where the one before it began.
    void AppendTexts(const PagePlacement& placement, int page) {
        contents_.Write("BT\n");
        int font = -1;
        long x = 0;
        long y = 0;
        double ascent = 0;
        for (const PageItem* item = pages_.PageBegin(page); item != pages_.PageEnd(page); ++item) {
            if (item->Op != PageItem::Kind::Text) continue;
            if (item->Font != font) {
                font = item->Font;
                const PageFont& pageFont = pages_.Fonts()[item->Font];
                const PdfFont& pdfFont = fonts_[fontOf_[item->Font]];
                ascent = ToTwips(*pdfFont.Metrics, pdfFont.Metrics->Ascent, pageFont.Size);
                contents_.FontName(pdfFont.Number);
                AppendNumbers({static_cast<double>(pageFont.Size) * kTwipsPerPoint});
                contents_.Write("Tf\n");
            }
            const PagePlacement::Place place = placement.PlaceOf(*item);
            const long toX = PdfContents::ToHundredths(place.X);
            const long toY = PdfContents::ToHundredths(FromFoot(place.Y + ascent));
            contents_.Hundredths(toX - x);
            contents_.Hundredths(toY - y);
            contents_.Write("Td");
            x = toX;
            y = toY;
            contents_.String(placement.ShownText(*item));
            contents_.Write("Tj\n");
        }
        contents_.Write("ET\n");
    }

    const PageDocument& pages_;
    PdfCore file_;
    std::vector<PdfFont> fonts_;
    std::vector<std::size_t> fontOf_;  // by the document's fonts
    PdfContents contents_;
};

}  // namespace

void WritePdf(const PageDocument& pages, FileReplacement& file) {
    PdfFile(pages, file).Write();
}

}  // namespace tallymar
