#include "platform/pcl/PclInterpreter.h"

#include <algorithm>

#include "platform/pcl/PclReader.h"
#include "platform/pcl/PclSymbolSet.h"

namespace tallymar {

struct PclInterpreter::Row {
    std::string_view Characters;
    Handler Do;
};

const PclInterpreter::Row PclInterpreter::kRows[] = {
    {"E", &PclInterpreter::Reset},
    {"=", &PclInterpreter::HalfLineFeed},
    {"9", &PclInterpreter::ClearSideMargins},
    {"&lO", &PclInterpreter::SetOrientation},
    {"&lA", &PclInterpreter::SetPaper},
    {"&lP", &PclInterpreter::SetPageLength},
    {"&lC", &PclInterpreter::SetLineSpacing},
    {"&lD", &PclInterpreter::SetLinesPerInch},
    {"&lE", &PclInterpreter::SetTopMargin},
    {"&lF", &PclInterpreter::SetTextLength},
    {"&lL", &PclInterpreter::SetPerforationSkip},
    {"&lH", &PclInterpreter::FeedPaper},
    {"&lX", &PclInterpreter::Ignore},  // copies
    {"&lS", &PclInterpreter::SetDuplex},
    {"&lG", &PclInterpreter::Ignore},  // output bin
    {"&lT", &PclInterpreter::Ignore},  // stacking
    {"&lM", &PclInterpreter::Ignore},  // kind of paper
    {"&aL", &PclInterpreter::SetLeftMargin},
    {"&aM", &PclInterpreter::SetRightMargin},
    {"&aC", &PclInterpreter::MoveColumns},
    {"&aR", &PclInterpreter::MoveRows},
    {"&aH", &PclInterpreter::MoveXDecipoints},
    {"&aV", &PclInterpreter::MoveYDecipoints},
    {"&aG", &PclInterpreter::Ignore},  // side of the sheet
    {"*pX", &PclInterpreter::MoveXUnits},
    {"*pY", &PclInterpreter::MoveYUnits},
    {"&uD", &PclInterpreter::SetUnit},
    {"&kG", &PclInterpreter::SetLineTermination},
    {"&kH", &PclInterpreter::SetSpacing},
    {"&kS", &PclInterpreter::SetPitchMode},
    {"&sC", &PclInterpreter::SetWrap},
    {"&fS", &PclInterpreter::PushPop},
    {"&pX", &PclInterpreter::PrintTransparent},
    {"&dD", &PclInterpreter::StartUnderline},
    {"&d@", &PclInterpreter::StopUnderline},
    {"*cA", &PclInterpreter::SetRectangleWidth},
    {"*cB", &PclInterpreter::SetRectangleHeight},
    {"*cH", &PclInterpreter::SetRectangleWidthDecipoints},
    {"*cV", &PclInterpreter::SetRectangleHeightDecipoints},
    {"*cP", &PclInterpreter::FillRectangle},
    {"*cG", &PclInterpreter::SetPatternId},
    {"*cW", &PclInterpreter::DownloadPattern},
    {"*vN", &PclInterpreter::SetSourceTransparency},
    {"*vO", &PclInterpreter::SetPatternTransparency},
    {"*vT", &PclInterpreter::SetPattern},
    {"*tR", &PclInterpreter::SetRasterResolution},
    {"*rS", &PclInterpreter::SetRasterWidth},
    {"*rT", &PclInterpreter::SetRasterHeight},
    {"*rA", &PclInterpreter::StartRaster},
    {"*rB", &PclInterpreter::FinishRaster},
    {"*rC", &PclInterpreter::FinishRasterAndReset},
    {"*rF", &PclInterpreter::Ignore},  // raster along the paper or the page: the same on an upright one
    {"*bM", &PclInterpreter::SetRasterMethod},
    {"*bY", &PclInterpreter::SkipRasterRows},
    {"*bW", &PclInterpreter::AddRasterRow},
    {"*cD", &PclInterpreter::SetFontId},
    {"*cE", &PclInterpreter::SetCharacterCode},
    {"*cF", &PclInterpreter::ControlFonts},
    {")sW", &PclInterpreter::DownloadFont},
    {"(sW", &PclInterpreter::DownloadGlyph},
    {"(sP", &PclInterpreter::SetFontSpacing},
    {")sP", &PclInterpreter::SetFontSpacing},
    {"(sH", &PclInterpreter::SetFontPitch},
    {")sH", &PclInterpreter::SetFontPitch},
    {"(sV", &PclInterpreter::SetFontHeight},
    {")sV", &PclInterpreter::SetFontHeight},
    {"(sS", &PclInterpreter::SetFontStyle},
    {")sS", &PclInterpreter::SetFontStyle},
    {"(sB", &PclInterpreter::SetFontWeight},
    {")sB", &PclInterpreter::SetFontWeight},
    {"(sT", &PclInterpreter::SetFontTypeface},
    {")sT", &PclInterpreter::SetFontTypeface},
    {"(sQ", &PclInterpreter::Ignore},  // quality
    {")sQ", &PclInterpreter::Ignore},
    {"(X", &PclInterpreter::SetFontByNumber},
    {")X", &PclInterpreter::SetFontByNumber},
    {"(@", &PclInterpreter::SetDefaultFont},
    {")@", &PclInterpreter::SetDefaultFont},
    {"&fY", &PclInterpreter::SetMacroId},
    {"&fX", &PclInterpreter::ControlMacros},
};

const std::map<std::uint32_t, PclInterpreter::Handler>& PclInterpreter::Handlers() {
    static const std::map<std::uint32_t, Handler> handlers = [] {
        std::map<std::uint32_t, Handler> made;
        for (const Row& row : kRows) made.emplace(PclKey(row.Characters), row.Do);
        return made;
    }();
    return handlers;
}

PclInterpreter::PclInterpreter(PclDrawing& drawing, SoftFonts& fonts) : drawing_(drawing), canvas_(drawing), fonts_(fonts) {
    for (const auto& [number, font] : fonts.All()) lastingFonts_.insert(number);
    canvas_.SetPaper(now_.Page.PaperWidth, now_.Page.PaperHeight);
    Home();
}

void PclInterpreter::Print(std::string_view stream) {
    Run(stream);
    EndRaster();
    EndUnderline();
    if (canvas_.IsMarked()) Eject();
}

void PclInterpreter::Run(std::string_view stream) {
    readBytes_ += stream.size();
    if (readBytes_ > PclLimits::kReadBytes) FailPclLimit("bytes");
    PclScanner scanner(stream);
    for (;;) {
        switch (scanner.Next()) {
            case PclScanner::Token::End:
                if (depth_ == 0 && (scanner.IsCutShort() || inMacro_)) drawing_.CutShort = true;
                return;
            case PclScanner::Token::Character:
                if (inMacro_ && depth_ == 0) break;
                Character(static_cast<unsigned char>(scanner.Character()));
                break;
            case PclScanner::Token::Command:
                Execute(scanner.Command(), scanner);
                break;
        }
    }
}

void PclInterpreter::Execute(const PclCommand& command, PclScanner& scanner) {
    constexpr int kStartMacro = 0;
    constexpr int kStopMacro = 1;
    if (depth_ == 0 && command.Key == PclKey("&fX") && (command.Whole() == kStopMacro) == inMacro_ &&
        command.Whole() <= kStopMacro) {
        if (command.Whole() == kStartMacro) {
            inMacro_ = true;
            macroStart_ = scanner.Position();
            return;
        }
        inMacro_ = false;
        std::string& macro = macros_[macroId_];
        macroBytes_ -= macro.size();
        const std::size_t end = std::max(scanner.SequenceStart(), macroStart_);
        macro = scanner.Stream().substr(macroStart_, end - macroStart_);
        macroBytes_ += macro.size();
        if (macroBytes_ > PclLimits::kMacroBytes) FailPclLimit("macros");
        return;
    }
    if (inMacro_ && depth_ == 0) return;

    constexpr std::uint32_t kRasterData = PclKey("*b");
    if (inRaster_ && command.Key >> 8 != kRasterData) EndRaster();
    if (command.Key == PclKey("%X")) return SkipJobLanguage(scanner);
    if (command.Key == PclKey("%B")) return SkipPlotter(scanner);
    if (command.Key == PclKey("%A")) return;  // back from the plotter's language
    const auto found = Handlers().find(command.Key);
    if (found != Handlers().end()) {
        (this->*found->second)(command);
    } else if (!ChoosesSymbolSet(command)) {
        ++drawing_.SkippedCommands;
    }
}

// ESC%-12345X ends a job; lines for the printer's own ears follow.
void PclInterpreter::SkipJobLanguage(PclScanner& scanner) {
    Reset({});
    std::size_t at = scanner.Position();
    const std::string_view stream = scanner.Stream();
    while (stream.substr(at, 4) == "@PJL") {
        const std::size_t end = stream.find('\n', at);
        at = end == std::string_view::npos ? stream.size() : end + 1;
    }
    scanner.GoTo(at);
}

// ESC%0B: drawings in the plotter's language go on until an escape sequence.
void PclInterpreter::SkipPlotter(PclScanner& scanner) {
    ++drawing_.SkippedCommands;
    scanner.GoTo(std::min(scanner.Stream().find('\x1B', scanner.Position()), scanner.Stream().size()));
}

bool PclInterpreter::ChoosesSymbolSet(const PclCommand& command) {
    const std::uint32_t prefix = command.Key >> 8;
    const char letter = static_cast<char>(command.Key & 0xFF);
    if ((prefix != PclKey("(") && prefix != PclKey(")")) || letter < 'A' || letter > 'Z') return false;
    const auto change = [](PclFontDescription& asked, double symbolSet) { asked.SymbolSet = static_cast<int>(symbolSet); };
    DescribeFont(WhichFont(command), change, PclSymbolSet(std::clamp(command.Whole(), 0, 2047), letter));
    return true;
}

void PclInterpreter::Reset(const PclCommand&) {
    EndRaster();
    EndUnderline();
    if (canvas_.IsMarked()) Eject();
    now_ = {};
    places_.clear();
    overlay_ = -1;
    fontId_ = characterCode_ = macroId_ = 0;
    patterns_ = {};
    std::vector<int> gone;
    for (const auto& [number, font] : fonts_.All()) {
        if (!lastingFonts_.contains(number)) gone.push_back(number);
    }
    for (const int number : gone) {
        fonts_.Remove(number);
        ownFonts_.erase(number);
    }
    std::erase_if(macros_, [&](const auto& macro) { return !lastingMacros_.contains(macro.first); });
    FontsChanged();
    canvas_.SetPaper(now_.Page.PaperWidth, now_.Page.PaperHeight);
    Home();
}

void PclInterpreter::Control(char c) {
    switch (c) {
        case '\b':
            x_ = std::max(x_ - lastAdvance_, 0);
            break;
        case '\t': {
            constexpr int kColumns = 8;
            const int stop = std::max(Spacing() * kColumns, 1);
            const int from = std::max(x_ - now_.Page.LeftMargin, 0);
            MoveX(static_cast<double>(now_.Page.LeftMargin) + (from / stop + 1) * stop, false);
            break;
        }
        case '\n':
            if (now_.LineTermination >= 2) CarriageReturn();
            LineFeed(now_.Page.LineSpacing);
            break;
        case '\f':
            if (now_.LineTermination >= 2) CarriageReturn();
            Eject();
            y_ = now_.Page.FirstLine();
            break;
        case '\r':
            CarriageReturn();
            if (now_.LineTermination % 2 != 0) LineFeed(now_.Page.LineSpacing);
            break;
        case '\x0E':
        case '\x0F':
            now_.ActiveFont = c == '\x0E' ? 1 : 0;
            now_.Spacing = -1;
            break;
        default:
            break;
    }
}

void PclInterpreter::Character(unsigned char code) {
    EndRaster();
    constexpr unsigned char kEscape = 0x1B;
    if (code < ' ') {
        if (code != kEscape) Control(static_cast<char>(code));
        return;
    }
    PrintCode(code);
}

int PclInterpreter::AdvanceOf(unsigned char code) {
    const ChosenFont& font = CurrentFont();
    if (!font.Drawn.Asked.Proportional) return Spacing();
    if (font.Soft) {
        const SoftGlyph* glyph = font.Soft->Find(static_cast<char>(code));
        return glyph != nullptr ? glyph->DeltaX * kPclUnitsPerInch / (4 * font.Soft->Resolution) : Spacing();
    }
    const std::optional<char> character = ToWindows1252(font.Drawn.Asked.SymbolSet, code);
    if (!character || code == ' ') return Spacing();
    const int ems = font.Metrics->Advances[static_cast<unsigned char>(*character)];
    constexpr double kUnitsPerPoint = kPclUnitsPerInch / 72.0;
    return static_cast<int>(ems * font.Drawn.Size * kUnitsPerPoint / font.Metrics->UnitsPerEm + 0.5);
}

void PclInterpreter::PrintCode(unsigned char code) {
    moved_ = true;
    if (now_.Wraps && x_ + AdvanceOf(code) > TextEdge()) {
        CarriageReturn();
        LineFeed(now_.Page.LineSpacing);
    }
    // Looked up after the line's end, which may end the page and run a macro.
    const int advance = AdvanceOf(code);
    const ChosenFont& font = CurrentFont();
    const int symbolSet = font.Drawn.Asked.SymbolSet;
    const SoftGlyph* glyph = font.Soft ? font.Soft->Find(static_cast<char>(code)) : nullptr;
    const std::optional<char> character = ToWindows1252(symbolSet, code);
    const bool prints = font.Soft ? glyph != nullptr : character.has_value();
    if (x_ >= TextEdge()) {
        if (code != ' ') ++drawing_.SkippedCharacters;
        return;
    }
    if (!prints && code != ' ') ++drawing_.SkippedCharacters;
    if (InkShows()) {
        const int x = now_.Page.LogicalLeft + x_;
        const bool asText = !font.Drawn.Face.empty() || IsTextSymbolSet(symbolSet);
        int& number = now_.Fonts[now_.ActiveFont].InDrawing;
        if (number < 0) number = canvas_.Font(font.Drawn);
        if (code == ' ' || !prints) {
            canvas_.Character(number, Ink(), ' ', x, y_, advance);
        } else if (asText && character) {
            canvas_.Character(number, Ink(), *character, x, y_, advance);
        }
        if (glyph != nullptr && font.Drawn.Face.empty()) {
            const int dot = kPclUnitsPerInch / font.Soft->Resolution;
            canvas_.Glyph(*glyph, x + glyph->Left * dot, y_ - glyph->Top * dot, dot, Ink());
        }
    }
    if (now_.Underline != Environment::NoUnderline) Underline(x_, x_ + advance);
    lastAdvance_ = advance;
    x_ = std::clamp(x_ + advance, 0, TextEdge());
}

PclDrawing ReadPcl(std::string_view stream, const SoftFonts& fonts) {
    PclDrawing drawing;
    SoftFonts held = fonts;
    PclInterpreter(drawing, held).Print(stream);
    return drawing;
}

void SoftFonts::Download(std::string_view stream) {
    PclDrawing nowhere;
    SoftFonts held = *this;
    PclInterpreter(nowhere, held).Print(stream);
    *this = std::move(held);
}

}  // namespace tallymar
