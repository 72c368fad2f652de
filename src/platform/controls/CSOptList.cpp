#include "platform/controls/CSOptList.h"

#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/controls/CSForm.h"
#include "platform/controls/FieldRows.h"

namespace tallymar {

CSOptList::CSOptList(const char* name, const QString& caption, const QStringList& items, QWidget* parent)
    : QGroupBox(caption, parent) {
    Named(this, name);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    for (const QString& item : items) {
        QRadioButton* button = Named(new QRadioButton(item, this), name, static_cast<int>(buttons_.size()));
        button->setAccessibleName(QStringLiteral("%1: %2").arg(caption, item));
        connect(button, &QRadioButton::toggled, this, [this](bool on) {
            if (on) emit Clicked();
        });
        layout->addWidget(button);
        buttons_.push_back(button);
    }
    layout->addStretch(1);
    if (!buttons_.empty()) buttons_.front()->setChecked(true);
}

int CSOptList::Index() const {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        if (buttons_[i]->isChecked()) return static_cast<int>(i);
    }
    return -1;
}

void CSOptList::SetIndex(int index) {
    buttons_.at(static_cast<std::size_t>(index))->setChecked(true);
}

void CSOptList::SetHints(const QString& hint) {
    for (QRadioButton* button : buttons_) CSForm::SetHint(button, hint);
}

}  // namespace tallymar
