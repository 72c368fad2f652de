#include "interchange/frmImportCheck.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr QSize kFirstSize(760, 460);

QTableWidget* MakeList(const ImportCounts& counts, QWidget* parent) {
    auto* list = Named(new QTableWidget(static_cast<int>(counts.Remarks.size()), 4, parent), "lstRemarks");
    list->setAccessibleName(QObject::tr("What would fail or be changed"));
    const bool ofTable = !counts.Remarks.front().RowWord.empty();
    list->setHorizontalHeaderLabels({ofTable ? QObject::tr("Row") : QObject::tr("Record"),
                                     ofTable ? QObject::tr("Column") : QObject::tr("Item"), QObject::tr("Result"),
                                     QObject::tr("What")});
    int row = 0;
    for (const ImportRemark& remark : counts.Remarks) {
        const QString record = remark.Line > 0     ? QObject::tr("company, line %1").arg(remark.Line)
                               : remark.Record > 0 ? QString::number(remark.Record)
                                                   : QObject::tr("every");
        const QString item = remark.Item == 0 ? ToQString(remark.Column) : QString::number(remark.Item);
        const QString texts[] = {record, item, remark.Fails ? QObject::tr("Fails") : QObject::tr("Changed"),
                                 ToQString(remark.Text)};
        int column = 0;
        for (const QString& text : texts) {
            auto* cell = new QTableWidgetItem(text);
            cell->setToolTip(text);
            if (column < (ofTable ? 1 : 2)) cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            list->setItem(row, column++, cell);
        }
        ++row;
    }
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setTabKeyNavigation(false);
    list->verticalHeader()->hide();
    list->horizontalHeader()->setStretchLastSection(true);
    list->resizeColumnsToContents();
    if (row > 0) list->setCurrentCell(0, 0);
    return list;
}

}  // namespace

frmImportCheck::frmImportCheck(const ImportCounts& counts, const std::filesystem::path& file, QWidget* parent)
    : CSForm("frmImportCheck", tr("Check of %1").arg(PathToQString(file.filename())), parent) {
    QString found = ToQString(ImportCheckText(counts));
    if (counts.RemarksLeftOut > 0) found += tr("\n%1 more remarks are not listed").arg(counts.RemarksLeftOut);
    auto* lblFound = Named(new QLabel(found, this), "lblFound");
    lblFound->setTextFormat(Qt::PlainText);
    lblFound->setTextInteractionFlags(Qt::TextSelectableByMouse);

    // The keyboard begins in the list, so that Enter does not import what has just been found wanting.
    QTableWidget* list = counts.Remarks.empty() ? nullptr : MakeList(counts, this);
    auto* cmdImport = Named(new CSCmdBtn(tr("Import Now"), this), "cmdImport");
    SetHint(cmdImport, tr("Import this file as it is"));
    cmdImport->setEnabled(!TakesNothing(counts));
    auto* cmdCancel = Named(new CSCmdBtn(tr("&Close"), this), "cmdCancel");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(MakeHintLine(), 1);
    buttons->addWidget(cmdImport);
    buttons->addWidget(cmdCancel);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addWidget(lblFound);
    if (list) all->addWidget(list, 1);
    all->addLayout(buttons);
    if (list) resize(kFirstSize);

    connect(cmdImport, &QPushButton::clicked, this, [this] {
        wantsImport_ = true;
        Unload();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdCancel);
}

}  // namespace tallymar
