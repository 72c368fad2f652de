#include "platform/spreadsheet/XlsxBook.h"

#include <charconv>
#include <map>
#include <optional>

namespace tallymar::sheets {

namespace {

using enum XmlSpace;

constexpr std::size_t kMostFormats = 100'000;
constexpr int kDaysTo1904 = 1462;

std::optional<std::uint64_t> WholeNumber(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

bool IsTrue(std::string_view text) {
    return text == "1" || text == "true";
}

// "_x000D_" is how these files write a character that XML does not have.
std::string Unescaped(const std::string& text) {
    std::string plain;
    std::size_t taken = 0;
    for (std::size_t at = text.find("_x"); at != std::string::npos; at = text.find("_x", at)) {
        unsigned unit = 0;
        const bool whole = text.size() - at >= 7 && text[at + 6] == '_';
        if (!whole || std::from_chars(&text[at + 2], &text[at + 6], unit, 16).ptr != &text[at + 6]) {
            at += 2;
            continue;
        }
        plain.append(text, taken, at - taken);
        if (unit < 0x80) {
            plain += static_cast<char>(unit);
        } else if (unit < 0x800) {
            plain += {static_cast<char>(0xC0 | unit >> 6), static_cast<char>(0x80 | (unit & 0x3F))};
        } else {  // half of a pair makes no character, and is said to be none by whoever reads the text
            plain += {static_cast<char>(0xE0 | unit >> 12), static_cast<char>(0x80 | (unit >> 6 & 0x3F)),
                      static_cast<char>(0x80 | (unit & 0x3F))};
        }
        taken = at += 7;
    }
    if (taken == 0) return text;
    return plain.append(text, taken);
}

// Gathers the text of a string of runs: of its t elements, but not of those that say how it is pronounced.
class TextRuns {
 public:
    void Begin() { text_.clear(); }
    void Start(const XmlName& name) {
        if (name.Is(Sheet, "rPh")) ++phonetic_;
        taking_ = name.Is(Sheet, "t") && phonetic_ == 0;
    }
    void End(const XmlName& name) {
        if (name.Is(Sheet, "rPh")) --phonetic_;
        taking_ = false;
    }
    void Text(std::string_view text) {
        if (taking_) AppendBounded(text, text_);
    }
    std::string Whole() const { return Unescaped(text_); }

 private:
    std::string text_;
    int phonetic_ = 0;
    bool taking_ = false;
};

class TextsHandler : public XmlHandler {
 public:
    explicit TextsHandler(SharedTexts& texts) : texts_(texts) {}

    void Start(const XmlName& name, const XmlAttributes&) override {
        if (name.Is(Sheet, "si")) runs_.Begin();
        runs_.Start(name);
    }
    void End(const XmlName& name) override {
        runs_.End(name);
        if (name.Is(Sheet, "si")) texts_.Add(runs_.Whole());
    }
    void Text(std::string_view text) override { runs_.Text(text); }

 private:
    SharedTexts& texts_;
    TextRuns runs_;
};

class StylesHandler : public XmlHandler {
 public:
    explicit StylesHandler(std::vector<NumberMeaning>& formats) : formats_(formats) {}

    void Start(const XmlName& name, const XmlAttributes& attributes) override {
        if (name.Is(Sheet, "cellXfs")) inCells_ = true;
        if (name.Is(Sheet, "numFmt")) {
            const auto number = WholeNumber(attributes.Get("numFmtId"));
            if (own_.size() >= kMostFormats) RefuseWorkbook("has more formats than any workbook");
            if (number) own_[*number] = MeaningOfFormat(attributes.Get("formatCode"));
        }
        if (!inCells_ || !name.Is(Sheet, "xf")) return;
        if (formats_.size() >= kMostFormats) RefuseWorkbook("has more formats than any workbook");
        const std::uint64_t number = WholeNumber(attributes.Get("numFmtId")).value_or(0);
        const auto own = own_.find(number);
        formats_.push_back(own != own_.end() ? own->second
                           : number <= 58    ? MeaningOfBuiltInFormat(static_cast<int>(number))
                                             : NumberMeaning::Plain);
    }
    void End(const XmlName& name) override {
        if (name.Is(Sheet, "cellXfs")) inCells_ = false;
    }

 private:
    std::vector<NumberMeaning>& formats_;
    std::map<std::uint64_t, NumberMeaning> own_;
    bool inCells_ = false;
};

class BookHandler : public XmlHandler {
 public:
    explicit BookHandler(XlsxBook& book) : book_(book) {}

    void Start(const XmlName& name, const XmlAttributes& attributes) override {
        if (name.Is(Sheet, "workbookPr")) book_.CountsFrom1904 = IsTrue(attributes.Get("date1904"));
        if (!name.Is(Sheet, "sheet") || seen_) return;
        seen_ = true;
        book_.SheetName = attributes.Get("name");
        SheetId = attributes.Get(Relations, "id");
    }
    void End(const XmlName&) override {}

    std::string SheetId;

 private:
    XlsxBook& book_;
    bool seen_ = false;
};

struct Relation {
    std::string Id;
    std::string Type;  // the last word of it
    std::string Target;
};

class RelationsHandler : public XmlHandler {
 public:
    void Start(const XmlName& name, const XmlAttributes& attributes) override {
        if (!name.Is(Package, "Relationship") || attributes.Get("TargetMode") == "External") return;
        if (All.size() >= kMostRelations) RefuseWorkbook("has more parts than any workbook");
        const std::string_view type = attributes.Get("Type");
        All.push_back({std::string(attributes.Get("Id")), std::string(type.substr(type.rfind('/') + 1)),
                       std::string(attributes.Get("Target"))});
    }
    void End(const XmlName&) override {}

    std::vector<Relation> All;

 private:
    static constexpr std::size_t kMostRelations = 10'000;
};

// Of a part whose folder and name these are, with the targets as names of parts.
std::vector<Relation> RelationsOf(Parts& parts, const std::string& folder, const std::string& name) {
    RelationsHandler handler;
    if (const auto part = parts.Open(folder + "_rels/" + name + ".rels")) ReadXml(*part, handler);
    for (Relation& relation : handler.All) {
        std::string path = relation.Target.starts_with('/') ? relation.Target.substr(1) : folder + relation.Target;
        // "../" goes up a folder.
        for (std::size_t up = path.find("/../"); up != std::string::npos; up = path.find("/../")) {
            const std::size_t before = up == 0 ? std::string::npos : path.rfind('/', up - 1);
            path.erase(before == std::string::npos ? 0 : before + 1, up + 4 - (before == std::string::npos ? 0 : before + 1));
        }
        relation.Target = path;
    }
    return handler.All;
}

class XlsxSheet : public SheetParser {
 public:
    explicit XlsxSheet(const XlsxBook& book) : book_(book) {}

    void Start(const XmlName& name, const XmlAttributes& attributes) override {
        if (done_) return;
        if (name.Is(Sheet, "row")) return StartRow(attributes);
        if (name.Is(Sheet, "c") && inRow_) return StartCell(attributes);
        if (!inCell_) return;
        takesValue_ = name.Is(Sheet, "v");
        hasFormula_ |= name.Is(Sheet, "f");
        runs_.Start(name);
    }
    void End(const XmlName& name) override {
        if (done_) return;
        takesValue_ = false;
        runs_.End(name);
        if (name.Is(Sheet, "sheetData")) done_ = true;
        if (name.Is(Sheet, "c") && inCell_) EndCell();
        if (name.Is(Sheet, "row") && inRow_) {
            inRow_ = false;
            rows_.EndRow();
        }
    }
    void Text(std::string_view text) override {
        if (done_ || !inCell_) return;
        if (takesValue_) AppendBounded(text, value_);
        runs_.Text(text);
    }

 private:
    void StartRow(const XmlAttributes& attributes) {
        const std::string_view number = attributes.Get("r");
        const std::uint64_t next = number.data() != nullptr ? WholeNumber(number).value_or(0) : row_ + 1;
        if (next <= row_) RefuseWorkbook("is damaged: its rows are not in order");
        row_ = next;
        column_ = 0;
        inRow_ = true;
        inCell_ = false;
        rows_.BeginRow(static_cast<std::int64_t>(std::min<std::uint64_t>(next, SheetReader::kMostRows + 1)));
    }

    // "BC12" is column 54, from 0.
    std::size_t ColumnOf(std::string_view place) const {
        std::size_t column = 0;
        std::size_t letters = 0;
        for (; letters < place.size() && letters < 4 && place[letters] >= 'A' && place[letters] <= 'Z'; ++letters) {
            column = column * 26 + static_cast<std::size_t>(place[letters] - 'A') + 1;
        }
        if (letters == 0 || column <= column_) RefuseWorkbook("is damaged: its cells are not in order");
        return column - 1;
    }

    void StartCell(const XmlAttributes& attributes) {
        const std::string_view place = attributes.Get("r");
        if (place.data() != nullptr) column_ = ColumnOf(place);
        type_ = attributes.Get("t");
        style_ = WholeNumber(attributes.Get("s")).value_or(0);
        value_.clear();
        hasFormula_ = false;
        runs_.Begin();
        inCell_ = true;
    }

    void EndCell() {
        inCell_ = false;
        cell_ = SheetCell();
        FillCell();
        rows_.Put(column_++, cell_);
    }

    void FillCell() {
        if (type_ == "inlineStr") return SetText(runs_.Whole());
        if (type_ == "str") return SetText(Unescaped(value_));
        if (value_.empty() && hasFormula_) return SetOther(std::string(kNotComputed));
        if (value_.empty()) return;
        if (type_ == "s") {
            const auto index = WholeNumber(value_);
            if (!index || *index >= book_.Texts.Count()) RefuseWorkbook("is damaged: a cell names a text that is not there");
            return SetText(std::string(book_.Texts[*index]));
        }
        if (type_ == "e") return SetOther("the error " + value_);
        if (type_ == "d") return SetText(value_);
        double number = 0;
        if (!ParseNumber(value_, number)) RefuseWorkbook("is damaged: a cell's number is none");
        if (type_ == "b") return SetNumber(CellKind::Boolean, number != 0 ? 1 : 0);
        const NumberMeaning meaning = style_ < book_.Formats.size() ? book_.Formats[style_] : NumberMeaning::Plain;
        if (meaning == NumberMeaning::Date) return SetDate(number);
        SetNumber(CellKind::Number, meaning == NumberMeaning::Percent ? number * 100 : number);
    }

    // Days from the sheet's beginning. Those that count from 1900 take it for a leap year, so that their days before March are
    // one less than ours, and the day that never was is none.
    void SetDate(double days) {
        constexpr double kFebruary29 = 60;
        if (days > 0 && days < 1) return SetOther("a time of day");
        if (book_.CountsFrom1904) return SetNumber(CellKind::Date, days + kDaysTo1904);
        if (days < 0 || (days >= kFebruary29 && days < kFebruary29 + 1)) return SetOther("a date that is none");
        SetNumber(CellKind::Date, days >= 1 && days < kFebruary29 ? days + 1 : days);
    }

    void SetNumber(CellKind kind, double number) {
        cell_.Kind = kind;
        cell_.Number = number;
    }
    void SetText(std::string text) {
        cell_.Kind = CellKind::Text;
        cell_.Text = std::move(text);
    }
    void SetOther(std::string what) {
        cell_.Kind = CellKind::Other;
        cell_.Text = std::move(what);
    }

    const XlsxBook& book_;
    std::uint64_t row_ = 0;   // the last that has begun
    std::size_t column_ = 0;  // of the cell; after it, how many columns have been passed
    std::string type_;
    std::uint64_t style_ = 0;
    std::string value_;
    TextRuns runs_;
    SheetCell cell_;
    bool inRow_ = false;
    bool inCell_ = false;
    bool takesValue_ = false;
    bool hasFormula_ = false;
};

}  // namespace

void SharedTexts::Add(std::string_view text) {
    all_ += text;
    ends_.push_back(static_cast<std::uint32_t>(all_.size()));
    if (all_.size() + ends_.size() * sizeof(std::uint32_t) > SheetReader::kMostTexts)
        RefuseTooLarge("has more texts than belong in a company");
}

std::string_view SharedTexts::operator[](std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(all_).substr(begin, ends_[index] - begin);
}

XlsxBook XlsxBook::Read(Parts& parts) {
    XlsxBook book;
    std::string path = "xl/workbook.xml";
    for (const Relation& relation : RelationsOf(parts, "", "")) {
        if (relation.Type == "officeDocument") path = relation.Target;
    }
    const auto part = parts.Open(path);
    if (part == nullptr) RefuseWorkbook("is no workbook that can be read (.xlsx and .ods can)");
    BookHandler handler(book);
    ReadXml(*part, handler);

    const std::size_t name = path.rfind('/') + 1;
    for (const Relation& relation : RelationsOf(parts, path.substr(0, name), path.substr(name))) {
        if (relation.Id == handler.SheetId && relation.Type == "worksheet") book.SheetPart = relation.Target;
        const auto named = relation.Type == "styles" || relation.Type == "sharedStrings" ? parts.Open(relation.Target) : nullptr;
        if (named == nullptr) continue;
        if (relation.Type == "styles") {
            StylesHandler styles(book.Formats);
            ReadXml(*named, styles);
        } else {
            TextsHandler texts(book.Texts);
            ReadXml(*named, texts);
        }
    }
    if (book.SheetPart.empty()) RefuseWorkbook("has no sheet that can be read");
    return book;
}

std::unique_ptr<SheetParser> ParseXlsxSheet(const XlsxBook& book) {
    return std::make_unique<XlsxSheet>(book);
}

}  // namespace tallymar::sheets
