#include "assets/frmAllBooks.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

#include "assets/AllBooks.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/WindowMemory.h"
#include "store/Books.h"

namespace tallymar {

namespace {

const QString kColumnsKey = QStringLiteral("Columns/frmAllBooks");
constexpr int kColumnLetters = 12;

}  // namespace

frmAllBooks::frmAllBooks(QWidget* parent) : CSForm("frmAllBooks", tr("All Books"), parent) {
    lblAsset_ = Named(new QLabel(this), "lblAsset");
    lblAsset_->setTextFormat(Qt::PlainText);
    QFont bold = lblAsset_->font();
    bold.setBold(true);
    lblAsset_->setFont(bold);

    grid_ = Named(new QTableWidget(this), "grdBooks");
    grid_->setAccessibleName(tr("The asset in its four books"));
    grid_->setToolTip(tr("Bold: not as in the Federal book"));
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setTabKeyNavigation(false);
    grid_->setAlternatingRowColors(true);
    grid_->setColumnCount(kLastBook);
    QStringList heads;
    for (int book = kFirstBook; book <= kLastBook; ++book) heads.append(ToQString(BookOf(book).ShortName));
    grid_->setHorizontalHeaderLabels(heads);
    grid_->horizontalHeader()->setHighlightSections(false);
    grid_->verticalHeader()->setHighlightSections(false);
    grid_->verticalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    grid_->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() * 3 / 2);  // all rows on a small screen
    const int width = fontMetrics().horizontalAdvance(u'M') * kColumnLetters;
    for (int column = 0; column < kLastBook; ++column) grid_->setColumnWidth(column, width);
    grid_->setMinimumSize(width * (kLastBook + 2), fontMetrics().height() * 12);

    auto* cmdClose = Named(new CSCmdBtn(tr("&Close"), this), "cmdClose");
    cmdClose->setToolTip(tr("Back to the asset"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdClose);
    auto* all = new QVBoxLayout(this);
    all->addWidget(lblAsset_);
    all->addWidget(grid_, 1);
    all->addLayout(buttons);
    connect(cmdClose, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdClose);
    grid_->setFocus();
}

void frmAllBooks::ShowAsset(const AssetFieldValues& values) {
    const QString text = ToQString(values.AssetNum + "   " + values.Description);
    if (lblAsset_->text() != text) lblAsset_->setText(text);
    const std::vector<AllBooksRow> rows = AllBooks(values);
    grid_->setRowCount(static_cast<int>(rows.size()));
    for (int place = 0; place < grid_->rowCount(); ++place) {
        const AllBooksRow& row = rows[static_cast<std::size_t>(place)];
        if (!grid_->verticalHeaderItem(place)) grid_->setVerticalHeaderItem(place, new QTableWidgetItem(ToQString(row.Label)));
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            QTableWidgetItem* cell = grid_->item(place, book - kFirstBook);
            if (!cell) grid_->setItem(place, book - kFirstBook, cell = new QTableWidgetItem);
            cell->setText(ToQString(row.Texts[book]));
            cell->setTextAlignment((row.IsNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
            QFont font = grid_->font();
            font.setBold(row.Differs[book]);
            cell->setFont(font);
            // Who cannot see the bold hears it.
            cell->setData(Qt::AccessibleDescriptionRole, row.Differs[book] ? tr("not as in the Federal book") : QString());
        }
    }
}

void frmAllBooks::Recall(const WindowMemory& memory) {
    const QList<int> widths = memory.Numbers(kColumnsKey);
    if (widths.size() != grid_->columnCount()) return;
    for (int column = 0; column < grid_->columnCount(); ++column) {
        if (widths[column] > 0) grid_->setColumnWidth(column, widths[column]);
    }
}

void frmAllBooks::Remember(WindowMemory& memory) const {
    QList<int> widths;
    for (int column = 0; column < grid_->columnCount(); ++column) widths.append(grid_->columnWidth(column));
    memory.Keep(kColumnsKey, widths);
}

}  // namespace tallymar
