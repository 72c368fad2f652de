#include "batch/frmComputeOptions.h"

#include <array>

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/HintLine.h"
#include "platform/controls/NumberEdit.h"
#include "platform/controls/ScreenText.h"
#include "store/Books.h"

namespace tallymar {

namespace {

constexpr int kBookingMonthBook = 3;  // the month counts in the Bookkeeping book alone
constexpr int kLastMonth = 12;
const QString kAbove = QStringLiteral("above 40%");

QLabel* Heading(const QString& text) {
    auto* label = new QLabel(text);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

QLabel* Figure(const char* name, int book, const QString& column) {
    auto* label = Named(new QLabel(ToQString(InServiceTotals{}.InServiceText())), name, book);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    label->setMargin(3);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("000,000,000.00")) + 14);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleName(QStringLiteral("%1, %2").arg(column, ToQString(BookOf(book).ShortName)));
    return label;
}

}  // namespace

frmComputeOptions::frmComputeOptions(CompanySession& session, ADepre& engine, QWidget* parent)
    : frmBatchForm("frmComputeOptions", tr("Compute Options"), parent), session_(session), engine_(engine) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
    const QStringList heads = {tr("Compute"), tr("Use MQ"), tr("Current Year\nIn-Service Total"), tr("4th Qtr Total"),
                               tr("Percent")};
    for (int column = 0; column < heads.size(); ++column) {
        auto* head = new QLabel(heads[column]);
        head->setAlignment(column < 2 ? Qt::AlignLeft | Qt::AlignBottom : Qt::AlignRight | Qt::AlignBottom);
        grid->addWidget(head, 0, column);
    }
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        const QString caption = ToQString(BookOf(book).ShortName);
        chkCompute_[book] = Named(new QCheckBox(caption, this), "chkCompute", book);
        chkCompute_[book]->setChecked(true);
        chkCompute_[book]->setAccessibleName(tr("Compute %1").arg(caption));
        chkUseMQ_[book] = Named(new QCheckBox(this), "chkUseMQ", book);
        chkUseMQ_[book]->setAccessibleName(tr("Use mid-quarter for %1").arg(caption));
        lblInService_[book] = Figure("lblInService", book, tr("Current Year In-Service Total"));
        lbl4thQtr_[book] = Figure("lbl4thQtr", book, tr("4th Qtr Total"));
        lblPercent_[book] = Figure("lblPercent", book, tr("Percent"));
        grid->addWidget(chkCompute_[book], book, 0);
        grid->addWidget(chkUseMQ_[book], book, 1, Qt::AlignHCenter);
        grid->addWidget(lblInService_[book], book, 2);
        grid->addWidget(lbl4thQtr_[book], book, 3);
        grid->addWidget(lblPercent_[book], book, 4);
        lblAbove_[book] = Named(new HintLine(this), "lblAbove", book);
        lblAbove_[book]->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        lblAbove_[book]->setMinimumWidth(fontMetrics().horizontalAdvance(kAbove) * 2);
        grid->addWidget(lblAbove_[book], book, 5);
    }

    silgMonth_ = Named(new silgEdit(0, kLastMonth, this), "silgMonth");
    auto* month = new QLabel(tr("Which Month"));
    Join(month, silgMonth_);
    auto* monthRow = new QHBoxLayout;
    monthRow->setSpacing(10);
    monthRow->addWidget(month);
    monthRow->addWidget(silgMonth_);
    monthRow->addStretch(1);
    SetHint(silgMonth_, tr("Applies to Book Column ONLY"));

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addWidget(Heading(tr("Determine % of Assets Placed-In-Service in the 4th Quarter")));
    all->addWidget(Heading(tr("Compute Current Depreciation")));
    all->addLayout(grid);
    all->addLayout(monthRow);
    all->addLayout(MakeFoot(
        Named(new CSCmdBtn(tr("OK"), this), "cmdOK"), [this](Prompts& prompts) { Compute(prompts); }, tr("&Close"),
        kLastBook + 2));  // the summary may take two lines
    SetDoneCaption({});   // the totals are read, and OK may be pressed again

    connect(silgMonth_, &EntryEdit::Changed, this, Guarded([this] { TakeMonth(); }));
}

void frmComputeOptions::OnFieldFocus(QWidget* field) {
    if (field == silgMonth_) TakeMonth();
}

void frmComputeOptions::TakeMonth() {
    engine_.ComputeMonth = static_cast<std::int16_t>(silgMonth_->Value());
    if (engine_.ComputeMonth <= 0) return;
    for (int book = kFirstBook; book <= kLastBook; ++book) chkCompute_[book]->setChecked(book == kBookingMonthBook);
}

void frmComputeOptions::Compute(Prompts& prompts) {
    ComputeCurrentOptions options;
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        options.Compute[book] = chkCompute_[book]->isChecked();
        options.UseMidQuarter[book] = chkUseMQ_[book]->isChecked();
    }
    // A month that stayed from an earlier visit must not compute under a field that shows another.
    engine_.ComputeMonth = static_cast<std::int16_t>(silgMonth_->Value());
    ComputeCurrentResult result;
    try {
        ComputeCurrent(session_, engine_, options, prompts, result);
    } catch (...) {
        ShowResult(RemarksOn(result));
        throw;
    }
    std::vector<std::string> lines = RemarksOn(result);
    lines.insert(lines.begin(), SummaryOf(result));
    ShowResult(lines);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        if (options.Compute[book]) ShowTotals(book, result[book].Totals);
    }
}

void frmComputeOptions::ShowTotals(int book, const InServiceTotals& totals) {
    const bool above = totals.IsAboveFortyPercent();
    lblInService_[book]->setText(ToQString(totals.InServiceText()));
    lbl4thQtr_[book]->setText(ToQString(totals.FourthQuarterText()));
    QLabel* percent = lblPercent_[book];
    percent->setText(ToQString(totals.PercentText()));
    QFont font = percent->font();
    font.setBold(above);
    percent->setFont(font);
    percent->setAccessibleDescription(above ? tr("above 40%: see Use MQ") : QString());
    lblAbove_[book]->Show(above ? kAbove : QString(), HintLine::Mark::Warning);
}

}  // namespace tallymar
