#pragma once

#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/pcl/PclCanvas.h"
#include "platform/pcl/PclFontSelection.h"
#include "platform/pcl/PclPageSetup.h"
#include "platform/pcl/PclPattern.h"
#include "platform/pcl/PclRaster.h"
#include "platform/pcl/PclScanner.h"

namespace tallymar {

// A printer: what its state is, and what each command does to it. Fonts are those it holds, before and after.
class PclInterpreter {
 public:
    PclInterpreter(PclDrawing& drawing, SoftFonts& fonts);

    // A whole job: the last page comes out at its end.
    void Print(std::string_view stream);

 private:
    // A font as it was asked for; which one that is, is looked up when it is used.
    struct FontState {
        PclFontDescription Asked;
        int Number = -1;  // of a soft font chosen by it, or -1
        bool IsChosen = false;
        ChosenFont Chosen;
        int InDrawing = -1;  // its number there, once something is printed in it
    };

    // What a macro that is called gets a copy of.
    struct Environment {
        PclPageSetup Page;
        int Unit = kPclUnitsPerDot;  // of cursor moves
        std::array<FontState, 2> Fonts;
        std::size_t ActiveFont = 0;
        int Spacing = -1;  // from character to character when it is set; else the font's
        int LineTermination = 0;
        bool Wraps = false;
        int Pattern = PclPatterns::Black;
        int PatternId = 0;
        bool PatternIsOpaque = false;
        bool SourceIsOpaque = false;
        enum { NoUnderline, FixedUnderline, FloatingUnderline } Underline = NoUnderline;
        int RectangleWidth = 0;
        int RectangleHeight = 0;
        int RasterResolution = 75;
        int RasterMethod = 0;
        int RasterWidth = -1;
        int RasterHeight = -1;
    };

    struct Place {
        int X;
        int Y;
    };

    using Handler = void (PclInterpreter::*)(const PclCommand&);
    struct Row;
    static const Row kRows[];
    static const std::map<std::uint32_t, Handler>& Handlers();

    void Run(std::string_view stream);
    void Execute(const PclCommand& command, PclScanner& scanner);
    void Character(unsigned char code);
    void Control(char c);
    // A code that is printed whatever it is; what is no character takes the room of a blank.
    void PrintCode(unsigned char code);
    int AdvanceOf(unsigned char code);
    void Underline(int from, int to);
    void EndUnderline();
    bool ChoosesSymbolSet(const PclCommand& command);
    void SkipJobLanguage(PclScanner& scanner);
    void SkipPlotter(PclScanner& scanner);

    // Pages.
    void Eject();
    void Home();
    void PageChanged(bool known);
    void LineFeed(int distance);
    void CarriageReturn();

    // The cursor.
    void MoveX(double units, bool relative);
    void MoveY(double units, bool relative, int from);
    int Spacing();
    int TextEdge() const { return pastMargin_ ? now_.Page.LogicalWidth : now_.Page.RightMargin; }

    // Fonts.
    const ChosenFont& CurrentFont();
    // Commands begin with ( for the primary font, with ) for the secondary one.
    static std::size_t WhichFont(const PclCommand& command);
    void DescribeFont(std::size_t which, void (*change)(PclFontDescription&, double), double value);
    void FontsChanged();
    SoftFont* ChangeableFont(int number);
    void ChargeFont(std::size_t bytes);

    int Ink() const { return patterns_.GreyOf(now_.Pattern, now_.PatternId); }
    bool InkShows() const { return now_.Pattern != PclPatterns::White || now_.PatternIsOpaque; }
    void EndRaster();

    // Commands, by what they are about.
    void Reset(const PclCommand&);
    void HalfLineFeed(const PclCommand&);
    void ClearSideMargins(const PclCommand&);
    void SetOrientation(const PclCommand&);
    void SetPaper(const PclCommand&);
    void SetPageLength(const PclCommand&);
    void SetLineSpacing(const PclCommand&);
    void SetLinesPerInch(const PclCommand&);
    void SetTopMargin(const PclCommand&);
    void SetTextLength(const PclCommand&);
    void SetPerforationSkip(const PclCommand&);
    void FeedPaper(const PclCommand&);
    void SetLeftMargin(const PclCommand&);
    void SetRightMargin(const PclCommand&);
    void MoveColumns(const PclCommand&);
    void MoveRows(const PclCommand&);
    void MoveXDecipoints(const PclCommand&);
    void MoveYDecipoints(const PclCommand&);
    void MoveXUnits(const PclCommand&);
    void MoveYUnits(const PclCommand&);
    void SetUnit(const PclCommand&);
    void SetLineTermination(const PclCommand&);
    void SetSpacing(const PclCommand&);
    void SetPitchMode(const PclCommand&);
    void SetWrap(const PclCommand&);
    void PushPop(const PclCommand&);
    void PrintTransparent(const PclCommand&);
    void StartUnderline(const PclCommand&);
    void StopUnderline(const PclCommand&);
    void SetDuplex(const PclCommand&);
    void SetRectangleWidth(const PclCommand&);
    void SetRectangleHeight(const PclCommand&);
    void SetRectangleWidthDecipoints(const PclCommand&);
    void SetRectangleHeightDecipoints(const PclCommand&);
    void FillRectangle(const PclCommand&);
    void SetPatternId(const PclCommand&);
    void DownloadPattern(const PclCommand&);
    void SetSourceTransparency(const PclCommand&);
    void SetPatternTransparency(const PclCommand&);
    void SetPattern(const PclCommand&);
    void SetRasterResolution(const PclCommand&);
    void SetRasterWidth(const PclCommand&);
    void SetRasterHeight(const PclCommand&);
    void StartRaster(const PclCommand&);
    void FinishRaster(const PclCommand&);
    void FinishRasterAndReset(const PclCommand&);
    void SetRasterMethod(const PclCommand&);
    void SkipRasterRows(const PclCommand&);
    void AddRasterRow(const PclCommand&);
    void SetFontId(const PclCommand&);
    void SetCharacterCode(const PclCommand&);
    void ControlFonts(const PclCommand&);
    void DownloadFont(const PclCommand&);
    void DownloadGlyph(const PclCommand&);
    void SetFontSpacing(const PclCommand&);
    void SetFontPitch(const PclCommand&);
    void SetFontHeight(const PclCommand&);
    void SetFontStyle(const PclCommand&);
    void SetFontWeight(const PclCommand&);
    void SetFontTypeface(const PclCommand&);
    void SetFontByNumber(const PclCommand&);
    void SetDefaultFont(const PclCommand&);
    void SetMacroId(const PclCommand&);
    void ControlMacros(const PclCommand&);
    void RunMacro(int number, bool withCopy);
    void Ignore(const PclCommand&) {}

    PclDrawing& drawing_;
    PclCanvas canvas_;
    SoftFonts& fonts_;
    PclPatterns patterns_;
    Environment now_;

    int x_ = 0;                // of the logical page
    int y_ = 0;                // of the paper
    bool moved_ = false;       // since the page began
    bool pastMargin_ = false;  // a move has gone beyond the right margin: texts end at the page's edge
    int lastAdvance_ = 0;
    std::vector<Place> places_;  // pushed
    Place underline_{};          // where the line under the text begins
    int underlineEnd_ = 0;
    bool isUnderlined_ = false;

    bool inRaster_ = false;
    PclRaster raster_{0, 0};
    Place rasterPlace_{};
    int rasterDot_ = 0;

    int fontId_ = 0;
    int characterCode_ = 0;
    std::string glyphData_;  // of a character that comes in several blocks
    int glyphBlocks_ = 0;
    std::map<int, std::shared_ptr<SoftFont>> ownFonts_;  // those of fonts_ that this stream has made, and may change
    std::set<int> lastingFonts_;                         // that a reset leaves
    std::map<const SoftFont*, ChosenFont> knownFonts_;
    std::size_t fontBytes_ = 0;

    std::map<int, std::string> macros_;
    std::set<int> lastingMacros_;
    int macroId_ = 0;
    int overlay_ = -1;            // the macro that every page ends with
    std::size_t macroStart_ = 0;  // in the stream, while one is defined
    bool inMacro_ = false;
    std::size_t macroBytes_ = 0;
    int depth_ = 0;
    std::size_t readBytes_ = 0;
};

}  // namespace tallymar
