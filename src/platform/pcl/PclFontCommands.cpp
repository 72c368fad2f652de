// Fonts and macros.

#include <algorithm>

#include "platform/pcl/PclInterpreter.h"

namespace tallymar {

const ChosenFont& PclInterpreter::CurrentFont() {
    FontState& state = now_.Fonts[now_.ActiveFont];
    if (!state.IsChosen) {
        const std::shared_ptr<const SoftFont> numbered = state.Number >= 0 ? fonts_.Find(state.Number) : nullptr;
        if (numbered) {
            const auto known = knownFonts_.find(numbered.get());
            state.Chosen = known != knownFonts_.end() ? known->second : ChooseSoftFont(numbered);
            knownFonts_[numbered.get()] = state.Chosen;
        } else {
            state.Chosen = ChooseFont(state.Asked, fonts_);
        }
        state.IsChosen = true;
        state.InDrawing = -1;
    }
    return state.Chosen;
}

int PclInterpreter::Spacing() {
    return now_.Spacing >= 0 ? now_.Spacing : CurrentFont().Spacing;
}

void PclInterpreter::SetSpacing(const PclCommand& command) {
    constexpr double kUnits = kPclUnitsPerInch / 120.0;
    constexpr double kMost = 840;
    now_.Spacing = static_cast<int>(std::clamp(command.Value, 0.0, kMost) * kUnits + 0.5);
}

std::size_t PclInterpreter::WhichFont(const PclCommand& command) {
    const std::uint32_t prefix = command.Key > 0xFFFF ? command.Key >> 16 : command.Key >> 8;
    return prefix == PclKey("(") ? 0 : 1;
}

void PclInterpreter::DescribeFont(std::size_t which, void (*change)(PclFontDescription&, double), double value) {
    FontState& state = now_.Fonts[which];
    state.Number = -1;
    state.IsChosen = false;
    change(state.Asked, value);
    if (which == now_.ActiveFont) now_.Spacing = -1;
}

void PclInterpreter::SetFontSpacing(const PclCommand& command) {
    DescribeFont(
        WhichFont(command), [](PclFontDescription& asked, double value) { asked.Proportional = value == 1; }, command.Value);
}

void PclInterpreter::SetFontPitch(const PclCommand& command) {
    const auto change = [](PclFontDescription& asked, double value) {
        asked.Pitch = static_cast<int>(std::clamp(value, 0.1, 576.0) * 100 + 0.5);
    };
    DescribeFont(WhichFont(command), change, command.Value);
}

void PclInterpreter::SetFontHeight(const PclCommand& command) {
    const auto change = [](PclFontDescription& asked, double value) {
        asked.Height = static_cast<int>(std::clamp(value, 0.25, 999.75) * 100 + 0.5);
    };
    DescribeFont(WhichFont(command), change, command.Value);
}

void PclInterpreter::SetFontStyle(const PclCommand& command) {
    DescribeFont(
        WhichFont(command), [](PclFontDescription& asked, double value) { asked.Style = static_cast<int>(value); },
        command.Value);
}

void PclInterpreter::SetFontWeight(const PclCommand& command) {
    const auto change = [](PclFontDescription& asked, double value) {
        asked.Weight = static_cast<int>(std::clamp(value, -7.0, 7.0));
    };
    DescribeFont(WhichFont(command), change, command.Value);
}

void PclInterpreter::SetFontTypeface(const PclCommand& command) {
    DescribeFont(
        WhichFont(command), [](PclFontDescription& asked, double value) { asked.Typeface = static_cast<int>(value); },
        command.Value);
}

// A printer that lacks the number keeps the font that it has.
void PclInterpreter::SetFontByNumber(const PclCommand& command) {
    const std::shared_ptr<const SoftFont> font = fonts_.Find(command.Whole());
    if (!font) {
        ++drawing_.MissingFonts;
        return;
    }
    const std::size_t which = WhichFont(command);
    now_.Fonts[which] = {
        .Asked = DescriptionOf(*font), .Number = command.Whole(), .IsChosen = false, .Chosen = {}, .InDrawing = -1};
    if (which == now_.ActiveFont) now_.Spacing = -1;
}

void PclInterpreter::SetDefaultFont(const PclCommand& command) {
    const std::size_t which = WhichFont(command);
    now_.Fonts[which] = {};
    if (which == now_.ActiveFont) now_.Spacing = -1;
}

void PclInterpreter::SetPitchMode(const PclCommand& command) {
    const double pitch = command.Whole() == 2 ? 16.67 : command.Whole() == 4 ? 12 : 10;
    for (std::size_t which = 0; which < now_.Fonts.size(); ++which) {
        DescribeFont(
            which, [](PclFontDescription& asked, double value) { asked.Pitch = static_cast<int>(value * 100); }, pitch);
    }
}

void PclInterpreter::FontsChanged() {
    for (FontState& state : now_.Fonts) state.IsChosen = false;
    knownFonts_.clear();
    canvas_.ForgetGlyphs();
    glyphData_.clear();
}

void PclInterpreter::SetFontId(const PclCommand& command) {
    fontId_ = std::clamp(command.Whole(), 0, 32767);
}

void PclInterpreter::SetCharacterCode(const PclCommand& command) {
    characterCode_ = std::clamp(command.Whole(), 0, 65535);
}

void PclInterpreter::ControlFonts(const PclCommand& command) {
    enum { DeleteAll = 0, DeletePassing = 1, DeleteOne = 2, DeleteCharacter = 3, MakePassing = 4, MakeLasting = 5 };
    const int what = command.Whole();
    std::vector<int> gone;
    switch (what) {
        case DeleteAll:
        case DeletePassing:
            for (const auto& [number, font] : fonts_.All()) {
                if (what == DeleteAll || !lastingFonts_.contains(number)) gone.push_back(number);
            }
            break;
        case DeleteOne:
            gone.push_back(fontId_);
            break;
        case DeleteCharacter:
            if (SoftFont* font = ChangeableFont(fontId_)) font->Glyphs.erase(static_cast<std::uint8_t>(characterCode_));
            break;
        case MakePassing:
            lastingFonts_.erase(fontId_);
            return;
        case MakeLasting:
            lastingFonts_.insert(fontId_);
            return;
        default:
            ++drawing_.SkippedCommands;
            return;
    }
    for (const int number : gone) {
        fonts_.Remove(number);
        ownFonts_.erase(number);
        lastingFonts_.erase(number);
    }
    FontsChanged();
}

void PclInterpreter::ChargeFont(std::size_t bytes) {
    fontBytes_ += bytes;
    if (fontBytes_ > PclLimits::kFontBytes) FailPclLimit("soft fonts");
}

// A font that was there before belongs to others too: a copy of it is changed.
SoftFont* PclInterpreter::ChangeableFont(int number) {
    const auto own = ownFonts_.find(number);
    if (own != ownFonts_.end()) return own->second.get();
    const std::shared_ptr<const SoftFont> font = fonts_.Find(number);
    if (!font) return nullptr;
    const auto copy = std::make_shared<SoftFont>(*font);
    for (const auto& [code, glyph] : copy->Glyphs) ChargeFont(glyph.Rows.size());
    ownFonts_[number] = copy;
    fonts_.Add(number, copy);
    return copy.get();
}

void PclInterpreter::DownloadFont(const PclCommand& command) {
    std::optional<SoftFont> font = ParseSoftFontHeader(command.Data);
    if (!font) {
        ++drawing_.SkippedCommands;
        return;
    }
    ChargeFont(sizeof(SoftFont));
    const auto own = std::make_shared<SoftFont>(std::move(*font));
    ownFonts_[fontId_] = own;
    fonts_.Add(fontId_, own);
    lastingFonts_.erase(fontId_);
    if (fonts_.All().size() > PclLimits::kSoftFonts) FailPclLimit("soft fonts");
    FontsChanged();
}

void PclInterpreter::DownloadGlyph(const PclCommand& command) {
    constexpr std::size_t kContinuationHead = 2;
    constexpr int kMostBlocks = 100;
    constexpr int kMostCodes = 256;
    SoftFont* font = characterCode_ < kMostCodes ? ChangeableFont(fontId_) : nullptr;
    if (font == nullptr || command.Data.size() < kContinuationHead) {
        ++drawing_.SkippedCommands;
        return;
    }
    if (command.Data[1] == 0) {
        glyphData_ = command.Data;
        glyphBlocks_ = 1;
    } else if (!glyphData_.empty() && ++glyphBlocks_ <= kMostBlocks) {
        glyphData_ += command.Data.substr(kContinuationHead);
    } else {
        ++drawing_.SkippedCommands;
        return;
    }
    std::optional<SoftGlyph> glyph = ParseSoftGlyph(glyphData_);
    if (!glyph) return;  // more of it may follow
    ChargeFont(glyph->Rows.size() + sizeof(SoftGlyph));
    font->Glyphs[static_cast<std::uint8_t>(characterCode_)] = std::move(*glyph);
    FontsChanged();
}

void PclInterpreter::SetMacroId(const PclCommand& command) {
    macroId_ = std::clamp(command.Whole(), 0, 32767);
}

void PclInterpreter::ControlMacros(const PclCommand& command) {
    enum {
        Start = 0,
        Stop = 1,
        Execute = 2,
        Call = 3,
        Overlay = 4,
        EndOverlay = 5,
        DeleteAll = 6,
        DeletePassing = 7,
        DeleteOne = 8,
        MakePassing = 9,
        MakeLasting = 10
    };
    switch (command.Whole()) {
        case Execute:
        case Call:
            RunMacro(macroId_, command.Whole() == Call);
            break;
        case Overlay:
            overlay_ = macroId_;
            break;
        case EndOverlay:
            overlay_ = -1;
            break;
        case DeleteAll:
            macros_.clear();
            break;
        case DeletePassing:
            std::erase_if(macros_, [&](const auto& macro) { return !lastingMacros_.contains(macro.first); });
            break;
        case DeleteOne:
            macros_.erase(macroId_);
            break;
        case MakePassing:
            lastingMacros_.erase(macroId_);
            break;
        case MakeLasting:
            lastingMacros_.insert(macroId_);
            break;
        default:
            ++drawing_.SkippedCommands;
            break;
    }
}

// A macro may run another, which may run none.
void PclInterpreter::RunMacro(int number, bool withCopy) {
    constexpr int kDeepest = 2;
    const auto found = macros_.find(number);
    if (found == macros_.end() || depth_ >= kDeepest) return;
    const std::string macro = found->second;  // which it may delete
    const Environment before = now_;
    const int idBefore = macroId_;
    ++depth_;
    Run(macro);
    --depth_;
    if (!withCopy) return;
    EndRaster();
    now_ = before;  // all but the cursor
    macroId_ = idBefore;
    for (FontState& state : now_.Fonts) state.IsChosen = false;
}

}  // namespace tallymar
