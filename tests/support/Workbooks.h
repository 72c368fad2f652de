#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/spreadsheet/Parts.h"

namespace tallymar::test {

// A workbook of parts in memory.
class MemoryParts : public sheets::Parts {
 public:
    explicit MemoryParts(std::map<std::string, std::string> parts) : parts_(std::move(parts)) {}

    std::unique_ptr<sheets::PartStream> Open(const std::string& name) override {
        const auto part = parts_.find(name);
        return part != parts_.end() ? std::make_unique<Stream>(part->second) : nullptr;
    }

 private:
    class Stream : public sheets::PartStream {
     public:
        explicit Stream(const std::string& text) : text_(text) {}
        std::size_t Read(char* buffer, std::size_t room) override {
            const std::size_t count = text_.copy(buffer, std::min(room, kPiece), at_);
            at_ += count;
            return count;
        }
        double ShareRead() const override { return 0; }

     private:
        static constexpr std::size_t kPiece = 1000;  // so that tags and texts are cut

        const std::string& text_;
        std::size_t at_ = 0;
    };

    std::map<std::string, std::string> parts_;
};

// The content of an .ods whose only sheet has these rows.
inline std::string OdsContent(const std::string& rows) {
    return "<office:document-content xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
           " xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\""
           " xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\""
           " xmlns:calcext=\"urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0\">"
           "<office:body><office:spreadsheet><table:table table:name=\"Assets\">" +
           rows + "</table:table></office:spreadsheet></office:body></office:document-content>";
}

// The parts of an .xlsx whose only sheet has these rows. Style 1 is a date, 2 a percentage, 3 a date in a format of its own, 4 an
// amount in red.
inline std::map<std::string, std::string> XlsxParts(const std::string& rows, const std::string& texts = {},
                                                    const std::string& bookProperties = {}) {
    const std::string space = " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
    const std::string relations = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    const std::string type = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    return {
        {"_rels/.rels",
         relations + "<Relationship Id=\"a\" Type=\"" + type + "officeDocument\" Target=\"book/b.xml\"/></Relationships>"},
        {"book/b.xml", "<workbook" + space + " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">" +
                           bookProperties +
                           "<sheets><sheet name=\"One\" r:id=\"s\"/><sheet name=\"Two\" r:id=\"x\"/></sheets></workbook>"},
        {"book/_rels/b.xml.rels", relations + "<Relationship Id=\"s\" Type=\"" + type + "worksheet\" Target=\"../s.xml\"/>" +
                                      "<Relationship Id=\"f\" Type=\"" + type + "styles\" Target=\"/f.xml\"/>" +
                                      "<Relationship Id=\"t\" Type=\"" + type +
                                      "sharedStrings\" Target=\"t.xml\"/></Relationships>"},
        {"f.xml", "<styleSheet" + space +
                      "><numFmts><numFmt numFmtId=\"170\" formatCode=\"[$-409]d\\-mmm\\-yyyy;@\"/>"
                      "<numFmt numFmtId=\"171\" formatCode=\"[Red]0.00&quot; days&quot;\"/></numFmts>"
                      "<cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs><cellXfs><xf/><xf numFmtId=\"14\"/><xf numFmtId=\"10\"/>"
                      "<xf numFmtId=\"170\"/><xf numFmtId=\"171\"/></cellXfs></styleSheet>"},
        {"book/t.xml", "<sst" + space + ">" + texts + "</sst>"},
        {"s.xml", "<worksheet" + space + "><sheetData>" + rows + "</sheetData></worksheet>"}};
}

}  // namespace tallymar::test
