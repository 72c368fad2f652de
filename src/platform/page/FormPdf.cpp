#include "platform/page/FormPdf.h"

#include <array>
#include <cmath>
#include <iterator>

#include "platform/page/PdfCore.h"

namespace tallymar {

namespace {

constexpr double kUnitsPerPoint = kPclUnitsPerInch / 72.0;
constexpr std::string_view kFaces[] = {"Arial", "Arial Bold", "Courier New"};
constexpr double kNearEnough = kPclUnitsPerDot / 4.0;  // a character that stands so near its place is left there

// What cannot be drawn in a page font is there as dots; its text lies over them unseen, so that it is found and copied.
std::size_t FaceOf(const PclFont& font) {
    std::size_t face = 0;
    while (face < std::size(kFaces) && kFaces[face] != font.Face) ++face;
    return face % std::size(kFaces);
}

class FormPdf {
 public:
    FormPdf(const std::vector<FormSheet>& sheets, FileReplacement& file) : sheets_(sheets), file_(file) {}

    void Write(std::string_view title) {
        AddFonts();
        for (const FormSheet& sheet : sheets_) {
            dots_.assign(sheet.Drawing.Bitmaps.size(), -1);
            int number = 0;
            for (const PclPage& page : sheet.Drawing.Pages) {
                WritePage(sheet.Drawing, page, ++number == 1 ? sheet.Label : sheet.Label + "-" + std::to_string(number));
            }
        }
        file_.Finish(title);
    }

 private:
    void AddFonts() {
        std::array<UsedBytes, std::size(kFaces)> used;
        for (const FormSheet& sheet : sheets_) {
            const PclDrawing& drawing = sheet.Drawing;
            for (const PclPage& page : drawing.Pages) {
                for (const PclOp& op : page.Ops) {
                    if (op.Op != PclOp::Kind::Text) continue;
                    UsedBytes& bytes = used[FaceOf(drawing.Fonts[op.Font])];
                    for (const char c : drawing.Text(op)) bytes.set(static_cast<unsigned char>(DrawnAs(c)));
                }
            }
        }
        for (std::size_t face = 0; face < used.size(); ++face) {
            if (used[face].any()) fonts_[face] = file_.AddFont(FindFontMetrics(kFaces[face]), used[face]);
        }
    }

    void WritePage(const PclDrawing& drawing, const PclPage& page, std::string_view label) {
        contents_.Clear();
        contents_.Write("q .01 0 0 .01 0 0 cm\n");  // units, counted from the lower left corner
        grey_ = 0;
        font_ = nullptr;
        inText_ = unseen_ = false;
        for (const PclOp& op : page.Ops) {
            switch (op.Op) {
                case PclOp::Kind::Rectangle:
                    SetUp(false, op.Grey);
                    Numbers({op.X, page.Height - op.Y - op.Height, op.Width, op.Height});
                    contents_.Write("re f\n");
                    break;
                case PclOp::Kind::Bitmap:
                    WriteDots(drawing, page, op);
                    break;
                case PclOp::Kind::Text:
                    WriteText(drawing, page, op);
                    break;
            }
        }
        SetUp(false, grey_);
        contents_.Write("Q");
        file_.AddPage(contents_.Text(), page.Width / kUnitsPerPoint, page.Height / kUnitsPerPoint, label);
    }

    void Numbers(std::initializer_list<int> numbers) {
        for (const int number : numbers) contents_.Number(number);
    }

    void SetUp(bool text, int grey) {
        if (grey != grey_) {
            contents_.Number(grey / 255.0);
            contents_.Write("g\n");
            grey_ = grey;
        }
        if (text == inText_) return;
        contents_.Write(text ? "BT\n" : "ET\n");
        inText_ = text;
        x_ = y_ = 0;
    }

    void WriteDots(const PclDrawing& drawing, const PclPage& page, const PclOp& op) {
        int& dots = dots_[op.Start];
        const PclBitmap& bitmap = drawing.Bitmap(op);
        if (dots < 0) dots = file_.AddDots(bitmap.Width, bitmap.Height, bitmap.Rows);
        SetUp(false, op.Grey);
        contents_.Write("q ");
        Numbers({op.Width, 0, 0, op.Height, op.X, page.Height - op.Y - op.Height});
        contents_.Write("cm ");
        contents_.DotsName(dots);
        contents_.Write("Do Q\n");
    }

    void WriteText(const PclDrawing& drawing, const PclPage& page, const PclOp& op) {
        const PclFont& font = drawing.Fonts[op.Font];
        const std::size_t face = FaceOf(font);
        const double size = font.Size * kUnitsPerPoint;
        SetUp(true, op.Grey);
        if (font_ != &font) {
            contents_.FontName(fonts_[face]);
            contents_.Number(size);
            contents_.Write("Tf\n");
            font_ = &font;
        }
        if (unseen_ != font.Face.empty()) {
            unseen_ = font.Face.empty();
            contents_.Write(unseen_ ? "3 Tr\n" : "0 Tr\n");
        }
        Numbers({op.X - x_, page.Height - op.Y - y_});
        contents_.Write("Td[");
        x_ = op.X;
        y_ = page.Height - op.Y;

        const FontMetrics& metrics = FindFontMetrics(kFaces[face]);
        const std::string_view text = drawing.Text(op);
        const std::int32_t* places = drawing.PositionsOf(op);
        std::size_t begin = 0;
        double pen = op.X;  // where the font's own widths have led
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (std::abs(places[i] - pen) > kNearEnough) {
                if (i > begin) contents_.String(text.substr(begin, i - begin));
                begin = i;
                const long shift = PdfContents::ToHundredths((pen - places[i]) * 1000 / size);
                contents_.Hundredths(shift);
                pen -= static_cast<double>(shift) / 100 * size / 1000;
            }
            pen += metrics.Advances[static_cast<unsigned char>(text[i])] * size / metrics.UnitsPerEm;
        }
        contents_.String(text.substr(begin));
        contents_.Write("]TJ\n");
    }

    const std::vector<FormSheet>& sheets_;
    PdfCore file_;
    PdfContents contents_;
    std::array<int, std::size(kFaces)> fonts_{};
    std::vector<int> dots_;  // of the sheet's bitmaps, -1 for those not written yet
    // What the contents have set.
    int grey_ = 0;
    const PclFont* font_ = nullptr;
    bool inText_ = false;
    bool unseen_ = false;
    int x_ = 0;
    int y_ = 0;
};

}  // namespace

void WriteFormPdf(const std::vector<FormSheet>& sheets, std::string_view title, FileReplacement& file) {
    FormPdf(sheets, file).Write(title);
}

}  // namespace tallymar
