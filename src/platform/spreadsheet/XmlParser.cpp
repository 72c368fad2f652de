#include "platform/spreadsheet/XmlParser.h"

#include <expat.h>

#include <array>
#include <new>
#include <string>
#include <utility>

#include "platform/runtime/PlatformError.h"

namespace tallymar::sheets {

namespace {

constexpr int kMostDepth = 100;
constexpr std::int64_t kLongestTag = 1 << 20;  // bytes; expat keeps one until it is whole
constexpr char kSeparator = '|';
constexpr std::size_t kPiece = 1 << 15;

[[noreturn]] void Refuse(const std::string& complaint) {
    throw PlatformError(Failure::UnrecognizedFormat, complaint);
}

constexpr std::array<std::pair<std::string_view, XmlSpace>, 12> kSpaces = {{
    {"http://schemas.openxmlformats.org/spreadsheetml/2006/main", XmlSpace::Sheet},
    {"http://purl.oclc.org/ooxml/spreadsheetml/main", XmlSpace::Sheet},
    {"http://schemas.openxmlformats.org/package/2006/relationships", XmlSpace::Package},
    {"http://schemas.openxmlformats.org/officeDocument/2006/relationships", XmlSpace::Relations},
    {"http://purl.oclc.org/ooxml/officeDocument/relationships", XmlSpace::Relations},
    {"urn:oasis:names:tc:opendocument:xmlns:office:1.0", XmlSpace::Office},
    {"urn:oasis:names:tc:opendocument:xmlns:table:1.0", XmlSpace::Table},
    {"urn:oasis:names:tc:opendocument:xmlns:text:1.0", XmlSpace::Text},
    {"urn:oasis:names:tc:opendocument:xmlns:style:1.0", XmlSpace::Style},
    {"urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0", XmlSpace::NumberStyle},
    {"urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0", XmlSpace::CalcExt},
    {"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0", XmlSpace::Manifest},
}};

XmlName NameOf(std::string_view qualified) {
    const std::size_t end = qualified.rfind(kSeparator);
    if (end == std::string_view::npos) return {XmlSpace::None, qualified};
    const std::string_view space = qualified.substr(0, end);
    for (const auto& [uri, known] : kSpaces) {
        if (uri == space) return {known, qualified.substr(end + 1)};
    }
    return {XmlSpace::Other, qualified.substr(end + 1)};
}

}  // namespace

std::string_view XmlAttributes::Get(XmlSpace space, std::string_view local) const {
    for (const char** name = names_; *name != nullptr; name += 2) {
        if (std::string_view(*name).ends_with(local) && NameOf(*name).Is(space, local)) return name[1];
    }
    return {};
}

// expat is C: an exception waits until it has returned.
struct XmlParser::Callbacks {
    template <typename Body>
    static void Run(void* self, Body body) {
        auto& parser = *static_cast<XmlParser*>(self);
        if (parser.failure_) return;
        try {
            body(parser);
        } catch (...) {
            parser.failure_ = std::current_exception();
            XML_StopParser(parser.parser_, XML_FALSE);
        }
    }
    static void XMLCALL Start(void* self, const char* name, const char** attributes) {
        Run(self, [=](XmlParser& parser) {
            if (++parser.depth_ > kMostDepth) Refuse("is damaged: its elements are nested too deeply");
            parser.handler_.Start(NameOf(name), XmlAttributes(attributes));
        });
    }
    static void XMLCALL End(void* self, const char* name) {
        Run(self, [=](XmlParser& parser) {
            --parser.depth_;
            parser.handler_.End(NameOf(name));
        });
    }
    static void XMLCALL Text(void* self, const char* text, int length) {
        Run(self, [=](XmlParser& parser) { parser.handler_.Text({text, static_cast<std::size_t>(length)}); });
    }
    static void XMLCALL DocumentType(void* self, const char*, const char*, const char*, int) {
        Run(self, [](XmlParser&) { Refuse("declares a document type, which no workbook does"); });
    }
};

XmlParser::XmlParser(XmlHandler& handler) : parser_(XML_ParserCreateNS(nullptr, kSeparator)), handler_(handler) {
    if (parser_ == nullptr) throw std::bad_alloc();
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, Callbacks::Start, Callbacks::End);
    XML_SetCharacterDataHandler(parser_, Callbacks::Text);
    XML_SetStartDoctypeDeclHandler(parser_, Callbacks::DocumentType);
}

XmlParser::~XmlParser() {
    XML_ParserFree(parser_);
}

void XmlParser::Take(std::string_view bytes, bool isLast) {
    const XML_Status status = XML_Parse(parser_, bytes.data(), static_cast<int>(bytes.size()), isLast ? XML_TRUE : XML_FALSE);
    if (failure_) std::rethrow_exception(failure_);
    if (status != XML_STATUS_OK) Refuse("is damaged: a part of it is no XML");
    fed_ += static_cast<std::int64_t>(bytes.size());
    if (fed_ - XML_GetCurrentByteIndex(parser_) > kLongestTag) Refuse("is damaged: a tag of it never ends");
}

void ReadXml(PartStream& part, XmlHandler& handler) {
    constexpr std::size_t kMostPart = std::size_t{512} << 20;
    XmlParser parser(handler);
    std::array<char, kPiece> piece;
    std::size_t length = 0;
    while (const std::size_t count = part.Read(piece.data(), piece.size())) {
        if (length += count; length > kMostPart) Refuse("unpacks to more than any workbook of assets");
        parser.Take({piece.data(), count}, false);
    }
    parser.Take({}, true);
}

}  // namespace tallymar::sheets
