// Makes the soft fonts of the blank forms: bitmap fonts of 300 dots to the inch, as complete PCL downloads.
//   make_soft_fonts FACES OUTPUT_FOLDER
// where FACES holds LiberationSans-Regular.ttf and LiberationSans-Bold.ttf. Run by the build.

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "forms/FormFonts.h"
#include "forms/LineFont.h"
#include "platform/page/PageFontFile.h"
#include "platform/pcl/PclWriter.h"

namespace {

namespace fs = std::filesystem;
using tallymar::SoftFont;
using tallymar::SoftGlyph;
using tallymar::tools::FormFont;

constexpr int kQuarters = 4;  // of a dot: what soft fonts count in
constexpr int kBoldWeight = 3;
constexpr int kFirst = 0x20;
constexpr int kLast = 0xFF;

struct CloseLibrary {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
};
struct CloseFace {
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using Library = std::unique_ptr<FT_LibraryRec_, CloseLibrary>;
using Face = std::unique_ptr<FT_FaceRec_, CloseFace>;

Face OpenFace(const Library& library, const fs::path& path) {
    FT_Face face = nullptr;
    if (FT_New_Face(library.get(), path.c_str(), 0, &face) != 0) throw std::runtime_error("cannot read " + path.string());
    return Face(face);
}

// Rows without FreeType's own filling between them.
std::string Rows(const FT_Bitmap& bitmap) {
    const std::size_t stride = (bitmap.width + 7) / 8;
    std::string rows;
    for (unsigned y = 0; y < bitmap.rows; ++y) {
        rows.append(reinterpret_cast<const char*>(bitmap.buffer) + static_cast<std::ptrdiff_t>(y) * bitmap.pitch, stride);
    }
    return rows;
}

SoftFont MakeFont(FT_Face face, const FormFont& form) {
    constexpr int kFixedPoint = 64;
    if (FT_Set_Char_Size(face, 0, form.Printer.Points * kFixedPoint, tallymar::tools::kDotsPerInch,
                         tallymar::tools::kDotsPerInch) != 0) {
        throw std::runtime_error("a face does not scale");
    }
    SoftFont font;
    font.Proportional = true;
    font.Height = static_cast<int>(std::lround(form.Printer.Points * tallymar::tools::kDotsPerPoint * kQuarters));
    font.Weight = form.Printer.Bold ? kBoldWeight : 0;
    font.Typeface = tallymar::PclWriter::kArial;
    font.Name = std::string("TALLYMAR ") + std::string(form.Name);
    int ascent = 0;
    int descent = 0;
    for (int code = kFirst; code <= kLast; ++code) {
        const char character = tallymar::DrawnAs(static_cast<char>(code));
        if (form.DigitsOnly && character != ' ' && character != '-' && (character < '0' || character > '9')) continue;
        SoftGlyph glyph;
        // The advance is that of the unfitted face, by which the descriptions of the forms are measured.
        glyph.DeltaX = static_cast<int>(std::lround(WidthInDots(form, std::string(1, character)) * kQuarters));
        if (character == ' ') {
            if (code == kFirst) font.Pitch = glyph.DeltaX;
        } else {
            // Fitted to the rows of dots alone: fitted to the columns too, a letter would be up to four dots narrower than its
            // face.
            if (FT_Load_Char(face, tallymar::CodePointOf(character), FT_LOAD_TARGET_LIGHT) != 0 ||
                FT_Render_Glyph(face->glyph, FT_RENDER_MODE_MONO) != 0) {
                throw std::runtime_error("a face lacks character " + std::to_string(code));
            }
            const FT_GlyphSlot slot = face->glyph;
            glyph.Left = slot->bitmap_left;
            glyph.Top = slot->bitmap_top;
            glyph.Width = static_cast<int>(slot->bitmap.width);
            glyph.Height = static_cast<int>(slot->bitmap.rows);
            glyph.Rows = Rows(slot->bitmap);
        }
        ascent = std::max(ascent, glyph.Top);
        descent = std::max(descent, glyph.Height - glyph.Top);
        font.CellWidth = std::max(font.CellWidth, glyph.Left + glyph.Width);
        if (character != ' ' || code == kFirst) font.Glyphs.emplace(static_cast<std::uint8_t>(code), std::move(glyph));
    }
    font.Baseline = ascent;
    font.CellHeight = ascent + descent;
    return font;
}

void Write(const fs::path& path, const std::string& contents) {
    std::ofstream file(path, std::ios::binary);
    file << contents;
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

void MakeFonts(const fs::path& faces, const fs::path& folder) {
    FT_Library opened = nullptr;
    if (FT_Init_FreeType(&opened) != 0) throw std::runtime_error("FreeType does not start");
    const Library library(opened);
    const Face medium = OpenFace(library, faces / "LiberationSans-Regular.ttf");
    const Face bold = OpenFace(library, faces / "LiberationSans-Bold.ttf");
    fs::create_directories(folder);
    for (const FormFont& form : tallymar::tools::kFormFonts) {
        const SoftFont font = MakeFont((form.Printer.Bold ? bold : medium).get(), form);
        Write(folder / form.FileName, tallymar::SoftFontDownload(form.Printer.Number, font));
    }
    Write(folder / tallymar::tools::kLineFontFile,
          tallymar::SoftFontDownload(tallymar::tools::kLineFontNumber, tallymar::tools::LineFont()));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_soft_fonts FACES OUTPUT_FOLDER\n";
        return EXIT_FAILURE;
    }
    try {
        MakeFonts(argv[1], argv[2]);
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
