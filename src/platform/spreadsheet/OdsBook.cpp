#include "platform/spreadsheet/OdsBook.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "platform/runtime/DateText.h"

namespace tallymar::sheets {

namespace {

using enum XmlSpace;

class ProtectionHandler : public XmlHandler {
 public:
    void Start(const XmlName& name, const XmlAttributes&) override {
        if (name.Is(Manifest, "encryption-data")) RefuseWorkbook("is protected by a password");
    }
    void End(const XmlName&) override {}
};

std::uint64_t Times(std::string_view text) {
    std::uint64_t times = 1;
    std::from_chars(text.data(), text.data() + text.size(), times);
    return std::max<std::uint64_t>(times, 1);
}

// "2003-02-28" or "2003-02-28T14:05:00", with parts of a second that nothing here keeps.
std::optional<Date> DateOf(std::string_view text) {
    if (const std::size_t point = text.find_first_of(".,Z"); point != std::string_view::npos) text = text.substr(0, point);
    return ParseIsoDate(text);
}

class OdsSheet : public SheetParser {
 public:
    OdsSheet(PercentStyles styles, std::function<void(std::string_view)> named)
        : styles_(std::move(styles)), named_(std::move(named)) {}

    void Start(const XmlName& name, const XmlAttributes& attributes) override {
        if (done_) return;
        if (passedOver_ > 0) {
            ++passedOver_;
            return;
        }
        if (inCell_) return StartInCell(name, attributes);
        if (name.Is(Table, "table")) {
            named_(attributes.Get(Table, "name"));
        } else if (name.Is(Table, "table-row")) {
            times_ = Times(attributes.Get(Table, "number-rows-repeated"));
            column_ = 0;
            inRow_ = true;
            rows_.BeginRow(static_cast<std::int64_t>(std::min<std::uint64_t>(row_, SheetReader::kMostRows + 1)));
        } else if (inRow_ && (name.Is(Table, "table-cell") || name.Is(Table, "covered-table-cell"))) {
            StartCell(attributes);
        } else if (name.Is(Table, "shapes")) {
            passedOver_ = 1;
        } else {
            styles_.Start(name, attributes);
        }
    }
    void End(const XmlName& name) override {
        if (done_) return;
        if (passedOver_ > 0) {
            --passedOver_;
        } else if (inCell_ && name.Space == Table) {
            inCell_ = false;
            EndCell();
        } else if (inCell_) {
            if (name.Is(XmlSpace::Text, "p")) inParagraph_ = false;
        } else if (name.Is(Table, "table-row")) {
            inRow_ = false;
            // A sheet ends in an empty row that stands for all there might be.
            rows_.EndRow(times_);
            row_ += std::min<std::uint64_t>(times_, SheetReader::kMostRows);
        } else if (name.Is(Table, "table")) {
            done_ = true;
        }
    }
    void Text(std::string_view text) override {
        if (done_ || passedOver_ > 0 || !inParagraph_) return;
        // Blanks and line ends between words are one blank, at the beginning none.
        for (const char c : text) {
            const bool blank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
            if (!blank || !afterBlank_) AppendBounded(blank ? " " : std::string_view(&c, 1), written_);
            afterBlank_ = blank;
        }
    }

 private:
    void StartCell(const XmlAttributes& attributes) {
        inCell_ = true;
        cellTimes_ = Times(attributes.Get(Table, "number-columns-repeated"));
        cell_ = SheetCell();
        written_.clear();
        paragraphs_ = 0;
        type_ = attributes.Get(Office, "value-type");
        isPercent_ = type_ == "percentage" || (type_ == "float" && styles_.Has(attributes.Get(Table, "style-name")));
        hasFormula_ = attributes.Get(Table, "formula").data() != nullptr;
        isError_ = attributes.Get(CalcExt, "value-type") == "error";
        // A string may have its value apart from how it is shown.
        const std::string_view value = type_ == "string"    ? attributes.Get(Office, "string-value")
                                       : type_ == "date"    ? attributes.Get(Office, "date-value")
                                       : type_ == "boolean" ? attributes.Get(Office, "boolean-value")
                                                            : attributes.Get(Office, "value");
        hasValue_ = value.data() != nullptr;
        value_.clear();
        if (hasValue_) AppendBounded(value, value_);
    }

    void StartInCell(const XmlName& name, const XmlAttributes& attributes) {
        if (name.Is(XmlSpace::Text, "p")) {
            if (paragraphs_++ > 0) AppendBounded("\n", written_);
            inParagraph_ = afterBlank_ = true;
        } else if (name.Is(XmlSpace::Text, "s")) {
            const std::uint64_t blanks =
                std::min<std::uint64_t>(Times(attributes.Get(XmlSpace::Text, "c")), SheetReader::kLongestText);
            AppendBounded(std::string(blanks, ' '), written_);
            afterBlank_ = false;
        } else if (name.Is(XmlSpace::Text, "tab")) {
            AppendBounded("\t", written_);
            afterBlank_ = false;
        } else if (name.Is(XmlSpace::Text, "line-break")) {
            AppendBounded("\n", written_);
            afterBlank_ = false;
        } else if (!name.Is(XmlSpace::Text, "span") && !name.Is(XmlSpace::Text, "a")) {
            passedOver_ = 1;  // a note, a picture
        }
    }

    void EndCell() {
        inParagraph_ = false;
        FillCell();
        rows_.Put(column_, cell_, cellTimes_);
        column_ += std::min<std::uint64_t>(cellTimes_, SheetReader::kMostColumns);
    }

    void FillCell() {
        if (isError_) return Set(CellKind::Other, "the error " + written_);
        if (type_ == "string") return Set(CellKind::Text, hasValue_ ? value_ : written_);
        if (type_ == "date") {
            const auto date = DateOf(value_);
            if (!date) return Set(CellKind::Other, "a date that is none");
            return SetNumber(CellKind::Date, date->Serial());
        }
        if (type_ == "boolean") return SetNumber(CellKind::Boolean, value_ == "true" ? 1 : 0);
        if (type_ == "time") return Set(CellKind::Other, "a time of day");
        if (type_.empty()) {  // some programs leave the type of a text out
            if (!written_.empty()) return Set(CellKind::Text, written_);
            if (hasFormula_) Set(CellKind::Other, std::string(kNotComputed));
            return;
        }
        double number = 0;
        if (!ParseNumber(value_, number)) RefuseWorkbook("is damaged: a cell's number is none");
        SetNumber(CellKind::Number, isPercent_ ? number * 100 : number);
    }

    void Set(CellKind kind, std::string text) {
        cell_.Kind = kind;
        cell_.Text = std::move(text);
    }
    void SetNumber(CellKind kind, double number) {
        cell_.Kind = kind;
        cell_.Number = number;
    }

    PercentStyles styles_;
    std::function<void(std::string_view)> named_;
    std::uint64_t row_ = 1;    // the one being read
    std::uint64_t times_ = 1;  // that it stands for
    std::size_t column_ = 0;
    std::uint64_t cellTimes_ = 1;
    SheetCell cell_;
    std::string type_;
    std::string value_;
    std::string written_;  // what the cell shows
    int paragraphs_ = 0;
    int passedOver_ = 0;  // how many elements deep in something that is no text of a cell
    bool hasValue_ = false;
    bool hasFormula_ = false;
    bool isPercent_ = false;
    bool isError_ = false;
    bool inRow_ = false;
    bool inCell_ = false;
    bool inParagraph_ = false;
    bool afterBlank_ = false;
};

}  // namespace

void PercentStyles::Start(const XmlName& name, const XmlAttributes& attributes) {
    if (name.Is(NumberStyle, "percentage-style")) {
        formats_.emplace(Bounded(attributes.Get(Style, "name")));
    } else if (name.Is(Style, "style") && attributes.Get(Style, "family") == "table-cell") {
        const std::string_view format = Bounded(attributes.Get(Style, "data-style-name"));
        if (!format.empty()) cells_.insert_or_assign(std::string(Bounded(attributes.Get(Style, "name"))), format);
    }
}

bool PercentStyles::Has(std::string_view style) const {
    if (formats_.empty()) return false;
    const auto cell = cells_.find(style);
    return cell != cells_.end() && formats_.contains(cell->second);
}

std::string_view PercentStyles::Bounded(std::string_view name) {
    constexpr std::size_t kMost = 8 << 20;
    constexpr std::size_t kEach = 100;  // what keeping one takes
    if ((size_ += name.size() + kEach) > kMost) RefuseWorkbook("has more formats than any workbook");
    return name;
}

PercentStyles ReadOdsStyles(Parts& parts) {
    ProtectionHandler protection;
    if (const auto part = parts.Open("META-INF/manifest.xml")) ReadXml(*part, protection);
    PercentStyles styles;
    if (const auto part = parts.Open("styles.xml")) ReadXml(*part, styles);
    return styles;
}

std::unique_ptr<SheetParser> ParseOdsSheet(PercentStyles styles, std::function<void(std::string_view)> named) {
    return std::make_unique<OdsSheet>(std::move(styles), std::move(named));
}

}  // namespace tallymar::sheets
