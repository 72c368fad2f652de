#include "reports/ColumnReport.h"

#include <string>

#include "reports/Projection.h"
#include "reports/ReportTable.h"
#include "reports/YearClosing.h"
#include "store/AssetPass.h"
#include "store/Books.h"
#include "store/Disposal.h"
#include "store/Helpers.h"

namespace tallymar {

namespace {

constexpr float kLabelColumn = 9;     // of labels, notes and second descriptions
constexpr int kGroupLabelColumn = 2;  // the column whose place a group's label takes
constexpr float kLeftColumn = 1;

PageHead HeadOf(ReportRun& run) {
    const ReportOptions& options = run.Filter.Options;
    return {.ReportDate = options.ReportDate,
            .YearEnd = run.Filter.YearEnd,
            .Company = run.Session.CompanyName(),
            .ReportName = ReportCaption(options.ReportNumber, options.Book),
            .Book = std::string(BookOf(options.Book).ShortName),
            .FilterWords = std::string(InfoOfReport(options.ReportNumber).FilterWords),
            .FilterFrom = run.Filter.FilterFrom,
            .FilterTo = run.Filter.FilterTo,
            .Division = options.Division,
            .Department = options.Department};
}

std::string IndexOf(const ReportOptions& options) {
    const std::string index(InfoOf(options.Sequence).Index);
    return options.Sequence == ReportSequence::MethodLife ? index + std::to_string(options.Book) : index;
}

class ColumnReport {
 public:
    ColumnReport(ReportRun& run, const ReportShape& shape)
        : run_(run),
          options_(run.Filter.Options),
          sequence_(InfoOf(options_.Sequence)),
          shape_(shape),
          writer_(run.V, HeadOf(run), std::string(sequence_.SubtotalPrefix), run.Details),
          source_{.Asset = asset_,
                  .Book = options_.Book,
                  .IdBook = shape.IdentifiedByFederal ? kFirstBook : options_.Book,
                  .Include179 = options_.Include179,
                  .Now = run.Now,
                  .Writer = writer_} {}

    void Print() {
        DeclareColumns();
        writer_.DetailsHaveSecondLine = options_.PrintDescrip2;
        writer_.PrintColumnHeadings();
        PrintAssets();
        if (shape_.Block == SubtotalBlock::Short) {
            PrintShortClosing();
        } else {
            PrintClosing();
        }
        if (shape_.MarkNotes) PrintMarkNotes();
        PrintWarning();
    }

 private:
    // The ranges of summed columns that take turns in the same places.
    enum Range { kGross = 0, kDisposed = 1, kNet = 2 };

    bool HasShadows() const { return shape_.Block != SubtotalBlock::Short; }
    int Amounts() const { return shape_.LastAmount - shape_.FirstAmount + 1; }

    void DeclareColumns() {
        for (const ColumnTable table : shape_.Tables) {
            for (const ColumnRow& row : table) {
                writer_.ColumnAdd(row.Index, row.Start, row.Width, row.Just, row.Sum, row.Fmt,
                                  ExpandHeading(row.Head1, run_.Filter.YearEnd, options_.Book),
                                  ExpandHeading(row.Head2, run_.Filter.YearEnd, options_.Book));
                values_.at(static_cast<std::size_t>(row.Index)) = row.Value;
            }
        }
        if (!HasShadows()) return;
        for (const Range range : {kDisposed, kNet}) {
            for (int index = shape_.FirstAmount; index <= shape_.LastAmount; ++index) {
                const ReportColumn& seen = writer_.Columns(index);
                writer_.ColumnAdd(index + range * Amounts(), seen.Start, seen.Width, Justify::Shadow, true, seen.Fmt, "", "");
            }
        }
    }

    void PrintAssets() {
        AssetPass(run_.Session, run_.Asking, IndexOf(options_)).ForEach(asset_, [this] { PrintAsset(); });
    }

    void PrintAsset() {
        source_.IsDisposed = CheckDisposed(asset_);
        if (shape_.Considers != nullptr && !shape_.Considers(source_)) return;
        if (!run_.Filter.SelectFilter(asset_, shape_.Filter)) return;
        source_.Years = YearsAndMonths(asset_.InService, run_.Filter.YearEnd).Years;
        if (shape_.Lists != nullptr && !shape_.Lists(source_)) return;

        if (sequence_.SubtotalsOn && writer_.CreateSubTotals(SubtotalKey(asset_, options_, run_.Filter.YearEnd))) {
            PrintSubtotals(shape_.LessDisposed);
        }
        if (shape_.Projects) Compute4Years(run_, asset_, source_.Projected);
        FillCells();
        if (source_.Years == 1) sum179_ += asset_.Section179[options_.Book];
        writer_.PrintColumnDetails();
        PrintSecondLine();
        if (run_.Closing != nullptr) run_.Closing->Post(asset_);
    }

    void FillCells() {
        for (std::size_t index = 1; index < values_.size(); ++index) {
            if (values_[index] != nullptr) writer_.Columns(static_cast<int>(index)).Value = values_[index](source_);
        }
        if (!HasShadows()) return;
        for (int index = shape_.FirstAmount; index <= shape_.LastAmount; ++index) {
            const CurrencyAmount gross = source_.Amount(index);
            const CurrencyAmount disposed = source_.IsDisposed ? -gross : CurrencyAmount();
            writer_.Columns(index + kDisposed * Amounts()).Value = disposed;
            writer_.Columns(index + kNet * Amounts()).Value = gross + disposed;
        }
    }

    void PrintSecondLine() {
        if (!options_.PrintDescrip2 && !options_.DoubleSpace) return;
        if (shape_.SecondLineByDateSold && !run_.Filter.SelectFilter(asset_, FilterMode::DateSold)) return;
        if (options_.PrintDescrip2) {
            Label(kLabelColumn, asset_.Descrip2);
            writer_.AddDetailSecondLine(asset_.Descrip2);
        }
        writer_.ReportRow += 1;
    }

    void Label(float column, std::string_view text) { writer_.VSendLJ(writer_.ReportRow, column, text); }

    void Show(Range shown) {
        for (const Range range : {kGross, kDisposed, kNet}) {
            for (int index = shape_.FirstAmount; index <= shape_.LastAmount; ++index) {
                writer_.Columns(index + range * Amounts()).Just = range == shown ? Justify::Right : Justify::Shadow;
            }
        }
    }

    void PrintSubtotals(std::string_view lessDisposed) {
        writer_.PrintColumnLines();
        if (HasShadows()) {
            const bool labelled = shape_.Block == SubtotalBlock::ThreePasses;
            if (labelled) Label(kLabelColumn, "Subtotal");
            writer_.PrintColumnSubtotals(0, false);
            Show(kDisposed);
            if (labelled) Label(kLabelColumn, lessDisposed);
            writer_.PrintColumnSubtotals(0, false);
            Show(kNet);
            writer_.PrintColumnLines();
        }
        writer_.PrintColumnSubtotals(kGroupLabelColumn, true);
        writer_.ReportRow += 1;
        if (HasShadows()) Show(kGross);
    }

    void PrintLastSubtotals() {
        if (sequence_.SubtotalsOn) PrintSubtotals(kLessRemoved);
    }

    void PrintClosing() {
        PrintLastSubtotals();
        writer_.ReportRow += 1;
        writer_.PrintColumnLines();
        Label(kLabelColumn, "Subtotal");
        writer_.PrintColumnTotals();
        Show(kDisposed);
        Label(kLabelColumn, kLessRemoved);
        writer_.PrintColumnTotals();
        Show(kNet);
        writer_.PrintColumnLines();
        Label(shape_.TotalLabelColumn, kReportTotal);
        writer_.PrintColumnTotals();
    }

    void PrintShortClosing() {
        if (shape_.Gap == ClosingGap::BeforeLastGroup) writer_.ReportRow += 1;
        PrintLastSubtotals();
        if (shape_.Gap == ClosingGap::AfterLastGroup) writer_.ReportRow += 1;
        writer_.PrintColumnLines();
        Label(shape_.TotalLabelColumn, kReportTotal);
        writer_.PrintColumnTotals();
    }

    void PrintMarkNotes() {
        if (!source_.HasAdditional && !source_.HasExpense) return;
        writer_.ReportRow += 1;
        Label(kLeftColumn, "Note:");
        Label(kLabelColumn, "(A) Asset contains Additional 1st year depreciation");
        writer_.ReportRow += 1;
        Label(kLabelColumn, "(E) Asset contains all or some 179 Expense");
    }

    CurrencyAmount ExpenseOf(const WarningRow& row) const {
        return row.Column == 0 ? sum179_ : writer_.Columns(row.Column).Total;
    }

    void Warn(const std::string& text) {
        writer_.ReportRow += 1;
        Label(kLeftColumn, text + "\r\n");
    }

    void PrintWarning() {
        if (run_.LimitsByLaw != nullptr) return PrintWarningByLaw(*run_.LimitsByLaw);
        const int year = run_.Filter.YearEnd.Year();
        for (const WarningRow& row : shape_.Warnings) {
            if (year < row.FirstYear || year > row.LastYear || ExpenseOf(row) <= Units(row.Limit)) continue;
            return Warn(WarningText(row.Limit));
        }
    }

    // One limit for the year, held against the year's expense: that of the table's first row.
    void PrintWarningByLaw(const Law& law) {
        if (shape_.Warnings.empty()) return;
        const CurrencyAmount expense = ExpenseOf(shape_.Warnings.front());
        const int year = TaxYearOf(run_.Filter.YearEnd);
        const Section179Limits* limits = law.Section179(year);
        if (limits == nullptr) {
            if (expense > CurrencyAmount()) Warn(UnknownLimitText(year));
        } else if (expense > Units(limits->Limit)) {
            Warn(WarningText(limits->Limit));
        }
    }

    static constexpr std::string_view kLessRemoved = "Less Sold/Removed";
    static constexpr std::string_view kReportTotal = "Report Total";

    ReportRun& run_;
    const ReportOptions& options_;
    const SequenceInfo& sequence_;
    const ReportShape& shape_;
    AssetRecord asset_;
    ReportWriter writer_;
    CellSource source_;
    std::array<Cell (*)(CellSource&), ReportWriter::kColumns + 1> values_{};  // by column index
    CurrencyAmount sum179_;                                                   // expense of the assets in their first year
};

}  // namespace

void PrintColumnReport(ReportRun& run, const ReportShape& shape) {
    ColumnReport(run, shape).Print();
}

}  // namespace tallymar
