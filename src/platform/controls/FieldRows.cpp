#include "platform/controls/FieldRows.h"

#include <QHBoxLayout>

namespace tallymar {

void Join(QLabel* label, QWidget* field) {
    label->setBuddy(field);
    if (field->accessibleName().isEmpty()) field->setAccessibleName(label->text().remove(u'&'));
}

FieldRows::FieldRows(QGridLayout* grid) : grid_(grid) {
    grid_->setHorizontalSpacing(10);
    grid_->setVerticalSpacing(7);
}

QLabel* FieldRows::Add(const QString& caption, const QList<QWidget*>& fields) {
    auto* label = new QLabel(caption);
    grid_->addWidget(label, row_, column_, Qt::AlignLeft | Qt::AlignVCenter);
    auto* line = new QHBoxLayout;
    line->setSpacing(6);
    for (QWidget* field : fields) {
        line->addWidget(field);
        if (field->accessibleName().isEmpty()) field->setAccessibleName(caption);
    }
    if (fields.size() == 1 && fields.first()->sizePolicy().horizontalPolicy() != QSizePolicy::Expanding) line->addStretch(1);
    grid_->addLayout(line, row_, column_ + 1);
    if (!fields.isEmpty()) Join(label, fields.first());
    ++row_;
    return label;
}

void FieldRows::AddWide(QWidget* widget) {
    grid_->addWidget(widget, row_++, column_ + 1, Qt::AlignLeft);
}

void FieldRows::NextColumn() {
    column_ += 3;
    row_ = 0;
    grid_->setColumnMinimumWidth(column_ - 1, 18);
}

}  // namespace tallymar
