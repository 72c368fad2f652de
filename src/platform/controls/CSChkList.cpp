#include "platform/controls/CSChkList.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "platform/controls/CSForm.h"
#include "platform/controls/FieldRows.h"

namespace tallymar {

CSChkList::CSChkList(const char* name, const QString& caption, const QStringList& items, QWidget* parent)
    : QGroupBox(caption, parent) {
    Named(this, name);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    for (const QString& item : items) {
        QCheckBox* box = Named(new QCheckBox(item, this), name, static_cast<int>(boxes_.size()));
        box->setAccessibleName(QStringLiteral("%1: %2").arg(caption, item));
        connect(box, &QCheckBox::toggled, this, &CSChkList::Clicked);
        layout->addWidget(box);
        boxes_.push_back(box);
    }
    layout->addStretch(1);
}

int CSChkList::Value() const {
    int value = 0;
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        if (boxes_[i]->isChecked()) value += 1 << i;
    }
    return value;
}

void CSChkList::SetValue(int value) {
    for (std::size_t i = 0; i < boxes_.size(); ++i) boxes_[i]->setChecked((value >> i & 1) != 0);
}

void CSChkList::SetHints(const QString& hint) {
    for (QCheckBox* box : boxes_) CSForm::SetHint(box, hint);
}

}  // namespace tallymar
