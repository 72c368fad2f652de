#include "platform/pcl/PclCanvas.h"

#include <algorithm>
#include <utility>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

using Runs = std::vector<std::pair<int, int>>;

Runs RunsOf(const PclBitmap& bitmap, int y) {
    Runs runs;
    for (int x = 0; x < bitmap.Width; ++x) {
        if (!bitmap.IsSet(x, y)) continue;
        if (runs.empty() || runs.back().second != x) runs.emplace_back(x, x);
        ++runs.back().second;
    }
    return runs;
}

// The few rectangles that a glyph of lines is made of; none when it is another shape.
std::vector<PclCanvas::Part> PartsOf(const PclBitmap& bitmap) {
    constexpr std::size_t kMost = 4;  // a frame; more are letters
    std::vector<PclCanvas::Part> parts;
    Runs open;
    for (int y = 0; y < bitmap.Height; ++y) {
        const Runs runs = RunsOf(bitmap, y);
        if (runs == open) {
            for (std::size_t i = parts.size() - runs.size(); i < parts.size(); ++i) ++parts[i].Bottom;
            continue;
        }
        for (const auto& [left, right] : runs) parts.push_back({left, right, y, y + 1});
        if (parts.size() > kMost) return {};
        open = runs;
    }
    return parts;
}

}  // namespace

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
    ChargeInk(op.Width, op.Height);
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

// Whoever paints the drawing pays for what lies over each other too.
void PclCanvas::ChargeInk(double width, double height) {
    ink_ += width * height / (static_cast<double>(width_) * height_);
    if (ink_ > PclLimits::kInk) FailPclLimit("things drawn over each other");
}

void PclCanvas::ChargeDots(std::size_t bytes) {
    dotBytes_ += bytes;
    if (dotBytes_ > PclLimits::kDotBytes) FailPclLimit("dots");
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
    const double em = drawing_.Fonts[OpenText().Font].Size * kPclUnitsPerInch / 72;
    ChargeInk(em, em);
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
    auto known = glyphs_.find(&glyph);
    if (known == glyphs_.end()) {
        PclBitmap dots{.Width = glyph.Width, .Height = glyph.Height, .Rows = glyph.Rows};
        KnownGlyph made{.Parts = PartsOf(dots)};
        if (made.Parts.empty()) made.Bitmap = Keep(std::move(dots));
        known = glyphs_.emplace(&glyph, std::move(made)).first;
    }
    for (const Part& part : known->second.Parts) {
        Rectangle(x + part.Left * dot, y + part.Top * dot, (part.Right - part.Left) * dot, (part.Bottom - part.Top) * dot, grey,
                  grey == 255);
    }
    if (known->second.Parts.empty()) AddDots(known->second.Bitmap, x, y, dot, grey);
    textOpen_ = textOpen;  // the dots are those of its characters
}

void PclCanvas::Bitmap(PclBitmap bitmap, int x, int y, int dot, int grey) {
    AddDots(Keep(std::move(bitmap)), x, y, dot, grey);
}

std::uint32_t PclCanvas::Keep(PclBitmap bitmap) {
    ChargeDots(bitmap.Rows.size());
    drawing_.Bitmaps.push_back(std::move(bitmap));
    return static_cast<std::uint32_t>(drawing_.Bitmaps.size() - 1);
}

void PclCanvas::AddDots(std::uint32_t number, int x, int y, int dot, int grey) {
    const PclBitmap& bitmap = drawing_.Bitmaps[number];
    Add({.Op = PclOp::Kind::Bitmap,
         .Grey = static_cast<std::uint8_t>(grey),
         .X = x,
         .Y = y,
         .Width = bitmap.Width * dot,
         .Height = bitmap.Height * dot,
         .Start = number});
}

}  // namespace tallymar
