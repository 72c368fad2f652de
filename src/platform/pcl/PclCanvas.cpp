#include "platform/pcl/PclCanvas.h"

#include <algorithm>
#include <limits>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

void FailPclLimit(std::string_view what) {
    throw PlatformError(Failure::Overflow, "The page holds too much to be shown: too many " + std::string(what) + ".");
}

void PclCanvas::SetPaper(int width, int height) {
    width_ = width;
    height_ = height;
}

PclPage& PclCanvas::Page() {
    if (!marked_) {
        if (drawing_.Pages.size() >= PclLimits::kPages) FailPclLimit("pages");
        drawing_.Pages.push_back({.Width = width_, .Height = height_, .Ops = {}});
        marked_ = true;
    }
    return drawing_.Pages.back();
}

void PclCanvas::EndPage() {
    Page();
    PutGreysUnder();
    marked_ = false;
    textOpen_ = false;
}

void PclCanvas::PutGreysUnder() {
    std::vector<PclOp>& ops = drawing_.Pages.back().Ops;
    const auto isGrey = [](const PclOp& op) { return op.Op == PclOp::Kind::Rectangle && op.Grey > 0; };
    fences_.push_back(ops.size());
    std::size_t from = 0;
    for (const std::size_t fence : fences_) {
        const auto begin = ops.begin();
        std::stable_partition(begin + static_cast<std::ptrdiff_t>(from), begin + static_cast<std::ptrdiff_t>(fence), isGrey);
        from = std::min(fence + 1, ops.size());
    }
    fences_.clear();
}

void PclCanvas::Add(const PclOp& op) {
    if (++ops_ > PclLimits::kOps) FailPclLimit("things drawn");
    textOpen_ = false;
    Page().Ops.push_back(op);
}

void PclCanvas::Rectangle(int x, int y, int width, int height, int grey, bool opaque) {
    const int left = std::max(x, 0);
    const int top = std::max(y, 0);
    const int right = std::min(x + width, width_);
    const int bottom = std::min(y + height, height_);
    if (left >= right || top >= bottom) return;
    if (opaque) fences_.push_back(Page().Ops.size());
    Add({.Op = PclOp::Kind::Rectangle,
         .Grey = static_cast<std::uint8_t>(grey),
         .X = left,
         .Y = top,
         .Width = right - left,
         .Height = bottom - top});
}

int PclCanvas::Font(const PclFont& font) {
    const auto found = std::find_if(drawing_.Fonts.begin(), drawing_.Fonts.end(), [&](const PclFont& known) {
        return known.Face == font.Face && known.Size == font.Size && known.Asked == font.Asked;
    });
    if (found != drawing_.Fonts.end()) return static_cast<int>(found - drawing_.Fonts.begin());
    if (drawing_.Fonts.size() >= PclLimits::kFonts) FailPclLimit("fonts");
    drawing_.Fonts.push_back(font);
    return static_cast<int>(drawing_.Fonts.size()) - 1;
}

void PclCanvas::AppendToText(char c, int x) {
    if (drawing_.Texts.size() >= PclLimits::kCharacters) FailPclLimit("characters");
    drawing_.Texts += c;
    drawing_.Positions.push_back(x);
    ++OpenText().Length;
}

void PclCanvas::Character(int font, int grey, char c, int x, int y, int advance) {
    const auto follows = [&] {
        if (!textOpen_ || x != textEnd_) return false;
        const PclOp& text = OpenText();
        return text.Font == font && text.Grey == grey && text.Y == y;
    };
    if (c == ' ') {
        if (!follows()) {
            textOpen_ = false;
            return;
        }
        if (blanks_++ == 0) blankX_ = x;
        textEnd_ = x + advance;
        return;
    }
    if (!follows() || blanks_ > 1) {
        Add({.Op = PclOp::Kind::Text,
             .Grey = static_cast<std::uint8_t>(grey),
             .Font = static_cast<std::uint16_t>(font),
             .X = x,
             .Y = y,
             .Start = static_cast<std::uint32_t>(drawing_.Texts.size())});
        textOpen_ = true;
        text_ = drawing_.Pages.back().Ops.size() - 1;
    } else if (blanks_ == 1) {
        AppendToText(' ', blankX_);
    }
    blanks_ = 0;
    AppendToText(c, x);
    textEnd_ = x + advance;
    OpenText().Width = textEnd_ - OpenText().X;
}

void PclCanvas::Glyph(const SoftGlyph& glyph, int x, int y, int dot, int grey) {
    if (glyph.Rows.empty()) return;
    const bool textOpen = textOpen_;
    const auto known = glyphs_.find(&glyph);
    if (known == glyphs_.end()) {
        glyphs_.emplace(&glyph, static_cast<std::uint32_t>(drawing_.Bitmaps.size()));
        Bitmap({.Width = glyph.Width, .Height = glyph.Height, .Rows = glyph.Rows}, x, y, dot, grey);
    } else {
        Add({.Op = PclOp::Kind::Bitmap,
             .Grey = static_cast<std::uint8_t>(grey),
             .X = x,
             .Y = y,
             .Width = glyph.Width * dot,
             .Height = glyph.Height * dot,
             .Start = known->second});
    }
    textOpen_ = textOpen;  // the dots are those of its characters
}

void PclCanvas::Bitmap(PclBitmap bitmap, int x, int y, int dot, int grey) {
    dotBytes_ += bitmap.Rows.size();
    if (dotBytes_ > PclLimits::kDotBytes) FailPclLimit("dots");
    const int width = bitmap.Width * dot;
    const int height = bitmap.Height * dot;
    drawing_.Bitmaps.push_back(std::move(bitmap));
    Add({.Op = PclOp::Kind::Bitmap,
         .Grey = static_cast<std::uint8_t>(grey),
         .X = x,
         .Y = y,
         .Width = width,
         .Height = height,
         .Start = static_cast<std::uint32_t>(drawing_.Bitmaps.size() - 1)});
}

}  // namespace tallymar
