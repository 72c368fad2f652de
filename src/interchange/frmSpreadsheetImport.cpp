#include "interchange/frmSpreadsheetImport.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStringListModel>
#include <QVBoxLayout>

#include "interchange/frmExchangeParts.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSCombo.h"
#include "platform/controls/CSOptList.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/runtime/PlatformError.h"
#include "store/AssetPlace.h"

namespace tallymar {

namespace {

constexpr std::size_t kPreviewRows = 3;
constexpr int kHeadingLetters = 22;
constexpr int kSampleLetters = 16;
constexpr int kTitleBar = 40;  // pixels that a window manager may take of the screen's height
constexpr int kAddNew = 1;     // its place in optlDuplicate

// As much of the text as there is room for; all of it in its tip.
QLabel* MakeText(const QString& text, int letters, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    const int width = label->fontMetrics().averageCharWidth() * letters;
    const QString line = text.simplified();
    label->setText(label->fontMetrics().elidedText(line, Qt::ElideRight, width));
    if (label->text() != line) label->setToolTip(text.toHtmlEscaped());
    label->setMinimumWidth(width);
    return label;
}

QLabel* MakeTitle(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

}  // namespace

frmSpreadsheetImport::frmSpreadsheetImport(CompanySession& session, const std::filesystem::path& file, bool addNew,
                                           QWidget* parent)
    : frmExchangeForm("frmSpreadsheetImport", tr("Import Spreadsheet or CSV"), session, parent),
      file_(file),
      preview_(TablePreview::Read(file, kPreviewRows)),
      headings_(session.AssetsRecordset().Definition()),
      remembered_(session.Paths().Folder()) {
    auto* lblFile = Named(new QLabel(PathToQString(file.filename()), this), "lblFile");
    lblFile->setTextFormat(Qt::PlainText);
    area_ = new QScrollArea(this);
    area_->setWidget(MakePairs());
    area_->setWidgetResizable(true);
    area_->setFocusPolicy(Qt::NoFocus);
    optlDuplicate_ = new CSOptList("optlDuplicate", tr("Duplicate Record Import"), {tr("Update Existing"), tr("Add New")}, this);
    optlDuplicate_->SetHints(tr("What becomes of a record whose asset number is there already"));
    optlDuplicate_->SetIndex(addNew ? kAddNew : 0);
    counts_ = new frmCounts(tr("Import Statistics"), CountLines(ImportCounts()), this);
    auto* cmdGuess = Named(new CSCmdBtn(tr("&Guess"), this), "cmdGuess");
    SetHint(cmdGuess, tr("Pair the headings with the fields that their words suggest"));
    auto* cmdOK = Named(new CSCmdBtn(tr("Check and &Import"), this), "cmdOK");
    SetHint(cmdOK, tr("List what would fail or be changed, and then import the file"));

    auto* choices = new QHBoxLayout;
    choices->setSpacing(12);
    choices->addWidget(optlDuplicate_);
    choices->addWidget(counts_);
    choices->addStretch(1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addWidget(lblFile);
    all->addWidget(area_, 1);
    all->addLayout(choices);
    all->addLayout(MakeFoot({cmdGuess, cmdOK}, tr("Cancel")));
    Fit();
    Show(remembered_.For(preview_.Headings, headings_));

    const auto showCounts = [this](const ImportCounts& counts) { counts_->Show(CountLines(counts)); };
    SetImportWays({.AskFile = [this](Prompts&) { return std::optional(file_); },
                   .Import = [this](const std::filesystem::path& path, ImportEnding ending, Prompts&,
                                    const ImportProgress& progress) -> std::optional<ImportCounts> {
                       const AssetPlace place(Session().AssetsRecordset());
                       return LoadAssets(Session().Database(), Session().AssetsRecordset(), path, Options(ending), progress);
                   },
                   .ShowCounts = showCounts,
                   .ShowFile = [showCounts](const std::filesystem::path&) { showCounts({}); },
                   .ShowDone =
                       [this, showCounts](const ImportCounts& counts) {
                           showCounts(counts);
                           ShowResult(tr("The file has been imported"));
                       },
                   .ShowCancelled = [] {}});
    connect(cmdGuess, &QPushButton::clicked, this, Guarded([this] { Show(HeadingPairs::Guess(preview_.Headings, headings_)); }));
    connect(cmdOK, &QPushButton::clicked, this, Guarded([this] { CheckAndImport(); }));
}

QWidget* frmSpreadsheetImport::MakePairs() {
    auto* pairs = new QWidget(this);
    auto* grid = new QGridLayout(pairs);
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(4);
    grid->addWidget(MakeTitle(tr("Heading"), pairs), 0, 0);
    grid->addWidget(MakeTitle(tr("Field"), pairs), 0, 1);
    for (std::size_t row = 0; row < preview_.Rows.size(); ++row) {
        grid->addWidget(MakeTitle(tr("Record %1").arg(row + 1), pairs), 0, static_cast<int>(row) + 2);
    }
    QStringList choices{tr("(not imported)")};
    for (const std::string& column : headings_.Columns()) choices << ToQString(headings_.LabelOf(column));
    fields_ = new QStringListModel(choices, this);
    int line = 0;
    for (const std::string& heading : preview_.Headings) {
        auto* label = MakeText(ToQString(heading), kHeadingLetters, pairs);
        auto* combo = Named(new CSCombo(pairs), "cboField", ++line);
        combo->setModel(fields_);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        combo->setAccessibleName(tr("Field of %1").arg(ToQString(heading)));
        label->setBuddy(combo);
        SetHint(combo, tr("Choose the field that this column of the file holds"));
        grid->addWidget(label, line, 0);
        grid->addWidget(combo, line, 1);
        for (std::size_t row = 0; row < preview_.Rows.size(); ++row) {
            const std::string& sample = preview_.Rows[row][static_cast<std::size_t>(line) - 1];
            grid->addWidget(MakeText(ToQString(sample), kSampleLetters, pairs), line, static_cast<int>(row) + 2);
        }
        cboField_.push_back(combo);
    }
    grid->setRowStretch(line + 1, 1);
    return pairs;
}

// As large as the pairs need, as far as the screen has room.
void frmSpreadsheetImport::Fit() {
    ensurePolished();
    const QSize pairs = area_->widget()->sizeHint() + QSize(2 * area_->frameWidth(), 2 * area_->frameWidth());
    QSize wanted = layout()->sizeHint() - area_->sizeHint() + pairs;
    wanted.setWidth(qMax(layout()->minimumSize().width(), pairs.width() + 2 * 16));
    const QSize room = screen()->availableSize() - QSize(0, kTitleBar);
    if (wanted.height() > room.height()) wanted.rwidth() += area_->verticalScrollBar()->sizeHint().width();
    resize(wanted.boundedTo(room));
}

void frmSpreadsheetImport::OnFieldFocus(QWidget* field) {
    if (area_->isAncestorOf(field)) area_->ensureWidgetVisible(field);
}

void frmSpreadsheetImport::Show(const std::vector<HeadingPair>& pairs) {
    for (std::size_t i = 0; i < cboField_.size(); ++i) {
        const auto& columns = headings_.Columns();
        const auto column = std::find(columns.begin(), columns.end(), pairs[i].Column);
        cboField_[i]->setCurrentIndex(column == columns.end() ? 0 : static_cast<int>(column - columns.begin()) + 1);
    }
}

std::vector<HeadingPair> frmSpreadsheetImport::Pairs() const {
    std::vector<HeadingPair> pairs;
    for (std::size_t i = 0; i < cboField_.size(); ++i) {
        const int choice = cboField_[i]->currentIndex();
        pairs.push_back({preview_.Headings[i], choice > 0 ? headings_.Columns()[static_cast<std::size_t>(choice) - 1] : ""});
    }
    return pairs;
}

LoadOptions frmSpreadsheetImport::Options(ImportEnding ending) const {
    return {.Pairs = Pairs(), .AddNew = optlDuplicate_->Index() == kAddNew, .CheckOnly = ending == ImportEnding::CheckOnly};
}

void frmSpreadsheetImport::CheckAndImport() {
    CheckFile();
    try {
        remembered_.Remember(Pairs());
    } catch (const PlatformError& failure) {
        ShowWarning(tr("What the headings stand for could not be kept: %1").arg(FailureToQString(failure.what())));
    }
}

}  // namespace tallymar
