#pragma once

#include <cstdint>
#include <exception>
#include <span>
#include <string_view>

#include "platform/spreadsheet/Parts.h"

struct XML_ParserStruct;

namespace tallymar::sheets {

// The vocabularies that a workbook's parts are written in, by whatever prefix.
enum class XmlSpace : std::uint8_t {
    None,
    Sheet,
    Package,
    Relations,
    Office,
    Table,
    Text,
    Style,
    NumberStyle,
    CalcExt,
    Manifest,
    Other
};

struct XmlName {
    XmlSpace Space = XmlSpace::None;
    std::string_view Local;

    bool Is(XmlSpace space, std::string_view local) const { return Space == space && Local == local; }
};

class XmlAttributes {
 public:
    explicit XmlAttributes(const char** names) : names_(names) {}

    // A view without data when there is none.
    std::string_view Get(XmlSpace space, std::string_view local) const;
    std::string_view Get(std::string_view local) const { return Get(XmlSpace::None, local); }

 private:
    const char** names_;  // name, value, name, value, nullptr
};

// Takes what is read. What it throws ends the reading.
class XmlHandler {
 public:
    virtual ~XmlHandler() = default;
    virtual void Start(const XmlName& name, const XmlAttributes& attributes) = 0;
    virtual void End(const XmlName& name) = 0;
    virtual void Text(std::string_view) {}
};

// XML in pieces, of any size, in memory that does not grow with it. Declared entities and document types, which no workbook has,
// are refused, and so are elements nested deeper and tags longer than any of a workbook.
// Failure: UnrecognizedFormat, its text the second half of a sentence that begins with the file's name.
class XmlParser {
 public:
    explicit XmlParser(XmlHandler& handler);
    ~XmlParser();
    XmlParser(const XmlParser&) = delete;
    XmlParser& operator=(const XmlParser&) = delete;

    void Take(std::string_view bytes, bool isLast);

 private:
    struct Callbacks;

    XML_ParserStruct* parser_;
    XmlHandler& handler_;
    std::int64_t fed_ = 0;
    int depth_ = 0;
    std::exception_ptr failure_;
};

// A whole part, which must be a small one.
void ReadXml(PartStream& part, XmlHandler& handler);

}  // namespace tallymar::sheets
