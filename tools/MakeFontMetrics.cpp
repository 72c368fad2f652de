// Writes src/platform/fonts/FontMetricsTable.inc from the fonts that carry Arial's and Courier New's metrics. Run by hand when
// the fonts change, which they have not done since 2007:
//   make_font_metrics FOLDER > src/platform/fonts/FontMetricsTable.inc
// where FOLDER holds LiberationSans-Regular.ttf, LiberationSans-Bold.ttf and LiberationMono-Regular.ttf.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "TrueTypeFile.h"
#include "platform/fonts/FontMetrics.h"
#include "platform/runtime/Windows1252.h"

namespace {

char32_t CodePoint(char byte) {
    const std::string utf8 = tallymar::ToUtf8(std::string(1, byte));
    const auto at = [&](std::size_t i) { return static_cast<char32_t>(static_cast<unsigned char>(utf8[i])); };
    if (utf8.size() == 1) return at(0);
    if (utf8.size() == 2) return (at(0) & 0x1F) << 6 | (at(1) & 0x3F);
    return (at(0) & 0x0F) << 12 | (at(1) & 0x3F) << 6 | (at(2) & 0x3F);
}

void Write(const char* name, const tallymar::tools::TrueTypeFile& font) {
    std::printf("{\"%s\", %d, %d, %d,\n {{", name, font.UnitsPerEm(), font.Ascent(), font.Descent());
    for (int byte = 0; byte < 256; ++byte) {
        const char32_t character = CodePoint(tallymar::DrawnAs(static_cast<char>(byte)));
        std::printf("%s%d%s", byte % 16 == 0 ? "\n  " : " ", font.AdvanceOf(character), byte == 255 ? "" : ",");
    }
    std::printf("}}},\n");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "make_font_metrics FOLDER\n");
        return 2;
    }
    try {
        const std::filesystem::path folder = argv[1];
        std::printf(
            "// Written by tools/MakeFontMetrics from Liberation Sans and Mono: ascent, descent and the advance widths by "
            "byte.\n");
        Write("Arial", tallymar::tools::TrueTypeFile(folder / "LiberationSans-Regular.ttf"));
        Write("Arial Bold", tallymar::tools::TrueTypeFile(folder / "LiberationSans-Bold.ttf"));
        Write("Courier New", tallymar::tools::TrueTypeFile(folder / "LiberationMono-Regular.ttf"));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}
