#include <xlsxwriter.h>

#include <algorithm>
#include <array>
#include <utility>

#include "platform/page/DetailFiles.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "platform/spreadsheet/WorkbookFile.h"

namespace tallymar {

namespace {

constexpr const char* kMoney = "#,##0.00_);(#,##0.00)";
constexpr lxw_row_t kRowsBeforeTotals = 2;  // a blank one and their own
constexpr double kFirstCountedDay = 61;     // 1900-03-01; spreadsheets believe in a February 29 before it

// A name that a sheet may have: at most 31 characters, without those that formulas use.
std::string SheetName(std::string_view title) {
    std::string name(Trim(title.substr(0, 31)));
    for (char& c : name) {
        if (std::string_view("[]:*?/\\'").find(c) != std::string_view::npos || static_cast<unsigned char>(c) < 0x20) c = ' ';
    }
    name = Trim(name);
    return name.empty() || LCase(name) == "history" ? "Report" : ToUtf8(name);
}

const auto Check = sheets::WorkbookFile::Check;

class Workbook {
 public:
    explicit Workbook(const DetailTable& table) : table_(table) {}

    std::string Write() {
        std::string title = ToUtf8(Trim(table_.Title));
        lxw_doc_properties properties{};
        properties.title = title.data();
        Check(workbook_set_properties(file_.Book(), &properties));
        sheet_ = file_.AddSheet(SheetName(table_.Title));
        SetUpColumns();
        WriteHeadings();
        for (std::size_t row = 0; row < table_.RowCount(); ++row) {
            for (std::size_t i = 0; i < formats_.size(); ++i) WriteCell(row, i);
        }
        if (table_.RowCount() > 0) WriteTotals();
        std::string whole;
        file_.Finish([&whole](std::string_view piece) { whole += piece; });
        return whole;
    }

 private:
    lxw_format* FormatOf(const DetailColumn& column) {
        lxw_format* format = workbook_add_format(file_.Book());
        switch (column.Kind) {
            case DetailKind::Text:
                format_set_num_format(format, "@");
                break;
            case DetailKind::Date:
                format_set_num_format(format, "mm/dd/yyyy");
                format_set_align(format, LXW_ALIGN_CENTER);
                break;
            case DetailKind::Integer:
                format_set_num_format(format, column.Picture.empty() ? "0" : column.Picture.c_str());
                break;
            case DetailKind::Money:
                format_set_num_format(format, column.Picture.empty() ? kMoney : column.Picture.c_str());
                break;
        }
        return format;
    }

    void SetUpColumns() {
        for (std::size_t i = 0; i < table_.Columns().size(); ++i) {
            const DetailColumn& column = table_.Columns()[i];
            std::size_t width = column.Kind == DetailKind::Money ? 14 : column.Kind == DetailKind::Date ? 11 : 6;
            for (std::size_t row = 0; column.Kind == DetailKind::Text && row < table_.RowCount(); ++row) {
                if (const auto* text = std::get_if<std::string>(&table_.Cell(row, i)))
                    width = std::max(width, RTrim(*text).size());
            }
            width = std::clamp(width, column.Heading.size() + 3, std::max<std::size_t>(column.Heading.size() + 3, 60));
            formats_.push_back(FormatOf(column));
            Check(worksheet_set_column(sheet_, Col(i), Col(i), static_cast<double>(width) + 1, formats_.back()));
        }
    }

    void WriteHeadings() {
        lxw_format* heading = workbook_add_format(file_.Book());
        format_set_bold(heading);
        format_set_bottom(heading, LXW_BORDER_THIN);
        format_set_align(heading, LXW_ALIGN_CENTER);
        for (std::size_t i = 0; i < table_.Columns().size(); ++i) {
            Check(worksheet_write_string(sheet_, 0, Col(i), ToUtf8(table_.Columns()[i].Heading).c_str(), heading));
        }
        worksheet_freeze_panes(sheet_, 1, 0);
        Check(worksheet_autofilter(sheet_, 0, 0, static_cast<lxw_row_t>(table_.RowCount()), Col(table_.Columns().size() - 1)));
        Check(worksheet_repeat_rows(sheet_, 0, 0));
        worksheet_set_landscape(sheet_);
        worksheet_set_paper(sheet_, 1);  // Letter
        worksheet_fit_to_pages(sheet_, 1, 0);
        Check(worksheet_set_header(sheet_, PageHeader().c_str()));
    }

    // Left the title, right the subtitle, as much of both as a sheet's header takes. An ampersand begins a command there.
    std::string PageHeader() const {
        constexpr std::size_t kLongest = 110;
        std::string header;
        for (const auto& [place, text] : {std::pair{"&L", table_.Title}, std::pair{"&R", table_.Subtitle}}) {
            header += place;
            for (const char c : ToUtf8(Trim(text)).substr(0, kLongest)) header += c == '&' ? "&&" : std::string(1, c);
        }
        return header;
    }

    // A row below the filter's range: what it hides is not in the totals.
    void WriteTotals() {
        const auto last = static_cast<lxw_row_t>(table_.RowCount());
        const lxw_row_t row = last + kRowsBeforeTotals;
        lxw_format* label = workbook_add_format(file_.Book());
        format_set_bold(label);
        Check(worksheet_write_string(sheet_, row, 0, "Total of the rows shown", label));
        for (std::size_t i = 0; i < formats_.size(); ++i) {
            if (!table_.Columns()[i].Summed) continue;
            lxw_format* total = FormatOf(table_.Columns()[i]);
            format_set_bold(total);
            format_set_top(total, LXW_BORDER_THIN);
            CurrencyAmount sum;
            for (std::size_t r = 0; r < table_.RowCount(); ++r) {
                if (const auto* amount = std::get_if<CurrencyAmount>(&table_.Cell(r, i))) sum += *amount;
            }
            std::array<char, LXW_MAX_CELL_RANGE_LENGTH> range{};
            lxw_rowcol_to_range(range.data(), 1, Col(i), last, Col(i));
            const std::string formula = "=SUBTOTAL(109," + std::string(range.data()) + ")";  // sums what is not hidden
            Check(worksheet_write_formula_num(sheet_, row, Col(i), formula.c_str(), total, sum.ToDouble()));
        }
    }

    void WriteCell(std::size_t row, std::size_t column) {
        const DetailCell& cell = table_.Cell(row, column);
        const auto r = static_cast<lxw_row_t>(row + 1);
        lxw_format* format = formats_[column];
        if (const auto* text = std::get_if<std::string>(&cell)) {
            const std::string_view shown = RTrim(*text);
            if (!shown.empty())
                Check(worksheet_write_string(sheet_, r, Col(column), ToUtf8(AsSpreadsheetText(shown)).c_str(), format));
        } else if (const auto* date = std::get_if<Date>(&cell)) {
            if (date->IsNone()) return;
            if (date->Serial() >= kFirstCountedDay) {
                Check(worksheet_write_number(sheet_, r, Col(column), date->Serial(), format));
            } else {
                Check(worksheet_write_string(sheet_, r, Col(column), FormatShortDate(*date).c_str(), format));
            }
        } else if (const auto* number = std::get_if<std::int64_t>(&cell)) {
            Check(worksheet_write_number(sheet_, r, Col(column), static_cast<double>(*number), format));
        } else if (const auto* amount = std::get_if<CurrencyAmount>(&cell)) {
            Check(worksheet_write_number(sheet_, r, Col(column), amount->ToDouble(), format));
        }
    }

    static lxw_col_t Col(std::size_t column) { return static_cast<lxw_col_t>(column); }

    const DetailTable& table_;
    sheets::WorkbookFile file_;
    lxw_worksheet* sheet_ = nullptr;
    std::vector<lxw_format*> formats_;
};

}  // namespace

std::string DetailWorkbook(const DetailTable& table) {
    if (table.Columns().empty()) throw PlatformError(Failure::InvalidCall, "A workbook without columns cannot be written.");
    if (table.RowCount() + kRowsBeforeTotals >= LXW_ROW_MAX) {
        throw PlatformError(Failure::InvalidCall,
                            "There are more rows than a worksheet holds (1,048,573). Choose a .csv file instead.");
    }
    return Workbook(table).Write();
}

}  // namespace tallymar
