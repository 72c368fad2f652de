#include "platform/page/PdfCore.h"

#include <zlib.h>

#include <array>
#include <charconv>
#include <cmath>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr int kFirstByte = 32;
constexpr int kLastByte = 255;

void AppendInteger(long value, std::string& out) {
    std::array<char, 24> digits;
    out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

// 1234 hundredths are "12.34", 1200 are "12".
void AppendHundredths(long value, std::string& out) {
    if (value < 0) {
        out += '-';
        value = -value;
    }
    AppendInteger(value / 100, out);
    const long rest = value % 100;
    if (rest == 0) return;
    out += '.';
    out += static_cast<char>('0' + rest / 10);
    if (rest % 10 != 0) out += static_cast<char>('0' + rest % 10);
}

std::string Number(double value) {
    std::array<char, 48> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 4).ptr;
    return std::string(digits.data(), end);
}

std::string Hex(char32_t value, int digits) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string out;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) out += kHex[value >> shift & 15];
    return out;
}

// A text for the file's properties.
std::string TextString(std::string_view windows1252) {
    std::string out = "<FEFF";
    for (const char c : windows1252) out += Hex(CodePointOf(c), 4);
    return out + ">";
}

class Deflater {
 public:
    Deflater() {
        // The contents are short numbers that come again and again: a higher level takes twice the time for a tenth of the size.
        constexpr int kLevel = 4;
        if (deflateInit(&stream_, kLevel) != Z_OK) throw PlatformError(Failure::DeviceError);
    }
    ~Deflater() { deflateEnd(&stream_); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    // Valid until the next call.
    std::string_view Compress(std::string_view contents) {
        deflateReset(&stream_);
        out_.resize(deflateBound(&stream_, static_cast<uLong>(contents.size())));
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(contents.data()));
        stream_.avail_in = static_cast<uInt>(contents.size());
        stream_.next_out = reinterpret_cast<Bytef*>(out_.data());
        stream_.avail_out = static_cast<uInt>(out_.size());
        if (deflate(&stream_, Z_FINISH) != Z_STREAM_END) throw PlatformError(Failure::DeviceError);
        return std::string_view(out_).substr(0, stream_.total_out);
    }

 private:
    z_stream stream_{};
    std::string out_;
};

std::string ToUnicodeMap(const UsedBytes& used) {
    std::string map =
        "/CIDInit/ProcSet findresource begin 12 dict begin begincmap/CMapType 2 def/CMapName/Windows1252 def\n"
        "1 begincodespacerange<00><FF>endcodespacerange\n";
    constexpr int kBlock = 100;  // entries that one block may hold
    std::string block;
    int entries = 0;
    const auto close = [&] {
        if (entries > 0) map += std::to_string(entries) + " beginbfchar\n" + block + "endbfchar\n";
        block.clear();
        entries = 0;
    };
    for (int byte = kFirstByte; byte <= kLastByte; ++byte) {
        if (!used[static_cast<std::size_t>(byte)]) continue;
        block += "<" + Hex(static_cast<char32_t>(byte), 2) + "><" + Hex(CodePointOf(static_cast<char>(byte)), 4) + ">\n";
        if (++entries == kBlock) close();
    }
    close();
    return map + "endcmap CMapName currentdict/CMap defineresource pop end end";
}

// Six letters before the name say that the font is a subset; equal subsets get equal letters.
std::string SubsetTag(const UsedBytes& used) {
    std::uint32_t hash = 2166136261U;  // FNV-1a
    for (std::size_t byte = 0; byte < used.size(); ++byte) hash = (hash ^ (used[byte] ? 1U : 0U)) * 16777619U;
    std::string tag;
    for (int i = 0; i < 6; ++i, hash /= 26) tag += static_cast<char>('A' + hash % 26);
    return tag + "+";
}

}  // namespace

// The numbered objects of a file, and the table of where they lie.
class PdfCore::Objects {
 public:
    explicit Objects(FileReplacement& file) : file_(file) {
        Write("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");  // bytes beyond ASCII: the file is no text
    }

    // A number for an object that is written later.
    int Reserve() {
        offsets_.push_back(0);
        return static_cast<int>(offsets_.size());
    }
    void Begin(int number) {
        offsets_[static_cast<std::size_t>(number) - 1] = length_;
        Write(std::to_string(number) + " 0 obj\n");
    }
    void Object(int number, std::string_view body) {
        Begin(number);
        Write(body);
        Write("\nendobj\n");
    }
    void Stream(int number, std::string_view entries, std::string_view contents) {
        const std::string_view packed = deflater_.Compress(contents);
        Begin(number);
        Write("<</Filter/FlateDecode/Length " + std::to_string(packed.size()));
        Write(entries);
        Write(">>stream\n");
        Write(packed);
        Write("\nendstream\nendobj\n");
    }
    void Finish(int catalog, int info) {
        const std::size_t table = length_;
        const std::string size = std::to_string(offsets_.size() + 1);
        Write("xref\n0 " + size + "\n0000000000 65535 f \n");
        for (const std::size_t offset : offsets_) {
            const std::string digits = std::to_string(offset);
            Write(std::string(10 - digits.size(), '0') + digits + " 00000 n \n");
        }
        Write("trailer\n<</Size " + size + "/Root " + std::to_string(catalog) + " 0 R/Info " + std::to_string(info) +
              " 0 R>>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n");
    }

 private:
    void Write(std::string_view bytes) {
        file_.Write(bytes);
        length_ += bytes.size();
    }

    FileReplacement& file_;
    Deflater deflater_;
    std::size_t length_ = 0;
    std::vector<std::size_t> offsets_;  // by object number, less 1
};

PdfCore::PdfCore(FileReplacement& file) : objects_(std::make_unique<Objects>(file)) {
    catalog_ = objects_->Reserve();
    info_ = objects_->Reserve();
    pageTree_ = objects_->Reserve();
    resources_ = objects_->Reserve();
}

PdfCore::~PdfCore() = default;

int PdfCore::AddFont(const FontMetrics& metrics, const UsedBytes& used) {
    const FontSubset subset = SubsetPageFont(metrics, used);
    const auto thousandths = [&](int units) { return units * 1000.0 / metrics.UnitsPerEm; };
    const std::string name = "/" + SubsetTag(used) + subset.PostScriptName;

    const int program = objects_->Reserve();
    objects_->Stream(program, "/Length1 " + std::to_string(subset.File.size()), subset.File);
    const int unicode = objects_->Reserve();
    objects_->Stream(unicode, "", ToUnicodeMap(used));

    const int descriptor = objects_->Reserve();
    constexpr int kFixedPitch = 1;
    constexpr int kNonsymbolic = 32;
    const int flags = kNonsymbolic | (metrics.Advances['i'] == metrics.Advances['W'] ? kFixedPitch : 0);
    std::string box;
    for (const int edge : subset.Box) box += std::to_string(edge) + " ";
    objects_->Object(descriptor, "<</Type/FontDescriptor/FontName" + name + "/Flags " + std::to_string(flags) + "/FontBBox[" +
                                     box + "]/ItalicAngle 0/StemV 80/Ascent " + Number(thousandths(metrics.Ascent)) +
                                     "/Descent " + Number(-thousandths(metrics.Descent)) + "/CapHeight " +
                                     std::to_string(subset.CapHeight) + "/FontFile2 " + std::to_string(program) + " 0 R>>");
    std::string widths;
    for (int byte = kFirstByte; byte <= kLastByte; ++byte) {
        widths += Number(thousandths(metrics.Advances[static_cast<std::size_t>(byte)])) + " ";
    }
    const int font = objects_->Reserve();
    objects_->Object(font, "<</Type/Font/Subtype/TrueType/BaseFont" + name + "/Encoding/WinAnsiEncoding/FirstChar " +
                               std::to_string(kFirstByte) + "/LastChar " + std::to_string(kLastByte) + "/Widths[" + widths +
                               "]/FontDescriptor " + std::to_string(descriptor) + " 0 R/ToUnicode " + std::to_string(unicode) +
                               " 0 R>>");
    fonts_.push_back(font);
    return static_cast<int>(fonts_.size()) - 1;
}

int PdfCore::AddDots(int width, int height, std::string_view rows) {
    const int dots = objects_->Reserve();
    objects_->Stream(dots,
                     "/Type/XObject/Subtype/Image/ImageMask true/Decode[1 0]/Width " + std::to_string(width) + "/Height " +
                         std::to_string(height),
                     rows);
    dots_.push_back(dots);
    return static_cast<int>(dots_.size()) - 1;
}

void PdfCore::AddPage(std::string_view contents, double width, double height, std::string_view label) {
    const int content = objects_->Reserve();
    objects_->Stream(content, "", contents);
    const int page = objects_->Reserve();
    objects_->Object(page, "<</Type/Page/Parent " + std::to_string(pageTree_) + " 0 R/MediaBox[0 0 " + Number(width) + " " +
                               Number(height) + "]/Resources " + std::to_string(resources_) + " 0 R/Contents " +
                               std::to_string(content) + " 0 R>>");
    kids_ += std::to_string(page) + " 0 R ";
    if (!label.empty()) labels_ += std::to_string(pages_) + "<</P" + TextString(label) + ">>";
    ++pages_;
}

void PdfCore::Finish(std::string_view title) {
    const auto named = [](std::string_view prefix, const std::vector<int>& objects) {
        std::string names;
        for (std::size_t i = 0; i < objects.size(); ++i) {
            names += std::string(prefix) + std::to_string(i) + " " + std::to_string(objects[i]) + " 0 R";
        }
        return names;
    };
    objects_->Object(resources_, "<</Font<<" + named("/F", fonts_) + ">>/XObject<<" + named("/D", dots_) + ">>>>");
    objects_->Object(pageTree_, "<</Type/Pages/Count " + std::to_string(pages_) + "/Kids[" + kids_ + "]>>");
    objects_->Object(info_, "<</Title " + TextString(title) + "/Creator" + TextString("Tallymar") + "/Producer" +
                                TextString("Tallymar") + ">>");
    const std::string labels = labels_.empty() ? "0<</S/D>>" : labels_;
    objects_->Object(catalog_, "<</Type/Catalog/Pages " + std::to_string(pageTree_) + " 0 R/PageLabels<</Nums[" + labels +
                                   "]>>/ViewerPreferences<</DisplayDocTitle true>>>>");
    objects_->Finish(catalog_, info_);
}

long PdfContents::ToHundredths(double value) {
    return std::lround(value * 100);
}

// 1234 hundredths are "12.34", 1200 are "12".
void PdfContents::Hundredths(long value) {
    AppendHundredths(value, text_);
    text_ += ' ';
}

void PdfContents::Number(double value) {
    Hundredths(ToHundredths(value));
}

void PdfContents::FontName(int font) {
    text_ += "/F";
    AppendInteger(font, text_);
    text_ += ' ';
}

void PdfContents::DotsName(int dots) {
    text_ += "/D";
    AppendInteger(dots, text_);
    text_ += ' ';
}

void PdfContents::String(std::string_view text) {
    text_ += '(';
    for (const char c : text) {
        const char drawn = DrawnAs(c);
        if (drawn == '(' || drawn == ')' || drawn == '\\') text_ += '\\';
        text_ += drawn;
    }
    text_ += ')';
}

}  // namespace tallymar
