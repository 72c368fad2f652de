#include "platform/page/PageFontFile.h"

#include <fontconfig/fontconfig.h>
#include <hb-ot.h>
#include <hb-subset.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>

#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr PageFontFamily kFamilies[] = {
    {"Arial", {"Liberation Sans", "Arial"}, false},
    {"Arial Bold", {"Liberation Sans", "Arial"}, true},
    {"Courier New", {"Liberation Mono", "Courier New"}, false},
};

constexpr double kWidthTolerance = 1;  // font units
constexpr std::size_t kAsciiEnd = 0x7F;

template <auto Destroy>
struct Release {
    template <typename T>
    void operator()(T* object) const {
        Destroy(object);
    }
};
using Pattern = std::unique_ptr<FcPattern, Release<FcPatternDestroy>>;
using Blob = std::unique_ptr<hb_blob_t, Release<hb_blob_destroy>>;
using Face = std::unique_ptr<hb_face_t, Release<hb_face_destroy>>;
using Font = std::unique_ptr<hb_font_t, Release<hb_font_destroy>>;
using SubsetInput = std::unique_ptr<hb_subset_input_t, Release<hb_subset_input_destroy>>;

const FcChar8* Fc(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

// The file of an installed font, empty when there is none of exactly this name.
std::string FileOfFont(const char* family, bool bold) {
    const Pattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_FAMILY, Fc(family));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(nullptr, wanted.get(), &result));
    FcChar8* name = nullptr;
    FcChar8* file = nullptr;
    // The nearest font is always found; only the one asked for will do.
    if (!found || FcPatternGetString(found.get(), FC_FAMILY, 0, &name) != FcResultMatch ||
        FcStrCmpIgnoreCase(name, Fc(family)) != 0 || FcPatternGetString(found.get(), FC_FILE, 0, &file) != FcResultMatch) {
        return {};
    }
    return reinterpret_cast<const char*>(file);
}

// Does the font have every character, as wide as the metrics say?
bool Agrees(hb_face_t* face, const FontMetrics& metrics) {
    const Font font(hb_font_create(face));
    hb_font_set_scale(font.get(), metrics.UnitsPerEm, metrics.UnitsPerEm);
    for (int byte = 0; byte < 256; ++byte) {
        hb_codepoint_t glyph = 0;
        if (!hb_font_get_nominal_glyph(font.get(), CodePointOf(static_cast<char>(byte)), &glyph)) return false;
        if (!IsWidthOf(metrics, static_cast<std::size_t>(byte), hb_font_get_glyph_h_advance(font.get(), glyph))) return false;
    }
    return true;
}

Face FindFace(const FontMetrics& metrics) {
    const PageFontFamily* family = FindPageFontFamily(metrics.Name);
    if (family == nullptr) throw MissingPageFont(metrics.Name);
    for (const char* name : family->Candidates) {
        const std::string file = FileOfFont(name, family->Bold);
        if (file.empty()) continue;
        const Blob blob(hb_blob_create_from_file(file.c_str()));
        Face face(hb_face_create(blob.get(), 0));
        if (Agrees(face.get(), metrics)) return face;
    }
    throw MissingPageFont(metrics.Name);
}

std::string NameOf(hb_face_t* face) {
    char name[128];
    unsigned int size = sizeof name;
    hb_ot_name_get_utf8(face, HB_OT_NAME_ID_POSTSCRIPT_NAME, HB_LANGUAGE_INVALID, &size, name);
    std::string kept(name, size);
    std::erase_if(
        kept, [](char c) { return c <= ' ' || c > '~' || std::string_view("/()<>[]{}%#").find(c) != std::string_view::npos; });
    return kept.empty() ? "PageFont" : kept;
}

// The box of all glyphs, from the table "head": four signed words at offset 36.
void ReadBox(hb_face_t* face, int (&box)[4]) {
    const Blob head(hb_face_reference_table(face, HB_TAG('h', 'e', 'a', 'd')));
    unsigned int length = 0;
    const char* data = hb_blob_get_data(head.get(), &length);
    for (unsigned int i = 0; i < 4 && length >= 44; ++i) {
        const auto byte = [&](unsigned int at) { return static_cast<unsigned char>(data[at]); };
        const auto units = static_cast<std::int16_t>(byte(36 + 2 * i) << 8 | byte(37 + 2 * i));
        box[i] = units * 1000 / static_cast<int>(hb_face_get_upem(face));
    }
}

std::string Subset(hb_face_t* face, const UsedBytes& used, std::string_view pageName) {
    const SubsetInput input(hb_subset_input_create_or_fail());
    hb_set_t* characters = hb_subset_input_unicode_set(input.get());
    for (std::size_t byte = 0; byte < used.size(); ++byte) {
        if (used[byte]) hb_set_add(characters, CodePointOf(static_cast<char>(byte)));
    }
    // Glyphs are placed by the page: no table of kerning or of ligatures is needed.
    hb_set_t* dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const char* tag : {"GSUB", "GPOS", "GDEF", "kern", "FFTM"}) hb_set_add(dropped, hb_tag_from_string(tag, -1));
    const Face cut(hb_subset_or_fail(face, input.get()));
    if (!cut) throw MissingPageFont(pageName);
    const Blob blob(hb_face_reference_blob(cut.get()));
    unsigned int length = 0;
    const char* data = hb_blob_get_data(blob.get(), &length);
    return std::string(data, length);
}

}  // namespace

const PageFontFamily* FindPageFontFamily(std::string_view pageName) {
    const auto* found = std::find_if(std::begin(kFamilies), std::end(kFamilies),
                                     [&](const PageFontFamily& family) { return family.PageName == pageName; });
    return found == std::end(kFamilies) ? nullptr : found;
}

bool IsWidthOf(const FontMetrics& metrics, std::size_t byte, double width) {
    return byte >= kAsciiEnd || std::abs(width - metrics.Advances[byte]) <= kWidthTolerance;
}

PlatformError MissingPageFont(std::string_view pageName) {
    return PlatformError(Failure::DeviceError, "The font \"" + std::string(pageName) +
                                                   "\" is not installed, so that the pages cannot be drawn. Install the package "
                                                   "\"fonts-liberation\" and start the command again.");
}

char32_t CodePointOf(char windows1252) {
    const char drawn = DrawnAs(windows1252);
    const std::string utf8 = ToUtf8(std::string_view(&drawn, 1));
    const auto byte = [&](std::size_t at) { return static_cast<char32_t>(static_cast<unsigned char>(utf8[at])); };
    if (utf8.size() == 1) return byte(0);
    if (utf8.size() == 2) return (byte(0) & 0x1F) << 6 | (byte(1) & 0x3F);
    return (byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
}

FontSubset SubsetPageFont(const FontMetrics& metrics, const UsedBytes& used) {
    const Face face = FindFace(metrics);
    FontSubset subset{
        .PostScriptName = NameOf(face.get()), .File = Subset(face.get(), used, metrics.Name), .Box = {}, .CapHeight = 0};
    ReadBox(face.get(), subset.Box);
    const Font font(hb_font_create(face.get()));
    hb_font_set_scale(font.get(), 1000, 1000);
    hb_position_t capHeight = 0;
    hb_ot_metrics_get_position_with_fallback(font.get(), HB_OT_METRICS_TAG_CAP_HEIGHT, &capHeight);
    subset.CapHeight = capHeight;
    return subset;
}

}  // namespace tallymar
