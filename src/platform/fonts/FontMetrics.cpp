#include "platform/fonts/FontMetrics.h"

#include <string>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr FontMetrics kFonts[] = {
#include "platform/fonts/FontMetricsTable.inc"
};

}  // namespace

const FontMetrics& FindFontMetrics(std::string_view name) {
    for (const FontMetrics& font : kFonts) {
        if (font.Name == name) return font;
    }
    throw PlatformError(Failure::InvalidCall, "There is no page font named \"" + std::string(name) + "\".");
}

std::int64_t AdvanceOf(const FontMetrics& metrics, std::string_view text) {
    std::int64_t sum = 0;
    for (const char c : text) sum += metrics.Advances[static_cast<unsigned char>(c)];
    return sum;
}

}  // namespace tallymar
