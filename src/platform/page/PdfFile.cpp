#include "platform/page/PdfFile.h"

#include <zlib.h>

#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include "platform/fonts/FontMetrics.h"
#include "platform/page/PageFontFile.h"
#include "platform/page/PagePlacement.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr double kTwipsPerDot = 4.8;  // of 1/300 inch
constexpr int kTwipsPerPoint = 20;
constexpr int kFirstByte = 32;
constexpr int kLastByte = 255;

// A measure in hundredths of a unit: differences of rounded places are exact, however many are added up.
long Hundredths(double value) {
    return std::lround(value * 100);
}

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

// The numbered objects of a file, and the table of where they lie.
class ObjectFile {
 public:
    explicit ObjectFile(FileReplacement& file) : file_(file) {
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

// A font of the file: the page fonts of one name and any size.
struct PdfFont {
    const FontMetrics* Metrics;
    UsedBytes Used;
    int Object = 0;
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

class PdfFile {
 public:
    PdfFile(const PageDocument& pages, FileReplacement& file) : pages_(pages), file_(file) { CollectFonts(); }

    void Write() {
        const int catalog = file_.Reserve();
        const int info = file_.Reserve();
        pageTree_ = file_.Reserve();
        resources_ = file_.Reserve();
        // The fonts first: a missing one is told before anything is drawn.
        for (PdfFont& font : fonts_) WriteFont(font);
        std::string resources = "<</Font<<";
        for (const PdfFont& font : fonts_) resources += NameOf(font) + " " + std::to_string(font.Object) + " 0 R";
        file_.Object(resources_, resources + ">>>>");

        std::string kids;
        for (int page = 1; page <= pages_.PageCount(); ++page) kids += std::to_string(WritePage(page)) + " 0 R ";
        const std::string count = std::to_string(pages_.PageCount());
        const PaperSize& paper = pages_.Paper();
        file_.Object(pageTree_, "<</Type/Pages/Count " + count + "/MediaBox[0 0 " + Number(Points(paper.Width)) + " " +
                                    Number(Points(paper.Height)) + "]/Kids[" + kids + "]>>");
        const std::string title = TextString(Trim(pages_.Title));
        file_.Object(info,
                     "<</Title " + title + "/Creator" + TextString("Tallymar") + "/Producer" + TextString("Tallymar") + ">>");
        file_.Object(catalog, "<</Type/Catalog/Pages " + std::to_string(pageTree_) +
                                  " 0 R/PageLabels<</Nums[0<</S/D>>]>>/ViewerPreferences<</DisplayDocTitle true>>>>");
        file_.Finish(catalog, info);
    }

 private:
    static double Points(int twips) { return static_cast<double>(twips) / kTwipsPerPoint; }
    std::string NameOf(const PdfFont& font) const { return "/F" + std::to_string(&font - fonts_.data()); }
    static unsigned char Drawn(char c) { return static_cast<unsigned char>(DrawnAs(c)); }

    void CollectFonts() {
        for (const PageFont& font : pages_.Fonts()) {
            const FontMetrics* metrics = &FindFontMetrics(font.Name);
            std::size_t i = 0;
            while (i < fonts_.size() && fonts_[i].Metrics != metrics) ++i;
            if (i == fonts_.size()) fonts_.push_back({metrics, {}});
            fontOf_.push_back(i);
        }
        for (int page = 1; page <= pages_.PageCount(); ++page) {
            for (const PageItem* item = pages_.PageBegin(page); item != pages_.PageEnd(page); ++item) {
                if (item->Op != PageItem::Kind::Text) continue;
                UsedBytes& used = fonts_[fontOf_[item->Font]].Used;
                for (const char c : pages_.Text(*item)) used.set(Drawn(c));
            }
        }
    }

    void WriteFont(PdfFont& font) {
        const FontMetrics& metrics = *font.Metrics;
        const FontSubset subset = SubsetPageFont(metrics, font.Used);
        const auto thousandths = [&](int units) { return units * 1000.0 / metrics.UnitsPerEm; };
        const std::string name = "/" + SubsetTag(font.Used) + subset.PostScriptName;

        const int program = file_.Reserve();
        file_.Stream(program, "/Length1 " + std::to_string(subset.File.size()), subset.File);
        const int unicode = file_.Reserve();
        file_.Stream(unicode, "", ToUnicodeMap(font.Used));

        const int descriptor = file_.Reserve();
        constexpr int kFixedPitch = 1;
        constexpr int kNonsymbolic = 32;
        const int flags = kNonsymbolic | (metrics.Advances['i'] == metrics.Advances['W'] ? kFixedPitch : 0);
        std::string box;
        for (const int edge : subset.Box) box += std::to_string(edge) + " ";
        file_.Object(descriptor, "<</Type/FontDescriptor/FontName" + name + "/Flags " + std::to_string(flags) + "/FontBBox[" +
                                     box + "]/ItalicAngle 0/StemV 80/Ascent " + Number(thousandths(metrics.Ascent)) +
                                     "/Descent " + Number(-thousandths(metrics.Descent)) + "/CapHeight " +
                                     std::to_string(subset.CapHeight) + "/FontFile2 " + std::to_string(program) + " 0 R>>");
        std::string widths;
        for (int byte = kFirstByte; byte <= kLastByte; ++byte) {
            widths += Number(thousandths(metrics.Advances[static_cast<std::size_t>(byte)])) + " ";
        }
        font.Object = file_.Reserve();
        file_.Object(font.Object, "<</Type/Font/Subtype/TrueType/BaseFont" + name + "/Encoding/WinAnsiEncoding/FirstChar " +
                                      std::to_string(kFirstByte) + "/LastChar " + std::to_string(kLastByte) + "/Widths[" +
                                      widths + "]/FontDescriptor " + std::to_string(descriptor) + " 0 R/ToUnicode " +
                                      std::to_string(unicode) + " 0 R>>");
    }

    int WritePage(int page) {
        contents_ = "q .05 0 0 .05 0 0 cm\n";  // twips, counted from the lower left corner
        const PagePlacement placement(pages_, page);
        bool hasTexts = false;
        for (const PageItem* item = pages_.PageBegin(page); item != pages_.PageEnd(page); ++item) {
            if (item->Op == PageItem::Kind::Line) {
                AppendLine(placement, *item);
            } else {
                hasTexts = true;
            }
        }
        if (hasTexts) AppendTexts(placement, page);
        contents_ += 'Q';
        const int content = file_.Reserve();
        file_.Stream(content, "", contents_);
        const int number = file_.Reserve();
        file_.Object(number, "<</Type/Page/Parent " + std::to_string(pageTree_) + " 0 R/Resources " + std::to_string(resources_) +
                                 " 0 R/Contents " + std::to_string(content) + " 0 R>>");
        return number;
    }

    double FromFoot(double y) const { return pages_.Paper().Height - y; }

    void AppendNumbers(std::initializer_list<double> numbers) {
        for (const double number : numbers) {
            AppendHundredths(Hundredths(number), contents_);
            contents_ += ' ';
        }
    }

    void AppendLine(const PagePlacement& placement, const PageItem& item) {
        const PagePlacement::Place from = placement.PlaceOf(item);
        const PagePlacement::Place to = placement.EndOf(item);
        AppendNumbers({item.LineWidth * kTwipsPerDot});
        contents_ += "w ";
        AppendNumbers({from.X, FromFoot(from.Y)});
        contents_ += "m ";
        AppendNumbers({to.X, FromFoot(to.Y)});
        contents_ += "l S\n";
    }

    // Each text begins at a distance from where the one before it began.
    void AppendTexts(const PagePlacement& placement, int page) {
        contents_ += "BT\n";
        int font = -1;
        long x = 0;
        long y = 0;
        double ascent = 0;
        for (const PageItem* item = pages_.PageBegin(page); item != pages_.PageEnd(page); ++item) {
            if (item->Op != PageItem::Kind::Text) continue;
            if (item->Font != font) {
                font = item->Font;
                const PageFont& pageFont = pages_.Fonts()[item->Font];
                const PdfFont& pdfFont = fonts_[fontOf_[item->Font]];
                ascent = ToTwips(*pdfFont.Metrics, pdfFont.Metrics->Ascent, pageFont.Size);
                contents_ += NameOf(pdfFont) + " ";
                AppendNumbers({static_cast<double>(pageFont.Size) * kTwipsPerPoint});
                contents_ += "Tf\n";
            }
            const PagePlacement::Place place = placement.PlaceOf(*item);
            const long toX = Hundredths(place.X);
            const long toY = Hundredths(FromFoot(place.Y + ascent));
            AppendHundredths(toX - x, contents_);
            contents_ += ' ';
            AppendHundredths(toY - y, contents_);
            contents_ += " Td(";
            x = toX;
            y = toY;
            for (const char c : placement.ShownText(*item)) {
                const char drawn = DrawnAs(c);
                if (drawn == '(' || drawn == ')' || drawn == '\\') contents_ += '\\';
                contents_ += drawn;
            }
            contents_ += ")Tj\n";
        }
        contents_ += "ET\n";
    }

    const PageDocument& pages_;
    ObjectFile file_;
    std::vector<PdfFont> fonts_;
    std::vector<std::size_t> fontOf_;  // by the document's fonts
    std::string contents_;
    int pageTree_ = 0;
    int resources_ = 0;
};

}  // namespace

void WritePdf(const PageDocument& pages, FileReplacement& file) {
    PdfFile(pages, file).Write();
}

}  // namespace tallymar
