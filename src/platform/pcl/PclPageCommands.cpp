// Pages, margins and the cursor.

#include <algorithm>
#include <cmath>

#include "platform/pcl/PclInterpreter.h"

namespace tallymar {

namespace {

constexpr std::size_t kMostPlaces = 20;  // that a printer remembers
constexpr double kFarthest = 1e7;        // units: beyond every page, and within an int

int Rounded(double units) {
    return static_cast<int>(std::lround(std::clamp(units, -kFarthest, kFarthest)));
}

}  // namespace

void PclInterpreter::Home() {
    x_ = now_.Page.LeftMargin;
    y_ = now_.Page.FirstLine();
    moved_ = false;
    pastMargin_ = false;
}

void PclInterpreter::Eject() {
    EndUnderline();
    if (overlay_ >= 0) RunMacro(overlay_, true);
    canvas_.EndPage();
    moved_ = false;
}

void PclInterpreter::LineFeed(int distance) {
    y_ += distance;
    moved_ = true;
    if (y_ <= now_.Page.LastLine()) return;
    Eject();
    y_ = now_.Page.FirstLine() - (now_.Page.SkipsPerforation ? 0 : now_.Page.TopMargin);
}

void PclInterpreter::CarriageReturn() {
    x_ = now_.Page.LeftMargin;
    pastMargin_ = false;
}

void PclInterpreter::HalfLineFeed(const PclCommand&) {
    LineFeed(now_.Page.LineSpacing / 2);
}

void PclInterpreter::PageChanged(bool known) {
    if (!known) {
        ++drawing_.SkippedCommands;
        return;
    }
    canvas_.SetPaper(now_.Page.PaperWidth, now_.Page.PaperHeight);
    Home();
}

void PclInterpreter::SetOrientation(const PclCommand& command) {
    PclPageSetup turned = now_.Page;
    const bool known = turned.SetOrientation(command.Whole());
    if (turned.PaperWidth != now_.Page.PaperWidth && canvas_.IsMarked()) Eject();
    now_.Page = turned;
    PageChanged(known);
}

void PclInterpreter::SetPaper(const PclCommand& command) {
    PclPageSetup changed = now_.Page;
    const bool known = changed.SetPaper(command.Whole());
    if (known && canvas_.IsMarked()) Eject();
    now_.Page = changed;
    PageChanged(known);
}

// The length is that of the paper, which is chosen by itself: what is left are the margins.
void PclInterpreter::SetPageLength(const PclCommand&) {
    now_.Page.ResetMargins();
    Home();
}

void PclInterpreter::SetLineSpacing(const PclCommand& command) {
    constexpr int kFortyEighth = kPclUnitsPerInch / 48;
    constexpr double kMost = 336;
    if (command.Value < 0 || command.Value > kMost) return;
    now_.Page.LineSpacing = Rounded(command.Value * kFortyEighth);
    if (!moved_) Home();
}

void PclInterpreter::SetLinesPerInch(const PclCommand& command) {
    constexpr int kUsual = 12;
    const int lines = command.Whole() == 0 ? kUsual : command.Whole();
    if (lines < 1 || lines > 48 || 48 % lines != 0) return;
    now_.Page.LineSpacing = kPclUnitsPerInch / lines;
    if (!moved_) Home();
}

void PclInterpreter::SetTopMargin(const PclCommand& command) {
    if (now_.Page.SetTopMargin(command.Value) && !moved_) Home();
}

void PclInterpreter::SetTextLength(const PclCommand& command) {
    now_.Page.SetTextLength(command.Value);
}

void PclInterpreter::SetPerforationSkip(const PclCommand& command) {
    now_.Page.SkipsPerforation = command.Whole() != 0;
}

void PclInterpreter::FeedPaper(const PclCommand&) {
    if (canvas_.IsMarked()) Eject();
    Home();
}

void PclInterpreter::SetLeftMargin(const PclCommand& command) {
    const int margin = Rounded(std::abs(command.Value) * Spacing());
    if (margin >= now_.Page.RightMargin) return;
    now_.Page.LeftMargin = margin;
    x_ = std::max(x_, margin);
}

void PclInterpreter::SetRightMargin(const PclCommand& command) {
    const int margin = std::min(Rounded((std::abs(command.Value) + 1) * Spacing()), now_.Page.LogicalWidth);
    if (margin <= now_.Page.LeftMargin) return;
    now_.Page.RightMargin = margin;
    x_ = std::min(x_, margin);
}

void PclInterpreter::ClearSideMargins(const PclCommand&) {
    now_.Page.LeftMargin = 0;
    now_.Page.RightMargin = now_.Page.LogicalWidth;
}

void PclInterpreter::MoveX(double units, bool relative) {
    x_ = std::clamp(Rounded(units + (relative ? x_ : 0)), 0, now_.Page.LogicalWidth);
    pastMargin_ = x_ > now_.Page.RightMargin;
    moved_ = true;
}

void PclInterpreter::MoveY(double units, bool relative, int from) {
    y_ = std::clamp(Rounded(units + (relative ? y_ : from)), 0, now_.Page.PaperHeight);
    moved_ = true;
}

void PclInterpreter::MoveColumns(const PclCommand& command) {
    MoveX(command.Value * Spacing(), command.Signed);
}

void PclInterpreter::MoveRows(const PclCommand& command) {
    MoveY(command.Value * now_.Page.LineSpacing, command.Signed, now_.Page.FirstLine());
}

void PclInterpreter::MoveXDecipoints(const PclCommand& command) {
    MoveX(command.Value * kPclUnitsPerDecipoint, command.Signed);
}

void PclInterpreter::MoveYDecipoints(const PclCommand& command) {
    MoveY(command.Value * kPclUnitsPerDecipoint, command.Signed, now_.Page.TopMargin);
}

void PclInterpreter::MoveXUnits(const PclCommand& command) {
    MoveX(command.Value * now_.Unit, command.Signed);
}

void PclInterpreter::MoveYUnits(const PclCommand& command) {
    MoveY(command.Value * now_.Unit, command.Signed, now_.Page.TopMargin);
}

void PclInterpreter::SetUnit(const PclCommand& command) {
    const int perInch = command.Whole();
    if (perInch < 96 || perInch > kPclUnitsPerInch || kPclUnitsPerInch % perInch != 0) return;
    now_.Unit = kPclUnitsPerInch / perInch;
}

void PclInterpreter::SetLineTermination(const PclCommand& command) {
    if (command.Whole() >= 0 && command.Whole() <= 3) now_.LineTermination = command.Whole();
}

void PclInterpreter::SetWrap(const PclCommand& command) {
    now_.Wraps = command.Whole() == 0;
}

void PclInterpreter::PushPop(const PclCommand& command) {
    if (command.Whole() == 0) {
        if (places_.size() < kMostPlaces) places_.push_back({x_, y_});
    } else if (!places_.empty()) {
        const Place place = places_.back();
        places_.pop_back();
        MoveX(place.X, false);
        MoveY(place.Y, false, 0);
    }
}

void PclInterpreter::PrintTransparent(const PclCommand& command) {
    for (const char c : command.Data) PrintCode(static_cast<unsigned char>(c));
}

void PclInterpreter::StartUnderline(const PclCommand& command) {
    constexpr int kFloating = 3;
    now_.Underline = command.Whole() == kFloating ? Environment::FloatingUnderline : Environment::FixedUnderline;
}

void PclInterpreter::StopUnderline(const PclCommand&) {
    EndUnderline();
    now_.Underline = Environment::NoUnderline;
}

void PclInterpreter::Underline(int from, int to) {
    if (isUnderlined_ && (from != underlineEnd_ || y_ != underline_.Y)) EndUnderline();
    if (!isUnderlined_) underline_ = {from, y_};
    isUnderlined_ = true;
    underlineEnd_ = to;
}

void PclInterpreter::EndUnderline() {
    // A fixed one lies 5 dots below the baseline; a floating one is as far away as the text is large.
    constexpr int kFixed = 5 * kPclUnitsPerDot;
    constexpr double kFloatingUnitsPerPoint = 0.2 * kPclUnitsPerInch / 72;
    constexpr int kThickness = 3 * kPclUnitsPerDot;
    if (!isUnderlined_) return;
    isUnderlined_ = false;
    const bool floating = now_.Underline == Environment::FloatingUnderline;
    const int below = floating ? Rounded(CurrentFont().Drawn.Size * kFloatingUnitsPerPoint) : kFixed;
    canvas_.Rectangle(now_.Page.LogicalLeft + underline_.X, underline_.Y + below - kThickness / 2, underlineEnd_ - underline_.X,
                      kThickness, 0, false);
}

// The other side of a sheet is a page of its own.
void PclInterpreter::SetDuplex(const PclCommand& command) {
    FeedPaper(command);
}

}  // namespace tallymar
