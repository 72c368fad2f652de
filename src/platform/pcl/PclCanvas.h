#pragma once

#include <map>
#include <string_view>

#include "platform/pcl/PclDrawing.h"
#include "platform/pcl/SoftFont.h"

namespace tallymar {

// How much a stream may draw and hold: far more than forms do, and little enough for any machine.
struct PclLimits {
    static constexpr std::size_t kPages = 500;
    static constexpr std::size_t kOps = 200'000;
    static constexpr std::size_t kCharacters = 500'000;
    static constexpr std::size_t kDotBytes = 32U << 20;   // of bitmaps in the drawing
    static constexpr std::size_t kFontBytes = 32U << 20;  // of soft fonts downloaded
    static constexpr std::size_t kMacroBytes = 4U << 20;  // of macros held
    static constexpr std::size_t kReadBytes = 16U << 20;  // of the stream and of macros run from it
    static constexpr std::size_t kSoftFonts = 100;
    static constexpr std::size_t kFonts = 300;  // of the drawing
    static constexpr double kInk = 1000;        // of all things drawn, in whole pages
};

// Failure::Overflow, with what there is too much of.
[[noreturn]] void FailPclLimit(std::string_view what);

// Collects what is drawn into a PclDrawing: clips to the paper, joins characters to texts.
class PclCanvas {
 public:
    explicit PclCanvas(PclDrawing& drawing) : drawing_(drawing) {}

    // The paper of the page to come, which begins with the first thing drawn, or with EndPage.
    void SetPaper(int width, int height);
    bool IsMarked() const { return marked_; }
    void EndPage();  // a blank one, when nothing is drawn

    // As much of it as lies on the paper. A grey whose white dots leave what is below as it is (not `opaque`) goes under what was
    // drawn before, but for what was painted over since.
    void Rectangle(int x, int y, int width, int height, int grey, bool opaque);
    // The number of a font in the drawing.
    int Font(const PclFont& font);
    // A character of Windows-1252 at its origin on the baseline. Characters that follow each other join to a text; one that
    // stands after more than one blank begins a new one.
    void Character(int font, int grey, char c, int x, int y, int advance);
    // Dots of size dot. A glyph that is made of lines becomes rectangles, which are crisp at any size; another is kept once.
    void Glyph(const SoftGlyph& glyph, int x, int y, int dot, int grey);
    void Bitmap(PclBitmap bitmap, int x, int y, int dot, int grey);
    void ChargeDots(std::size_t bytes);
    // Glyphs may have changed.
    void ForgetGlyphs() { glyphs_.clear(); }

    // A rectangle of dots within a glyph.
    struct Part {
        int Left;
        int Right;
        int Top;
        int Bottom;
    };

 private:
    PclPage& Page();
    void Add(const PclOp& op);
    void ChargeInk(double width, double height);
    PclOp& OpenText() { return drawing_.Pages.back().Ops[text_]; }
    struct KnownGlyph {
        std::vector<Part> Parts;   // of one made of lines
        std::uint32_t Bitmap = 0;  // else its number
    };

    std::uint32_t Keep(PclBitmap bitmap);
    void AddDots(std::uint32_t number, int x, int y, int dot, int grey);
    void AppendToText(char c, int x);
    void PutGreysUnder();

    PclDrawing& drawing_;
    std::map<const SoftGlyph*, KnownGlyph> glyphs_;
    std::size_t ops_ = 0;
    std::size_t dotBytes_ = 0;
    double ink_ = 0;
    int width_ = 0;
    int height_ = 0;
    bool marked_ = false;
    std::vector<std::size_t> fences_;  // things of the page that hide what is below: no grey goes under them
    // The text that more characters may join.
    bool textOpen_ = false;
    std::size_t text_ = 0;  // where it is among the things of the page
    int textEnd_ = 0;       // where its next character would stand
    int blanks_ = 0;        // that stand behind it already
    int blankX_ = 0;        // the first of them
};

}  // namespace tallymar
