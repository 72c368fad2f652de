#include "assets/frmDeprBuild.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr int kMostRowsShown = 16;

// The years; the two rows of headings stand in the view's header.
class BuildModel : public QAbstractTableModel {
 public:
    BuildModel(const DeprBuildGrid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : grid_.RowCount() - DeprBuildGrid::kFixedRows;
    }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : DeprBuildGrid::kColumns; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DisplayRole) return ToQString(grid_.Cell(index.row() + DeprBuildGrid::kFixedRows, index.column()));
        if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Alignment(index.column()));
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation == Qt::Vertical) return {};
        if (role == Qt::DisplayRole) return ToQString(grid_.Cell(0, section) + "\n" + grid_.Cell(1, section));
        if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Alignment(section));
        return {};
    }

 private:
    static Qt::Alignment Alignment(int column) { return (column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter; }

    const DeprBuildGrid& grid_;
};

// Prints in columns as on the screen, headings on every page.
class BuildPrinter {
 public:
    BuildPrinter(const DeprBuildGrid& grid, const QString& title, QPrinter& printer)
        : grid_(grid), title_(title), printer_(printer), painter_(&printer) {
        QFont font(QStringLiteral("Arial"));
        font.setPointSizeF(9);
        painter_.setFont(font);
        line_ = painter_.fontMetrics().lineSpacing() * 5 / 4;
        column_ = painter_.viewport().width() / DeprBuildGrid::kColumns;
    }

    void Print() {
        Head();
        for (int row = DeprBuildGrid::kFixedRows; row < grid_.RowCount(); ++row) {
            if (y_ + line_ > painter_.viewport().height()) {
                printer_.newPage();
                Head();
            }
            Row(row);
        }
    }

 private:
    void Head() {
        y_ = 0;
        painter_.drawText(0, line_, title_);
        y_ = 2 * line_;
        for (int row = 0; row < DeprBuildGrid::kFixedRows; ++row) Row(row);
        painter_.fillRect(0, y_ + line_ / 4, painter_.viewport().width(), qMax(1, line_ / 24), Qt::black);
        y_ += line_ / 2;
    }
    void Row(int row) {
        for (int column = 0; column < DeprBuildGrid::kColumns; ++column) {
            const QRect cell(column * column_, y_, column_ - line_ / 2, line_);
            painter_.drawText(cell, column == 0 ? Qt::AlignLeft : Qt::AlignRight, ToQString(grid_.Cell(row, column)));
        }
        y_ += line_;
    }

    const DeprBuildGrid& grid_;
    QString title_;
    QPrinter& printer_;
    QPainter painter_;
    int line_ = 0;
    int column_ = 0;
    int y_ = 0;
};

}  // namespace

frmDeprBuild::frmDeprBuild(const DeprBuildGrid& grid, const std::string& assetNum, QWidget* parent)
    : CSForm("frmDeprBuild", tr("Build Depreciation Detail - Asset %1").arg(ToQString(assetNum)), parent), grid_(grid) {
    MSFlexGrid1_ = Named(new QTableView(this), "MSFlexGrid1");
    MSFlexGrid1_->setAccessibleName(tr("Years"));
    MSFlexGrid1_->setModel(new BuildModel(grid, this));
    MSFlexGrid1_->verticalHeader()->hide();
    MSFlexGrid1_->setTabKeyNavigation(false);
    MSFlexGrid1_->setAlternatingRowColors(true);
    MSFlexGrid1_->setWordWrap(false);
    MSFlexGrid1_->installEventFilter(this);
    const int amount = fontMetrics().horizontalAdvance(QStringLiteral("00,000,000.00")) + 16;
    MSFlexGrid1_->horizontalHeader()->setMinimumSectionSize(amount);
    MSFlexGrid1_->resizeColumnsToContents();
    const int rows = qBound(4, grid.RowCount() - DeprBuildGrid::kFixedRows, kMostRowsShown);
    const int rowHeight = MSFlexGrid1_->verticalHeader()->defaultSectionSize();
    const int scrollBar = MSFlexGrid1_->verticalScrollBar()->sizeHint().width();
    MSFlexGrid1_->setMinimumHeight(MSFlexGrid1_->horizontalHeader()->sizeHint().height() + rows * rowHeight + scrollBar + 4);
    const int wanted = MSFlexGrid1_->horizontalHeader()->length() + scrollBar + 4;
    MSFlexGrid1_->setMinimumWidth(qMin(wanted, QApplication::primaryScreen()->availableGeometry().width() - 60));

    auto* cmdSave = Named(new CSCmdBtn(tr("&Save"), this), "cmdSave");
    auto* cmdCancel = Named(new CSCmdBtn(tr("&Cancel"), this), "cmdCancel");
    auto* cmdPrint = Named(new CSCmdBtn(tr("&Print"), this), "cmdPrint");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdPrint);
    buttons->addStretch(1);
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdCancel);
    auto* all = new QVBoxLayout(this);
    all->addWidget(MSFlexGrid1_, 1);
    all->addLayout(buttons);

    connect(cmdSave, &QPushButton::clicked, this, Guarded([this] { Finish(false); }));
    connect(cmdCancel, &QPushButton::clicked, this, Guarded([this] { Finish(true); }));
    connect(cmdPrint, &QPushButton::clicked, this, Guarded([this] { Print(); }));
    SetCancelButton(cmdCancel);
}

void frmDeprBuild::showEvent(QShowEvent* event) {
    CSForm::showEvent(event);
    // The years are there to be looked at first: Enter must not store them unseen.
    MSFlexGrid1_->setFocus();
    if (!MSFlexGrid1_->currentIndex().isValid()) MSFlexGrid1_->setCurrentIndex(MSFlexGrid1_->model()->index(0, 0));
}

void frmDeprBuild::Finish(bool cancelled) {
    cancelled_ = cancelled;
    Unload();
}

bool frmDeprBuild::eventFilter(QObject* watched, QEvent* event) {
    if (watched == MSFlexGrid1_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        CopySelection();
        return true;
    }
    return CSForm::eventFilter(watched, event);
}

void frmDeprBuild::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        CopySelection();
        return;
    }
    CSForm::keyPressEvent(event);
}

// The block around the selected cells; all of the grid, headings included, when it is selected whole or not at all.
void frmDeprBuild::CopySelection() {
    const QItemSelection selection = MSFlexGrid1_->selectionModel()->selection();
    int top = grid_.RowCount() - 1;
    int left = DeprBuildGrid::kColumns - 1;
    int bottom = 0;
    int right = 0;
    for (const QItemSelectionRange& range : selection) {
        top = qMin(top, range.top() + DeprBuildGrid::kFixedRows);
        bottom = qMax(bottom, range.bottom() + DeprBuildGrid::kFixedRows);
        left = qMin(left, range.left());
        right = qMax(right, range.right());
    }
    const bool whole = selection.isEmpty() || (top == DeprBuildGrid::kFixedRows && bottom == grid_.RowCount() - 1 && left == 0 &&
                                               right == DeprBuildGrid::kColumns - 1);
    QApplication::clipboard()->setText(ToQString(whole
                                                     ? grid_.TabSeparated(0, 0, grid_.RowCount() - 1, DeprBuildGrid::kColumns - 1)
                                                     : grid_.TabSeparated(top, left, bottom, right)));
}

void frmDeprBuild::Print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(QPageSize(QPageSize::Letter));
    printer.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) return;
    BuildPrinter(grid_, windowTitle(), printer).Print();
}

}  // namespace tallymar
