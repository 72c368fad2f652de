#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/page/DetailTable.h"
#include "platform/page/PageDocument.h"
#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"

namespace tallymar {

// What a cell can hold. A text prints as it stands whatever the column's picture, so a blank can take a number's place.
using Cell = std::variant<std::string, Date, std::int16_t, CurrencyAmount>;

// How a column prints. A Shadow prints nothing, neither heading nor cell nor rule, but still accumulates when it is summed:
// reports lay shadows over visible columns and exchange the two to print another set of sums in the same places.
enum class Justify : char { None = ' ', Left = 'L', Right = 'R', Shadow = 'X' };

// One cell position and its accumulators. Places are grid columns.
struct ReportColumn {
    int Start = 0;  // the left edge of a left column, the right edge of a right one
    int Width = 0;
    Cell Value;  // of the current detail line
    CurrencyAmount SubTotal;
    CurrencyAmount Total;
    std::string Head1;
    std::string Head2;
    Justify Just = Justify::None;
    std::string Fmt;
    bool Sum = false;

    bool Prints() const { return Just == Justify::Left || Just == Justify::Right; }
};

// What stands in the head of every page.
struct PageHead {
    Date ReportDate;
    Date YearEnd;
    std::string Company;
    std::string ReportName;  // printed with the blanks at both its ends
    std::string Book;
    std::string FilterWords;  // "For Assets Sold "
    Date FilterFrom;          // both 0: all dates
    Date FilterTo;
    std::string Division;  // empty: no line for it
    std::string Department;
};

// twips = position x 1440 / perInch, ties to even. Failure::Overflow outside 16 bits.
std::int16_t GridToTwips(float position, float perInch);

// Prints lines of cells on a fixed character grid of a landscape letter page, adds them up and breaks pages. It knows nothing of
// assets. Sums that overflow, and a grid place beyond 16 bits of twips, fail with Failure::Overflow.
class ReportWriter {
 public:
    static constexpr float kCharsPerInch = 17.0F;
    static constexpr float kLinesPerInch = 8.0F;
    static constexpr std::int16_t kLinesPerPage = 60;
    static constexpr int kColumns = 30;

    // subtotalPrefix: what the label of a group begins with ("Account "). details, when given, takes the detail lines as typed
    // cells beside the drawing; it must outlive the writer, as the canvas must.
    ReportWriter(PageDocument& canvas, PageHead head, std::string subtotalPrefix, DetailTable* details = nullptr);

    // Whether the table of details has a last column for second description lines; set before the first page's headings.
    bool DetailsHaveSecondLine = false;

    float ReportRow = 0.0F;
    std::string CurrKey;
    std::string PrevKey;

    // Columns are numbered from 1 to kColumns; another number fails with Failure::SubscriptOutOfRange.
    ReportColumn& Columns(int index);
    const ReportColumn& Columns(int index) const;
    void ColumnAdd(int index, int start, int width, Justify justify, bool sum, std::string_view fmt, std::string_view head1,
                   std::string_view head2);

    void VSendLJ(float row, float column, std::string_view text);
    void VSendRJ(float row, float column, std::string_view text);
    void VSendCenter(float row, float column, std::string_view text);  // on the right edge of the column
    void VSingleLine(float row, float fromColumn, float toColumn);

    void PrintReportHeadings();
    void PrintColumnHeadings();
    // One line of the current values; the only place where a page breaks.
    void PrintColumnDetails();
    // What stands under the line just printed, for the table of details.
    void AddDetailSecondLine(std::string_view text);
    // A rule over every visible summed column. It takes no row.
    void PrintColumnLines();
    // The subtotals of the visible summed columns, which start anew; shadows keep theirs. labelColumn 0: without a label.
    void PrintColumnSubtotals(int labelColumn, bool moveKey);
    void PrintColumnTotals();
    // Sets CurrKey; true when it differs from PrevKey. The first call of a report only takes its key.
    bool CreateSubTotals(std::string key);

 private:
    void PrintHeadingLine(std::string ReportColumn::*head);
    void PrintRule(const ReportColumn& column);
    void DeclareDetails();
    void AddDetail(const ReportColumn& column, std::string_view printed);
    void PrintAmount(const ReportColumn& column, CurrencyAmount amount);
    void Send(const ReportColumn& column, std::string_view text);

    PageDocument& v_;
    PageHead head_;
    std::string subtotalPrefix_;
    DetailTable* details_;
    bool hasKey_ = false;
    bool detailsDeclared_ = false;
    std::array<ReportColumn, kColumns> columns_;
};

}  // namespace tallymar
