#include "assets/frmFindAsset.h"

#include <algorithm>

#include <QAbstractTableModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/WindowMemory.h"

namespace tallymar {

namespace {

constexpr std::int64_t kFirstRows = 200;  // more than any screen shows
constexpr std::int64_t kRowsAtATime = 2000;
constexpr qint64 kOpeningTime = 100;   // milliseconds that the opening may take to come to the current asset
constexpr qint64 kTypingPause = 1000;  // milliseconds after which a key begins a new text
constexpr int kLongestSearch = 100;    // characters: more than any asset has to be found by

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
    // Whatever orders or narrows the list.
    template <typename Change>
    void Reset(const Change& change) {
        beginResetModel();
        change();
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

    txtSearch_ = Named(new QLineEdit(this), "txtSearch");
    txtSearch_->setPlaceholderText(tr("number, description, serial or G/L number"));
    txtSearch_->setClearButtonEnabled(true);
    txtSearch_->setMaxLength(kLongestSearch);
    SetHint(txtSearch_, tr("Lists the assets that have these words in their number, description, serial or G/L number"));
    txtSearch_->setToolTip(HintOf(txtSearch_));
    txtSearch_->installEventFilter(this);
    auto* lblSearch = new QLabel(tr("&Search"), this);
    Join(lblSearch, txtSearch_);
    lblCount_ = Named(new QLabel(this), "lblCount");
    lblCount_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(lblSearch);
    searchRow->addWidget(txtSearch_, 1);
    searchRow->addWidget(lblCount_);

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
    grid_->horizontalHeader()->setSortIndicatorShown(true);
    const int letter = fontMetrics().horizontalAdvance(u'M');
    const int widths[] = {11 * letter, 16 * letter, 16 * letter, 26 * letter};
    int whole = 40;
    for (int column = 0; column < FindColumns::kCount; ++column) {
        grid_->setColumnWidth(column, widths[column]);
        whole += widths[column];
    }
    grid_->setMinimumSize(whole, fontMetrics().height() * 12);
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
    all->addLayout(searchRow);
    all->addWidget(grid_, 1);
    all->addLayout(buttons);

    // Closed without a choice, the list opens the asset form on the last asset. A form that is there already keeps its place:
    // what stands in it unsaved is written only while the recordset is on a row.
    if (state.EditFormClosed) {
        recordset::Recordset& assets = company.AssetsRecordset();
        assets.MoveLast();
        if (!assets.Eof()) assets.MoveNext();
    }
    current_ = state.CurrentAssetNum;
    QElapsedTimer opening;
    opening.start();
    for (found_.FillMore(kFirstRows); !current_.empty() && !found_.RowOf(current_) && opening.elapsed() < kOpeningTime;) {
        if (!found_.FillMore(kRowsAtATime)) break;
    }
    model_->Grow();
    filling_ = new QTimer(this);
    connect(filling_, &QTimer::timeout, this, Guarded([this] { FillSome(); }));
    filling_->start(0);

    connect(grid_->horizontalHeader(), &QHeaderView::sectionClicked, this, Guarded([this](int column) { Sort(column); }));
    connect(grid_, &QAbstractItemView::doubleClicked, this, Guarded([this] { DoubleClick(); }));
    connect(cmdSelect, &QPushButton::clicked, this, Guarded([this] { CmdSelect(); }));
    connect(cmdClose, &QPushButton::clicked, this, Guarded([this] { CmdClose(); }));
    connect(txtSearch_, &QLineEdit::textChanged, this, Guarded([this](const QString& text) { Search(text); }));
    SetCancelButton(cmdClose);
    setTabOrder(txtSearch_, grid_);
    grid_->SelectRow(0);
    ShowCurrent();
    ShowCount();
    ShowSortArrow();
    txtSearch_->setFocus();
}

frmFindAsset::~frmFindAsset() = default;

// A form that has been closed may still be there while a message is up; its company may not.
void frmFindAsset::OnUnload() {
    filling_->stop();
}

void frmFindAsset::FillSome() {
    if (!found_.FillMore(kRowsAtATime)) filling_->stop();
    model_->Grow();
    if (grid_->currentIndex().row() < 0) grid_->SelectRow(0);
    ShowCurrent();
    ShowCount();
}

// The list opens on the asset of the form, as soon as its row is there; a user who has gone elsewhere meanwhile stays there.
void frmFindAsset::ShowCurrent() {
    if (current_.empty()) return;
    if (const auto row = found_.RowOf(current_)) {
        current_.clear();
        grid_->SelectRow(*row);
    } else if (found_.IsFilled()) {
        current_.clear();
    }
}

void frmFindAsset::ShowCount() {
    const auto number = [this](int count) { return locale().toString(count); };
    const QString all = number(found_.AssetsRead());
    lblCount_->setText(txtSearch_->text().trimmed().isEmpty() ? tr("%1 assets").arg(all)
                                                              : tr("%1 of %2 assets").arg(number(found_.RowCount()), all));
}

void frmFindAsset::ShowSortArrow() {
    grid_->horizontalHeader()->setSortIndicator(found_.SortedColumn(),
                                                found_.IsDescending() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void frmFindAsset::Search(const QString& text) {
    const int row = grid_->currentIndex().row();
    const std::string chosen = !current_.empty() ? current_ : row < 0 ? std::string() : found_.AssetNum(row);
    model_->Reset([&] { found_.Search(ToWindows1252(text)); });
    current_.clear();
    grid_->SelectRow(found_.RowOf(chosen).value_or(0));
    ShowCount();
}

void frmFindAsset::Sort(int column) {
    const class_Hourglass wait;
    filling_->stop();
    current_.clear();
    model_->Reset([&] { found_.Sort(column); });
    grid_->SelectRow(0);
    ShowSortArrow();
    ShowCount();
}

// The columns differ by the profile's settings, and so do their widths.
QString frmFindAsset::ColumnsKey() const {
    const FindColumns& columns = found_.Columns();
    QString key = QStringLiteral("Columns/frmFindAsset");
    for (const FindColumn column : columns.Columns) key += QStringLiteral("-%1").arg(static_cast<int>(column));
    return key;
}

void frmFindAsset::Recall(const WindowMemory& memory) {
    const QList<int> widths = memory.Numbers(ColumnsKey());
    if (widths.size() != FindColumns::kCount) return;
    for (int column = 0; column < FindColumns::kCount; ++column) {
        if (widths[column] > 0) grid_->setColumnWidth(column, widths[column]);
    }
}

void frmFindAsset::Remember(WindowMemory& memory) const {
    QList<int> widths;
    for (int column = 0; column < FindColumns::kCount; ++column) widths.append(grid_->columnWidth(column));
    memory.Keep(ColumnsKey(), widths);
}

bool frmFindAsset::OnSearchKey(QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QApplication::sendEvent(grid_, &event);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Guarded([this] { CmdSelect(); })();
            return true;
        case Qt::Key_Escape:
            if (txtSearch_->text().isEmpty()) return false;
            txtSearch_->clear();
            return true;
        default:
            return false;
    }
}

bool frmFindAsset::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        current_.clear();
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Guarded([this] { CmdSelect(); })();
            return true;
        }
    }
    if (watched == txtSearch_ && event->type() == QEvent::KeyPress && OnSearchKey(*static_cast<QKeyEvent*>(event))) return true;
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
