#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "platform/spreadsheet/SheetParser.h"

namespace tallymar::sheets {

inline constexpr const char* kOdsContent = "content.xml";

// Which styles of cells show a number as a percentage: some programs say so there alone.
class PercentStyles : public XmlHandler {
 public:
    void Start(const XmlName& name, const XmlAttributes& attributes) override;
    void End(const XmlName&) override {}

    bool Has(std::string_view style) const;

 private:
    std::string_view Bounded(std::string_view name);

    std::set<std::string, std::less<>> formats_;
    std::map<std::string, std::string, std::less<>> cells_;  // a style's format
    std::size_t size_ = 0;                                   // of all names, in bytes
};

// The styles that an .ods has apart from its content. Fails with UnrecognizedFormat when the workbook is protected by a password.
PercentStyles ReadOdsStyles(Parts& parts);

// The rows of the first sheet in an .ods, from its content; `named` hears the sheet's name, in UTF-8.
std::unique_ptr<SheetParser> ParseOdsSheet(PercentStyles styles, std::function<void(std::string_view)> named);

}  // namespace tallymar::sheets
