#include "loans/LoanPages.h"

#include <array>

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::string_view kFont = "Courier New";
constexpr float kPoints = 10;
constexpr int kCharTwips = 120;  // of the font, 12 to the inch
constexpr int kLineTwips = 213;
constexpr int kLeftTwips = 9 * kCharTwips;
constexpr int kTopTwips = 600;
constexpr std::size_t kLineLength = 86;

// Lines of a page below its head: one a payment, three for the totals of a year.
constexpr int kPageLines = 54;
constexpr int kYearLines = 3;

constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// A figure ends at the right end of its tab column.
struct Tab {
    std::size_t Column;  // from 1
    std::size_t Width;
    std::string_view Picture;
};

constexpr Tab kBefore{16, 13, pictures::kBuildMoney};
constexpr Tab kPrincipal{30, 12, pictures::kScheduleMoney};
constexpr Tab kInterest{44, 12, pictures::kScheduleMoney};
constexpr Tab kTotalInterest{58, 13, pictures::kBuildMoney};
constexpr Tab kAfter{72, 13, pictures::kBuildMoney};
constexpr Tab kYearPrincipal{28, 14, pictures::kTotal};
constexpr Tab kYearInterest{42, 14, pictures::kTotal};

constexpr std::size_t kSecondHeadColumn = 44;

class Line {
 public:
    explicit Line(std::string_view text) : text_(text) {}

    // Two texts or figures never touch: what is too wide for its column pushes on to the right.
    Line& At(std::size_t column, std::string_view text) {
        text_.resize(std::max(column - 1, text_.size() + 1), ' ');
        text_ += text;
        return *this;
    }
    Line& PatPrint(const Tab& tab, CurrencyAmount amount) {
        const std::string figure = Format(amount, tab.Picture);
        const std::size_t end = tab.Column - 1 + tab.Width;
        return At(std::max(end, figure.size()) - figure.size() + 1, figure);
    }
    const std::string& Text() const { return text_; }

 private:
    std::string text_;
};

std::string DueText(const DueDate& due) {
    const auto twoDigits = [](int number) { return Format(static_cast<long long>(number % 100), "00"); };
    return std::string(kMonths.at(static_cast<std::size_t>(due.Month - 1))) + " " + twoDigits(due.Day) + " " +
           twoDigits(due.Year);
}

class SchedulePrinter {
 public:
    SchedulePrinter(const LoanSchedule& schedule, const LoanTerms& terms, std::string_view name, PageDocument& v)
        : schedule_(schedule), terms_(terms), name_(name), v_(v) {
        v_.FontName = kFont;
        v_.FontSize = kPoints;
        v_.Grid = {1440.0 / kCharTwips, 1440.0 / kLineTwips, kLeftTwips, kTopTwips};
    }

    void Print() {
        PrintHead();
        auto year = schedule_.Years.begin();
        for (const LoanPayment& payment : schedule_.Payments) {
            if (payment.Due.Year != year->Year) PrintYear(*year++);
            PrintPayment(payment);
        }
        if (year != schedule_.Years.end()) PrintYear(*year);
        PrintClosing();
    }

 private:
    void PrintHead() {
        row_ = 0;
        lines_ = 0;
        const bool additions = schedule_.IsAdditions;
        Put(additions ? std::string(33, ' ') + "FUTURE VALUE SCHEDULE" : std::string(30, ' ') + "LOAN AMORTIZATION SCHEDULE");
        Put({});
        Put(("For : " + name_).substr(0, kLineLength));
        const auto pair = [this](const std::string& first, const std::string& second) {
            Put(Line(first).At(kSecondHeadColumn, second).Text());
        };
        pair("Loan = " + Format(terms_.Amount, pictures::kBuildMoney),
             "Payment = " + Format(terms_.Payment, pictures::kBuildMoney));
        pair("Days to first payment = " + std::to_string(terms_.DaysToFirst),
             "Rate = " + Format(terms_.Rate, pictures::kScheduleRate) + " Pct");
        pair("Periods = " + Format(static_cast<long long>(terms_.Periods), pictures::kSchedulePeriods),
             "Periods / year = " + std::to_string(terms_.PerYear));
        Put({});
        Put(std::string(additions ? "       Date        Balance     Add to   " : "       Date        Balance         From ") +
            "          To           Total       Balance");
        Put("No.     Due      Before Pmt     Principal      Interest      Interest     After Pmt");
        Put("---   -------   ------------    ---------     ---------     ----------   -----------");
    }

    void PrintPayment(const LoanPayment& payment) {
        BreakPage();
        Put(Line(Format(static_cast<long long>(payment.Number), pictures::kScheduleNumber) + DueText(payment.Due))
                .PatPrint(kBefore, payment.Before)
                .PatPrint(kPrincipal, payment.Principal)
                .PatPrint(kInterest, payment.Interest)
                .PatPrint(kTotalInterest, payment.TotalInterest)
                .PatPrint(kAfter, payment.After)
                .Text());
        ++lines_;
    }

    void PrintYear(const LoanYear& year) {
        BreakPage();
        Put("                                ---------     ---------");
        Put(Line((schedule_.IsAdditions ? "Total Added in " : "Totals Paid in ") +
                 Format(static_cast<long long>(year.Year), pictures::kScheduleYear) + " = ")
                .PatPrint(kYearPrincipal, year.Principal)
                .PatPrint(kYearInterest, year.Interest)
                .Text());
        Put({});
        lines_ += kYearLines;
    }

    void PrintClosing() {
        if (schedule_.IsAdditions) {
            Put("Total Interest earned = " + Format(schedule_.TotalInterest(), pictures::kBuildMoney));
        } else if (!schedule_.Balance().IsZero()) {
            // COMPAT: after a balloon the word is doubled.
            Put(std::string(schedule_.HasBalloon ? "Final payment payment of " : "Final payment of ") +
                Format(schedule_.Balance(), pictures::kBuildMoney) + " required to zero balance of loan.");
        }
    }

    void BreakPage() {
        if (lines_ <= kPageLines) return;
        v_.NewPage();
        PrintHead();
    }

    void Put(std::string_view line) {
        v_.CurrentX = kLeftTwips;
        v_.CurrentY = kTopTwips + row_ * kLineTwips;
        v_.PrintText(line);
        ++row_;
    }

    const LoanSchedule& schedule_;
    const LoanTerms& terms_;
    std::string name_;
    PageDocument& v_;
    int row_ = 0;
    int lines_ = 0;
};

void FillDetails(const LoanSchedule& schedule, DetailTable& details) {
    details.Title = schedule.IsAdditions ? "Future Value Schedule" : "Loan Amortization Schedule";
    details.AddColumn("No", DetailKind::Integer);
    details.AddColumn("Due", DetailKind::Date);
    for (const char* heading : {"Before", "Principal", "Interest", "TotalInterest", "After"}) {
        details.AddColumn(heading, DetailKind::Money);
    }
    for (const LoanPayment& payment : schedule.Payments) {
        details.AddRow();
        details.Add(payment.Number);
        details.Add(payment.Due.AsDate());
        for (const CurrencyAmount amount :
             {payment.Before, payment.Reduction(), payment.Interest, payment.TotalInterest, payment.After}) {
            details.Add(amount);
        }
    }
}

}  // namespace

void PrintSchedule(const LoanSchedule& schedule, const LoanTerms& terms, std::string_view name, PageDocument& v,
                   DetailTable& details) {
    FillDetails(schedule, details);
    v.Title = details.Title;
    if (const std::string_view whose = Trim(name); !whose.empty()) v.Title += " - " + std::string(whose);
    SchedulePrinter(schedule, terms, name, v).Print();
}

std::shared_ptr<PrintedDocument> PrintLoan(Loan& loan, Prompts& prompts) {
    if (loan.Terms().Amount.IsZero()) {
        prompts.Message("Nothing to print", "Printer Error", MessageKind::Error);
        return nullptr;
    }
    if (!prompts.AskYesNo("Print the schedule of this loan?", "Print Mortgage/Loan Amortization Schedule")) return nullptr;
    Loan printed = loan;
    if (Trim(printed.Text(LoanBox::Payment)).empty()) {
        printed.Solve();
        if (!printed.Note().empty()) throw PlatformError(Failure::InvalidCall, std::string(printed.Note()));
    }
    auto document = std::make_shared<PrintedDocument>(PrintedDocument{PageDocument(kLetterPortrait), DetailTable()});
    PrintSchedule(printed.Schedule(), printed.Terms(), printed.Text(LoanBox::Name), document->Pages, document->Details);
    loan = std::move(printed);
    return document;
}

}  // namespace tallymar
