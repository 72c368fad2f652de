#include "batch/frmFromTo.h"

#include <QCoreApplication>
#include <QLabel>

#include "platform/controls/FieldRows.h"

namespace tallymar {

FromToRows::FromToRows(QGridLayout* grid) : grid_(grid) {
    grid_->setHorizontalSpacing(16);
    grid_->setVerticalSpacing(7);
    int column = 0;
    for (const char* heading : {"Asset field to change", "Change From", "Change To"}) {
        auto* label = new QLabel(QCoreApplication::translate("FromToRows", heading));
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
        grid_->addWidget(label, 0, column++);
    }
    grid_->setColumnStretch(column, 1);
}

void FromToRows::Add(const QString& label, QWidget* from, QWidget* to) {
    auto* name = new QLabel(label);
    from->setAccessibleName(QCoreApplication::translate("FromToRows", "%1, change from").arg(label));
    to->setAccessibleName(QCoreApplication::translate("FromToRows", "%1, change to").arg(label));
    Join(name, from);
    grid_->addWidget(name, row_, 0);
    grid_->addWidget(from, row_, 1, Qt::AlignLeft);
    grid_->addWidget(to, row_, 2, Qt::AlignLeft);
    ++row_;
}

}  // namespace tallymar
