#include "assets/frmFindAsset.h"

#include <algorithm>

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr std::int64_t kFirstRows = 200;  // more than any screen shows
constexpr std::int64_t kRowsAtATime = 2000;
constexpr qint64 kTypingPause = 1000;  // milliseconds after which a key begins a new text

}  // namespace

class FindModel : public QAbstractTableModel {
 public:
    FindModel(FindAssets& found, QObject* parent) : QAbstractTableModel(parent), found_(found) {}

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : shown_; }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : FindColumns::kCount; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return ToQString(found_.Cell(index.row(), index.column()));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation == Qt::Vertical || role != Qt::DisplayRole) return {};
        return ToQString(found_.Columns().Heading(section));
    }

    // Rows that have been read since the last time come into the view.
    void Grow() {
        const int rows = found_.RowCount();
        if (rows == shown_) return;
        beginInsertRows({}, shown_, rows - 1);
        shown_ = rows;
        endInsertRows();
    }
    void FillAll() {
        found_.FillAll();
        Grow();
    }
    void Sort(int column) {
        beginResetModel();
        found_.Sort(column);
        shown_ = found_.RowCount();
        endResetModel();
    }

 private:
    FindAssets& found_;
    int shown_ = 0;
};

// The grid; typing jumps to the next row whose sorted column begins so.
class FindGrid : public QTableView {
 public:
    FindGrid(FindAssets& found, FindModel& rows, QWidget* parent) : QTableView(parent), found_(found), rows_(rows) {
        setModel(&rows);
    }

    void keyboardSearch(const QString& text) override {
        if (text.isEmpty()) return;
        const bool goesOn = !typed_.isEmpty() && sinceKey_.isValid() && sinceKey_.elapsed() < kTypingPause;
        sinceKey_.start();
        rows_.FillAll();
        const int current = qMax(0, currentIndex().row());
        // A text that goes on may keep its row; a new one moves on from it.
        typed_ = goesOn ? typed_ + text : text;
        const auto row = found_.Jump(ToWindows1252(typed_), goesOn ? current : current + 1);
        if (row) SelectRow(*row);
    }

    void SelectRow(int row) {
        const QModelIndex index = model()->index(row, 0);
        if (!index.isValid()) return;
        setCurrentIndex(index);
        scrollTo(index, QAbstractItemView::PositionAtCenter);
    }

 private:
    FindAssets& found_;
    FindModel& rows_;
    QString typed_;
    QElapsedTimer sinceKey_;
};

frmFindAsset::frmFindAsset(CompanySession& company, AssetEditState& state, Prompts* prompts, QWidget* parent)
    : CSForm("frmFindAsset", tr("Find Asset (Double-Click to Select)"), parent),
      company_(company),
      state_(state),
      ownPrompts_(this),
      prompts_(prompts ? *prompts : ownPrompts_),
      found_(company, company.Profile().FindByDate, company.Profile().FindByGLNumber) {
    auto* label =
        new QLabel(tr("Click on Column Heading to Sort by Asset #, Division, Date, or Description.  An  (*)  after the Asset "
                      "Number implies the asset has been sold, etc. "),
                   this);
    label->setWordWrap(true);

    model_ = new FindModel(found_, this);
    grid_ = Named(new FindGrid(found_, *model_, this), "MSFlexGrid1");
    grid_->setAccessibleName(tr("Assets"));
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setTabKeyNavigation(false);
    grid_->setWordWrap(false);
    grid_->setAlternatingRowColors(true);
    grid_->verticalHeader()->hide();
    grid_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid_->horizontalHeader()->setSectionsClickable(true);
    grid_->horizontalHeader()->setHighlightSections(false);
    grid_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    grid_->horizontalHeader()->setStretchLastSection(true);
    const int letter = fontMetrics().horizontalAdvance(u'M');
    const int widths[] = {11 * letter, 16 * letter, 16 * letter, 26 * letter};
    int whole = 40;
    for (int column = 0; column < FindColumns::kCount; ++column) {
        grid_->setColumnWidth(column, widths[column]);
        whole += widths[column];
    }
    grid_->setMinimumSize(whole, fontMetrics().height() * 20);
    grid_->installEventFilter(this);

    auto* cmdSelect = Named(new CSCmdBtn(tr("Select Asset"), this), "cmdSelect");
    cmdSelect->setToolTip(tr("Select the highlighted asset "));
    auto* cmdClose = Named(new CSCmdBtn(tr("&Close"), this), "cmdClose");
    cmdClose->setToolTip(tr("Close the Find window"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdSelect);
    buttons->addWidget(cmdClose);
    auto* all = new QVBoxLayout(this);
    all->addWidget(label);
    all->addWidget(grid_, 1);
    all->addLayout(buttons);

    // Closed without a choice, the list opens the asset form on the last asset. A form that is there already keeps its place:
    // what stands in it unsaved is written only while the recordset is on a row.
    if (state.EditFormClosed) {
        recordset::Recordset& assets = company.AssetsRecordset();
        assets.MoveLast();
        if (!assets.Eof()) assets.MoveNext();
    }
    found_.FillMore(kFirstRows);
    model_->Grow();
    filling_ = new QTimer(this);
    connect(filling_, &QTimer::timeout, this, Guarded([this] { FillSome(); }));
    filling_->start(0);

    connect(grid_->horizontalHeader(), &QHeaderView::sectionClicked, this, Guarded([this](int column) { Sort(column); }));
    connect(grid_, &QAbstractItemView::doubleClicked, this, Guarded([this] { DoubleClick(); }));
    connect(cmdSelect, &QPushButton::clicked, this, Guarded([this] { CmdSelect(); }));
    connect(cmdClose, &QPushButton::clicked, this, Guarded([this] { CmdClose(); }));
    SetCancelButton(cmdClose);
    grid_->SelectRow(0);
    grid_->setFocus();
}

frmFindAsset::~frmFindAsset() = default;

void frmFindAsset::FillSome() {
    if (!found_.FillMore(kRowsAtATime)) filling_->stop();
    model_->Grow();
}

void frmFindAsset::Sort(int column) {
    const class_Hourglass wait;
    filling_->stop();
    model_->Sort(column);
    grid_->SelectRow(0);
}

bool frmFindAsset::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Guarded([this] { CmdSelect(); })();
            return true;
        }
    }
    return CSForm::eventFilter(watched, event);
}

bool frmFindAsset::Select() {
    const int row = grid_->currentIndex().row();
    if (row < 0) return false;
    if (!SelectAsset(company_, found_.Cell(row, 0), prompts_)) return false;
    // The asset form, when it has to be opened first, opens on the asset that it last showed: from now on this one.
    state_.CurrentAssetNum = found_.AssetNum(row);
    return true;
}

void frmFindAsset::CmdSelect() {
    if (!Select()) return;
    Unload();
    emit EditWanted();
}

void frmFindAsset::DoubleClick() {
    const bool matched = Select();
    Unload();
    if (matched) emit EditWanted();
}

void frmFindAsset::CmdClose() {
    const bool openEdit = state_.EditFormClosed;
    Unload();
    if (openEdit) emit EditWanted();
}

}  // namespace tallymar
