#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace tallymar::tools {

// The few tables of a TrueType font that page metrics come from. Fails with std::runtime_error on a file that is no such font.
class TrueTypeFile {
 public:
    explicit TrueTypeFile(const std::filesystem::path& path) : path_(path.string()) {
        std::ifstream in(path, std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(in), {});
        const int count = U16(4);
        for (int i = 0; i < count; ++i) {
            const std::size_t entry = 12 + 16 * static_cast<std::size_t>(i);
            tables_[Slice(entry, 4)] = U32(entry + 8);
        }
        const std::size_t cmap = Table("cmap");
        const int encodings = U16(cmap + 2);
        for (int i = 0; i < encodings; ++i) {
            const std::size_t entry = cmap + 4 + 8 * static_cast<std::size_t>(i);
            const std::size_t subtable = cmap + U32(entry + 4);
            if (U16(entry) == 3 && U16(entry + 2) == 1 && U16(subtable) == 4) unicode_ = subtable;
        }
        if (unicode_ == 0) throw std::runtime_error(path_ + ": no Unicode character map");
    }

    int UnitsPerEm() const { return U16(Table("head") + 18); }
    int Ascent() const { return static_cast<std::int16_t>(U16(Table("hhea") + 4)); }
    int Descent() const { return -static_cast<std::int16_t>(U16(Table("hhea") + 6)); }

    // 0 when the font does not have the character.
    int GlyphOf(char32_t character) const {
        const std::size_t segments = U16(unicode_ + 6) / 2u;
        const std::size_t ends = unicode_ + 14;
        const std::size_t starts = ends + 2 * segments + 2;
        const std::size_t deltas = starts + 2 * segments;
        const std::size_t offsets = deltas + 2 * segments;
        for (std::size_t i = 0; i < segments; ++i) {
            if (character > static_cast<char32_t>(U16(ends + 2 * i))) continue;
            const int start = U16(starts + 2 * i);
            if (character < static_cast<char32_t>(start)) return 0;
            const int offset = U16(offsets + 2 * i);
            int glyph = static_cast<int>(character);
            if (offset != 0) {
                glyph = U16(offsets + 2 * i + static_cast<std::size_t>(offset) + 2 * (character - static_cast<char32_t>(start)));
                if (glyph == 0) return 0;
            }
            return (glyph + U16(deltas + 2 * i)) & 0xFFFF;
        }
        return 0;
    }

    int AdvanceOf(char32_t character) const {
        const int glyph = GlyphOf(character);
        const int count = U16(Table("hhea") + 34);
        return U16(Table("hmtx") + 4 * static_cast<std::size_t>(glyph < count ? glyph : count - 1));
    }

 private:
    std::string Slice(std::size_t at, std::size_t length) const {
        if (at + length > bytes_.size()) throw std::runtime_error(path_ + ": not a whole TrueType font");
        return bytes_.substr(at, length);
    }
    int U16(std::size_t at) const {
        const std::string two = Slice(at, 2);
        return static_cast<unsigned char>(two[0]) << 8 | static_cast<unsigned char>(two[1]);
    }
    std::size_t U32(std::size_t at) const {
        return static_cast<std::size_t>(U16(at)) << 16 | static_cast<std::size_t>(U16(at + 2));
    }
    std::size_t Table(const std::string& tag) const {
        const auto found = tables_.find(tag);
        if (found == tables_.end()) throw std::runtime_error(path_ + ": no table " + tag);
        return found->second;
    }

    std::string path_;
    std::string bytes_;
    std::map<std::string, std::size_t> tables_;
    std::size_t unicode_ = 0;
};

}  // namespace tallymar::tools
