#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tallymar {

// All positions are twips (1440 to the inch) from the upper left corner of the paper.
struct PaperSize {
    int Width = 0;
    int Height = 0;
};

inline constexpr PaperSize kLetterLandscape{15840, 12240};
inline constexpr PaperSize kLetterPortrait{12240, 15840};

// The characters and lines of a page made into fixed-pitch text. Left and Top are the paper's margins, which a text file does
// not have.
struct TextGrid {
    double CharsPerInch = 17;
    double LinesPerInch = 8;
    int Left = 0;
    int Top = 0;
};

// A font by name and size, shared by many items of a document.
struct PageFont {
    std::string Name;
    float Size = 0;  // points

    friend bool operator==(const PageFont&, const PageFont&) = default;
};

// One drawn thing. A text stands with its upper left corner at X, Y, its baseline the font's ascent below; a line runs from X, Y
// to X2, Y2.
struct PageItem {
    enum class Kind : std::uint8_t { Text, Line };

    Kind Op = Kind::Text;
    std::uint8_t Font = 0;  // texts: index into the document's fonts
    union {
        std::uint16_t LineWidth = 0;  // lines: DrawWidth, in dots of 1/300 inch, half of it on either side
        std::uint16_t Frame;          // texts: the frame that they belong to, 0 for none
    };
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t X2 = 0;  // texts: X plus the text's width
    std::int32_t Y2 = 0;  // texts: Y plus the height of a line of the font
    std::uint32_t TextStart = 0;
    std::uint32_t TextLength = 0;
};

// A place on the paper that is not where the grid has it, such as a label of die-cut stock. The position X, Y of the drawing
// stands at PaperX, PaperY of the paper, and texts may reach Width from there.
struct PageFrame {
    int X = 0;
    int Y = 0;
    int PaperX = 0;
    int PaperY = 0;
    int Width = 0;

    friend bool operator==(const PageFrame&, const PageFrame&) = default;
};

// The page canvas that a report draws on: an in-memory document of texts and lines, which is then delivered to preview, printer
// or file. It knows nothing of windows; the same numbers come out on every machine.
//
// An item takes 28 bytes and its text one byte a character; a finished page holds no spare room. 2,000 pages of 800 texts of ten
// characters measure 76 MB, 48 bytes an item all told.
class PageDocument {
 public:
    explicit PageDocument(PaperSize paper = kLetterLandscape);

    // The pen, set before drawing.
    std::string FontName = "Arial";  // "Arial", "Arial Bold" or "Courier New"; drawing with another fails with InvalidCall
    float FontSize = 7.5F;           // points
    int DrawWidth = 1;
    int CurrentX = 0;
    int CurrentY = 0;

    std::uint16_t FrameOfTexts = 0;  // of the texts drawn, from AddFrame; 0: none

    // What stays free around the drawing when it is put on paper, for printers that do not reach the edges: positions are counted
    // from here. Items keep the positions that they were drawn at; PagePlacement tells where on the paper that is.
    int Margin = 0;
    // A frame for texts to come. An equal one is kept once. Failure::Overflow beyond 65,535 frames.
    std::uint16_t AddFrame(const PageFrame& frame);

    std::string Title;             // of the document, for window captions and file properties
    std::filesystem::path Source;  // the file that it was made from, which it is never written over
    TextGrid Grid;                 // what it was laid out on

    // The width of the text in the current font, in twips: the sum of its characters' advance widths x FontSize x 20 / the units
    // of the em (2048), rounded once to whole twips, half to even. No kerning.
    int TextWidth(std::string_view text) const;
    // Draws at the pen, which then stands after the text. An empty text leaves no item.
    void PrintText(std::string_view text);
    void DrawLine(int x1, int y1, int x2, int y2);
    void NewPage();                           // the pen returns to 0, 0
    int Page() const { return PageCount(); }  // the number of the page being drawn, from 1

    // The finished document.
    const PaperSize& Paper() const { return paper_; }
    int PageCount() const;
    // The items of page 1 to PageCount, in drawing order; another page fails with SubscriptOutOfRange.
    const PageItem* PageBegin(int page) const;
    const PageItem* PageEnd(int page) const;
    std::string_view Text(const PageItem& item) const;  // Windows-1252
    const PageFont& Font(const PageItem& item) const;
    const PageFrame& Frame(const PageItem& item) const;            // of a text that has one
    const std::vector<PageFont>& Fonts() const { return fonts_; }  // in order of first use

 private:
    std::uint8_t FontIndex();

    PaperSize paper_;
    std::vector<PageFont> fonts_;
    std::vector<PageFrame> frames_;
    std::vector<std::vector<PageItem>> pages_;
    std::string texts_;
};

}  // namespace tallymar
