#include "platform/pcl/PclFontSelection.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <tuple>

#include "platform/pcl/PclSymbolSet.h"

namespace tallymar {

namespace {

constexpr double kUnitsPerPoint = kPclUnitsPerInch / 72.0;
constexpr int kBold = 3;

// Typefaces by the lower part of their number, which their makers share.
constexpr int kTypefaceMask = 0xFFF;
constexpr int kFixedTypefaces[] = {0, 3, 6};  // Line Printer, Courier, Letter Gothic
constexpr int kCourier = 3;
constexpr int kSansTypefaces[] = {4, 52, 218};  // Helvetica, Univers, Arial

bool IsOneOf(const auto& typefaces, int typeface) {
    return std::find(std::begin(typefaces), std::end(typefaces), typeface & kTypefaceMask) != std::end(typefaces);
}

std::string_view PageFontFor(bool proportional, int weight) {
    if (!proportional) return "Courier New";
    return weight >= kBold ? "Arial Bold" : "Arial";
}

int QuarterDotsToUnits(int quarters, int resolution) {
    return static_cast<int>(std::lround(quarters * static_cast<double>(kPclUnitsPerInch) / (4.0 * resolution)));
}

// The font is as wide as its typeface is, character by character.
bool IsLike(const SoftFont& font, const FontMetrics& metrics) {
    if (font.Glyphs.empty()) return false;
    const double quartersPerUnit = font.Height / static_cast<double>(metrics.UnitsPerEm);
    constexpr double kDot = 4;
    for (const auto& [code, glyph] : font.Glyphs) {
        if (code <= ' ') continue;
        const std::optional<char> character = ToWindows1252(font.SymbolSet, code);
        if (!character) return false;
        const int width = font.Proportional ? glyph.DeltaX : font.Pitch;
        if (std::abs(width - metrics.Advances[static_cast<unsigned char>(*character)] * quartersPerUnit) > kDot) return false;
    }
    return true;
}

using Distance = std::tuple<bool, bool, int, int, bool, int, bool, bool>;

// A smaller one is nearer.
Distance DistanceOf(const PclFontDescription& asked, const PclFontDescription& has, bool own) {
    return {asked.SymbolSet != has.SymbolSet,
            asked.Proportional != has.Proportional,
            asked.Proportional || has.Proportional ? 0 : std::abs(asked.Pitch - has.Pitch),
            std::abs(asked.Height - has.Height),
            asked.Style != has.Style,
            std::abs(asked.Weight - has.Weight),
            (asked.Typeface & kTypefaceMask) != (has.Typeface & kTypefaceMask),
            own};
}

// What of the description the printer's own typefaces cannot answer.
PclFontDescription OwnAnswer(PclFontDescription asked) {
    if (!IsTextSymbolSet(asked.SymbolSet)) asked.SymbolSet = kPc8;
    const bool known = asked.Proportional ? IsOneOf(kSansTypefaces, asked.Typeface) : IsOneOf(kFixedTypefaces, asked.Typeface);
    if (!known) asked.Typeface = asked.Proportional ? kSansTypefaces[2] : kCourier;
    asked.Style = 0;
    return asked;
}

ChosenFont ChooseOwn(const PclFontDescription& asked) {
    ChosenFont chosen;
    chosen.Drawn.Asked = OwnAnswer(asked);
    chosen.Drawn.Face = PageFontFor(asked.Proportional, asked.Weight);
    chosen.Metrics = &FindFontMetrics(chosen.Drawn.Face);
    const double blankEms = static_cast<double>(chosen.Metrics->Advances[' ']) / chosen.Metrics->UnitsPerEm;
    if (asked.Proportional) {
        chosen.Drawn.Size = asked.Height / 100.0;
        chosen.Spacing = static_cast<int>(std::lround(chosen.Drawn.Size * kUnitsPerPoint * blankEms));
    } else {
        // The pitch says how large it is: 10 to the inch are 12 points.
        chosen.Spacing = static_cast<int>(std::lround(kPclUnitsPerInch * 100.0 / asked.Pitch));
        chosen.Drawn.Size = chosen.Spacing / kUnitsPerPoint / blankEms;
    }
    return chosen;
}

}  // namespace

PclFontDescription DescriptionOf(const SoftFont& font) {
    PclFontDescription is;
    is.SymbolSet = font.SymbolSet;
    is.Proportional = font.Proportional;
    is.Pitch = font.Pitch > 0 ? static_cast<int>(std::lround(font.Resolution * 400.0 / font.Pitch)) : is.Pitch;
    is.Height = static_cast<int>(std::lround(font.Points() * 100));
    is.Style = font.Style;
    is.Weight = font.Weight;
    is.Typeface = font.Typeface;
    return is;
}

ChosenFont ChooseSoftFont(const std::shared_ptr<const SoftFont>& font) {
    ChosenFont chosen;
    chosen.Soft = font;
    chosen.Drawn.Asked = DescriptionOf(*font);
    chosen.Drawn.Size = font->Points();
    chosen.Spacing = QuarterDotsToUnits(font->Pitch, font->Resolution);
    const bool known =
        font->Proportional ? IsOneOf(kSansTypefaces, font->Typeface) : (font->Typeface & kTypefaceMask) == kCourier;
    if (!known || font->Style != 0) return chosen;
    const std::string_view face = PageFontFor(font->Proportional, font->Weight);
    const FontMetrics& metrics = FindFontMetrics(face);
    if (!IsLike(*font, metrics)) return chosen;
    chosen.Drawn.Face = face;
    chosen.Metrics = &metrics;
    return chosen;
}

ChosenFont ChooseFont(const PclFontDescription& asked, const SoftFonts& softFonts) {
    Distance nearest = DistanceOf(asked, OwnAnswer(asked), true);
    std::shared_ptr<const SoftFont> found;
    for (const auto& [number, font] : softFonts.All()) {
        const Distance distance = DistanceOf(asked, DescriptionOf(*font), false);
        if (distance < nearest) {
            nearest = distance;
            found = font;
        }
    }
    return found ? ChooseSoftFont(found) : ChooseOwn(asked);
}

}  // namespace tallymar
