#include "reports/ReportWriter.h"

#include <utility>

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr float kTextSize = 7.5F;
constexpr float kTitleSize = 12.0F;
constexpr int kRuleWidth = 2;
constexpr int kMargin = 360;  // twips, a quarter of an inch: no office printer reaches closer to the edges

// Places of the page head.
constexpr float kHeadLeft = 1;
constexpr float kHeadLeftValue = 23;
constexpr float kHeadCenter = 88;
constexpr float kHeadRight = 170;
constexpr float kSubtitleDrop = 0.5F;  // the report's name stands half a row lower than its row

// A detail line may stand on this row; below it the page is full.
constexpr std::int16_t kLastDetailRow = ReportWriter::kLinesPerPage - 4;

std::string FormatCell(const Cell& value, std::string_view picture) {
    struct Formatter {
        std::string_view Picture;
        std::string operator()(const std::string& text) const { return text; }
        std::string operator()(Date date) const { return Format(date, Picture); }
        std::string operator()(std::int16_t number) const { return Format(static_cast<long long>(number), Picture); }
        std::string operator()(CurrencyAmount amount) const { return Format(amount, Picture); }
    };
    return std::visit(Formatter{picture}, value);
}

// What a spreadsheet is to take a column for, and its picture there.
struct DetailFormat {
    DetailKind Kind;
    std::string_view Picture;
};

DetailFormat DetailFormatOf(const ReportColumn& column) {
    if (column.Fmt.empty() || column.Fmt == pictures::kText) return {DetailKind::Text, ""};
    if (column.Fmt == pictures::kReportDate) return {DetailKind::Date, ""};
    if (column.Fmt == pictures::kDecliningPercent || column.Fmt == pictures::kDecliningPercentNarrow)
        return {DetailKind::Integer, ""};
    if (column.Fmt == pictures::kUsePercent) return {DetailKind::Money, "0"};
    if (column.Fmt == pictures::kReportMoney || column.Fmt == pictures::kReportMoneyOrBlank) return {DetailKind::Money, ""};
    return {DetailKind::Money, "0.0"};
}

CurrencyAmount AmountOf(const Cell& value) {
    if (const auto* amount = std::get_if<CurrencyAmount>(&value)) return *amount;
    if (const auto* number = std::get_if<std::int16_t>(&value)) return CurrencyAmount::FromInteger(*number);
    throw PlatformError(Failure::TypeMismatch);
}

}  // namespace

std::int16_t GridToTwips(float position, float perInch) {
    return ToInteger(static_cast<double>(position) * 1440.0 / static_cast<double>(perInch));
}

ReportWriter::ReportWriter(PageDocument& canvas, PageHead head, std::string subtotalPrefix, DetailTable* details)
    : v_(canvas), head_(std::move(head)), subtotalPrefix_(std::move(subtotalPrefix)), details_(details) {
    v_.FontName = "Arial";
    v_.FontSize = kTextSize;
    v_.Margin = kMargin;
}

ReportColumn& ReportWriter::Columns(int index) {
    if (index < 1 || index > kColumns) throw PlatformError(Failure::SubscriptOutOfRange);
    return columns_[static_cast<std::size_t>(index - 1)];
}

const ReportColumn& ReportWriter::Columns(int index) const {
    return const_cast<ReportWriter*>(this)->Columns(index);
}

void ReportWriter::ColumnAdd(int index, int start, int width, Justify justify, bool sum, std::string_view fmt,
                             std::string_view head1, std::string_view head2) {
    ReportColumn& column = Columns(index);
    column.Start = start;
    column.Width = width;
    column.Just = justify;
    column.Sum = sum;
    column.Fmt = fmt;
    column.Head1 = head1;
    column.Head2 = head2;
}

void ReportWriter::VSendLJ(float row, float column, std::string_view text) {
    v_.CurrentX = GridToTwips(column, kCharsPerInch);
    v_.CurrentY = GridToTwips(row, kLinesPerInch);
    v_.PrintText(text);
}

void ReportWriter::VSendRJ(float row, float column, std::string_view text) {
    v_.CurrentX = ToInteger(static_cast<double>(GridToTwips(column + 1, kCharsPerInch) - ToInteger(v_.TextWidth(text))));
    v_.CurrentY = GridToTwips(row, kLinesPerInch);
    v_.PrintText(text);
}

void ReportWriter::VSendCenter(float row, float column, std::string_view text) {
    v_.CurrentX = ToLong(GridToTwips(column + 1, kCharsPerInch) - v_.TextWidth(text) / 2.0);
    v_.CurrentY = GridToTwips(row, kLinesPerInch);
    v_.PrintText(text);
}

void ReportWriter::VSingleLine(float row, float fromColumn, float toColumn) {
    v_.DrawWidth = kRuleWidth;
    const int y = GridToTwips(row, kLinesPerInch);
    v_.DrawLine(GridToTwips(fromColumn, kCharsPerInch), y, GridToTwips(toColumn + 1, kCharsPerInch), y);
}

void ReportWriter::PrintReportHeadings() {
    ReportRow = 1.0F;
    v_.FontSize = kTextSize;
    VSendLJ(ReportRow, kHeadLeft, "Report date:");
    VSendRJ(ReportRow, kHeadLeftValue, head_.ReportDate.IsNone() ? "" : Format(head_.ReportDate, pictures::kReportDate));
    v_.FontSize = kTitleSize;
    VSendCenter(ReportRow, kHeadCenter, head_.Company);
    v_.FontSize = kTextSize;
    VSendRJ(ReportRow, kHeadRight, "Page " + std::to_string(v_.Page()));

    ReportRow += 1;
    VSendLJ(ReportRow, kHeadLeft, "Year end:");
    VSendRJ(ReportRow, kHeadLeftValue, Format(head_.YearEnd, pictures::kReportDate));
    v_.FontSize = kTitleSize;
    VSendCenter(ReportRow + kSubtitleDrop, kHeadCenter, head_.ReportName);
    v_.FontSize = kTextSize;

    ReportRow += 2;
    VSendCenter(ReportRow, kHeadCenter, "Depreciation Book:  " + head_.Book);

    ReportRow += 1;
    if (head_.FilterFrom.IsNone() && head_.FilterTo.IsNone()) {
        VSendCenter(ReportRow, kHeadCenter, head_.FilterWords + "- All Dates");
    } else {
        VSendCenter(ReportRow, kHeadCenter,
                    head_.FilterWords + "From " + Format(head_.FilterFrom, pictures::kFilterDate) + " To " +
                        Format(head_.FilterTo, pictures::kFilterDate));
    }
    if (!head_.Division.empty()) {
        ReportRow += 1;
        VSendCenter(ReportRow, kHeadCenter, "For Division: " + head_.Division);
    }
    if (!head_.Department.empty()) {
        ReportRow += 1;
        VSendCenter(ReportRow, kHeadCenter, "For Department: " + head_.Department);
    }
    ReportRow += 1;
}

void ReportWriter::PrintColumnHeadings() {
    DeclareDetails();
    PrintReportHeadings();
    ReportRow += 1;
    PrintHeadingLine(&ReportColumn::Head1);
    PrintHeadingLine(&ReportColumn::Head2);
    for (const ReportColumn& column : columns_) {
        if (column.Prints()) PrintRule(column);
    }
}

void ReportWriter::DeclareDetails() {
    if (details_ == nullptr || detailsDeclared_) return;
    detailsDeclared_ = true;
    details_->Title = std::string(Trim(head_.ReportName)) + " - " + head_.Company;
    details_->Subtitle = head_.Book + ", year end " + Format(head_.YearEnd, pictures::kReportDate);
    if (!head_.ReportDate.IsNone()) details_->Subtitle += ", report date " + Format(head_.ReportDate, pictures::kReportDate);
    for (const ReportColumn& column : columns_) {
        if (!column.Prints()) continue;
        const std::string both = column.Head1 + " " + column.Head2;
        const std::string_view heading = Trim(both);
        const DetailFormat format = DetailFormatOf(column);
        // Only a column of marks has no heading on paper; a spreadsheet cannot filter by one without.
        details_->AddColumn(heading.empty() ? "Mark" : heading, format.Kind, format.Picture, column.Sum);
    }
    if (DetailsHaveSecondLine) details_->AddColumn("2nd Description", DetailKind::Text);
}

void ReportWriter::AddDetailSecondLine(std::string_view text) {
    if (details_ != nullptr && DetailsHaveSecondLine) details_->Add(RTrim(text));
}

// What prints as a blank is one in a spreadsheet too.
void ReportWriter::AddDetail(const ReportColumn& column, std::string_view printed) {
    if (Trim(printed).empty()) {
        details_->AddEmpty();
        return;
    }
    struct Adder {
        DetailTable& Details;
        void operator()(const std::string& text) const { Details.Add(RTrim(text)); }
        void operator()(Date date) const { Details.Add(date); }
        void operator()(std::int16_t number) const { Details.Add(std::int64_t{number}); }
        void operator()(CurrencyAmount amount) const { Details.Add(amount); }
    };
    std::visit(Adder{*details_}, column.Value);
}

void ReportWriter::PrintHeadingLine(std::string ReportColumn::*head) {
    bool used = false;
    for (const ReportColumn& column : columns_) used = used || (column.Prints() && !(column.*head).empty());
    if (!used) return;
    for (const ReportColumn& column : columns_) {
        if (!column.Prints()) continue;
        const float half = static_cast<float>(column.Width) / 2.0F;
        const float start = static_cast<float>(column.Start);
        VSendCenter(ReportRow, column.Just == Justify::Right ? start - half : start - 1 + half, column.*head);
    }
    ReportRow += 1;
}

void ReportWriter::PrintRule(const ReportColumn& column) {
    const int from = column.Just == Justify::Right ? column.Start - column.Width + 1 : column.Start;
    VSingleLine(ReportRow, static_cast<float>(from), static_cast<float>(from + column.Width - 1));
}

void ReportWriter::Send(const ReportColumn& column, std::string_view text) {
    if (column.Just == Justify::Left) {
        VSendLJ(ReportRow, static_cast<float>(column.Start), text);
    } else {
        VSendRJ(ReportRow, static_cast<float>(column.Start), text);
    }
}

void ReportWriter::PrintColumnDetails() {
    if (ReportRow > kLastDetailRow) {
        v_.NewPage();
        PrintColumnHeadings();
    }
    if (details_ != nullptr) details_->AddRow();
    for (ReportColumn& column : columns_) {
        if (column.Prints()) {
            const std::string whole = FormatCell(column.Value, column.Fmt);
            if (details_ != nullptr) AddDetail(column, whole);
            std::string_view text = whole;
            const int width = GridToTwips(static_cast<float>(column.Width), kCharsPerInch);
            while (!text.empty() && v_.TextWidth(text) > width) {
                if (column.Just == Justify::Left) {
                    text.remove_suffix(1);
                } else {
                    text.remove_prefix(1);
                }
            }
            Send(column, text);
        }
        if (column.Sum) {
            const CurrencyAmount amount = AmountOf(column.Value);
            column.SubTotal += amount;
            column.Total += amount;
        }
    }
    ReportRow += 1;
}

void ReportWriter::PrintColumnLines() {
    for (const ReportColumn& column : columns_) {
        if (column.Sum && column.Prints()) PrintRule(column);
    }
}

void ReportWriter::PrintAmount(const ReportColumn& column, CurrencyAmount amount) {
    Send(column, Format(amount, column.Fmt));
}

void ReportWriter::PrintColumnSubtotals(int labelColumn, bool moveKey) {
    if (labelColumn >= 1) {
        ReportColumn& column = Columns(labelColumn);
        std::string label(LTrim(subtotalPrefix_ + PrevKey));
        VSendLJ(ReportRow, static_cast<float>(column.Start - 1), label);
        column.Value = std::move(label);
    }
    for (ReportColumn& column : columns_) {
        if (!column.Sum || !column.Prints()) continue;
        PrintAmount(column, column.SubTotal);
        column.SubTotal = CurrencyAmount();
    }
    ReportRow += 1;
    if (moveKey) PrevKey = CurrKey;
}

void ReportWriter::PrintColumnTotals() {
    for (const ReportColumn& column : columns_) {
        if (column.Sum && column.Prints()) PrintAmount(column, column.Total);
    }
    ReportRow += 1;
}

bool ReportWriter::CreateSubTotals(std::string key) {
    CurrKey = std::move(key);
    if (!hasKey_) {
        hasKey_ = true;
        PrevKey = CurrKey;
    }
    return CurrKey != PrevKey;
}

}  // namespace tallymar
