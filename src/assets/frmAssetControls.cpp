#include "assets/frmAssetControls.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QLineEdit>

#include "platform/controls/CSCombo.h"
#include "platform/controls/CSForm.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/NumberEdit.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sidtEdit.h"
#include "platform/controls/sitxEdit.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

// The form's ground for a field, whatever the colours of the windows are or come to be.
class QuietGround : public QObject {
 public:
    explicit QuietGround(QWidget* field) : QObject(field) { Apply(*field); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ApplicationPaletteChange) Apply(*qobject_cast<QWidget*>(watched));
        return false;
    }

 private:
    static void Apply(QWidget& field) {
        QPalette quiet;
        quiet.setBrush(QPalette::Base, QApplication::palette().brush(QPalette::Window));
        field.setPalette(quiet);
    }
};

QWidget* MakeText(const AssetFieldDef& field, QWidget* parent) {
    auto* edit = new sitxEdit(static_cast<int>(MaxLengthOf(field)), parent);
    if (field.LettersAndDigits) {
        edit->SetAllowed(sitxEdit::kLettersAndDigits);
        edit->SetUpperCase(true);
    }
    return edit;
}

QWidget* MakeList(const AssetFieldDef& field, QWidget* parent) {
    auto* list = new CSCombo(parent);
    list->Fill(field.Entries);
    list->Explain(field.Meanings);
    list->setCurrentIndex(-1);
    return list;
}

QWidget* MakeAmount(const AssetFieldDef& field, QWidget* parent) {
    return new sidbEdit({field.Minimum, field.Maximum, kAmountDecimals, field.Money}, parent);
}

QWidget* MakeInteger(const AssetFieldDef& field, QWidget* parent) {
    return new silgEdit(static_cast<int>(field.Minimum.WholePart()), static_cast<int>(field.Maximum.WholePart()), parent);
}

QWidget* MakeControl(const AssetFieldDef& field, QWidget* parent) {
    switch (field.Kind) {
        case FieldKind::Text:
            return MakeText(field, parent);
        case FieldKind::List:
            return MakeList(field, parent);
        case FieldKind::Date:
            return new sidtEdit(parent);
        case FieldKind::Amount:
            return MakeAmount(field, parent);
        case FieldKind::Integer:
            return MakeInteger(field, parent);
        case FieldKind::Check:
            return new QCheckBox(ToQString(field.Label), parent);
    }
    return nullptr;
}

// Blanks that fill a stored text up to its width are no part of an entry: a field full of them could not be typed into.
void ShowText(sitxEdit& edit, std::string_view text) {
    if (RTrim(edit.Text()) == RTrim(text)) return;
    edit.SetText(RTrim(text));
    if (!edit.hasFocus()) edit.setCursorPosition(0);
}

void ShowEntry(CSCombo& list, const std::string& entry) {
    if (list.currentIndex() >= 0 && list.Text() == entry) return;
    if (list.Choose(entry)) return;
    // A code that another program has stored is shown, and kept unless another is chosen.
    list.setPlaceholderText(ToQString(entry));
    list.setCurrentIndex(-1);
}

}  // namespace

int AssetControls::Control::Tab() const {
    switch (Field->Place) {
        case FieldPlace::General:
            return kGeneralTab;
        case FieldPlace::Sale:
            return kSaleTab;
        case FieldPlace::Book:
            break;
    }
    return Book;
}

void LookReadOnly(QWidget* field) {
    if (auto* edit = qobject_cast<QLineEdit*>(field)) edit->setReadOnly(true);
    field->installEventFilter(new QuietGround(field));
    field->setFocusPolicy(Qt::ClickFocus);
}

QWidget* AssetControls::Make(AssetField field, int book, QWidget* parent) {
    const AssetFieldDef& def = FieldDef(field);
    QWidget* widget = MakeControl(def, parent);
    widget->setObjectName(ToQString(ControlName(def, book)));
    widget->setAccessibleName(ToQString(def.Label.empty() ? "Description, second line" : def.Label));
    if (!def.Tip.empty()) widget->setToolTip(ToQString(def.Tip));
    if (!def.Hint.empty()) CSForm::SetHint(widget, ToQString(def.Hint));
    if (def.ReadOnly) LookReadOnly(widget);
    const std::size_t place = controls_.size();
    controls_.push_back({&def, book, widget});

    const auto changed = Guarded([this, place] { Changed(place); });
    if (auto* edit = qobject_cast<EntryEdit*>(widget)) {
        QObject::connect(edit, &EntryEdit::Changed, edit, changed);
        QObject::connect(edit, &EntryEdit::Left, edit, Guarded([this, place] {
                             if (OnLeft) OnLeft(controls_[place]);
                         }));
    } else if (auto* list = qobject_cast<CSCombo*>(widget)) {
        QObject::connect(list, &QComboBox::activated, list, changed);
    } else if (auto* box = qobject_cast<QCheckBox*>(widget)) {
        QObject::connect(box, &QCheckBox::clicked, box, changed);
    }
    return widget;
}

QWidget* AssetControls::Find(AssetField field, int book) const {
    for (const Control& control : controls_) {
        if (control.Field->Id == field && control.Book == book) return control.Widget;
    }
    return nullptr;
}

const AssetControls::Control* AssetControls::Of(const QWidget* widget) const {
    for (const Control& control : controls_) {
        if (control.Widget == widget) return &control;
    }
    return nullptr;
}

void AssetControls::Changed(std::size_t place) {
    if (showing_ || !values_) return;
    const Control& control = controls_[place];
    Take(control);
    if (OnChanged) OnChanged(control);
}

void AssetControls::ShowValues(AssetFieldValues& values) {
    values_ = &values;
    showing_ = true;
    for (const Control& control : controls_) Show(control);
    showing_ = false;
}

void AssetControls::Show(const Control& control) {
    QWidget* widget = control.Widget;
    const AssetFieldDef& field = *control.Field;
    if (auto* text = qobject_cast<sitxEdit*>(widget)) {
        ShowText(*text, FieldValue<std::string>(*values_, field, control.Book));
    } else if (auto* date = qobject_cast<sidtEdit*>(widget)) {
        const std::string& shown = FieldValue<std::string>(*values_, field, control.Book);
        if (date->Text() != shown) date->SetText(shown);
    } else if (auto* list = qobject_cast<CSCombo*>(widget)) {
        ShowEntry(*list, FieldValue<std::string>(*values_, field, control.Book));
    } else if (auto* amount = qobject_cast<sidbEdit*>(widget)) {
        const CurrencyAmount shown = FieldValue<CurrencyAmount>(*values_, field, control.Book);
        if (amount->Value() != shown) amount->SetValue(shown);
    } else if (auto* number = qobject_cast<silgEdit*>(widget)) {
        const int shown = FieldValue<int>(*values_, field, control.Book);
        if (number->Value() != shown) number->SetValue(shown);
    } else if (auto* box = qobject_cast<QCheckBox*>(widget)) {
        box->setChecked(FieldValue<bool>(*values_, field, control.Book));
    }
}

void AssetControls::Take(const Control& control) {
    QWidget* widget = control.Widget;
    const AssetFieldDef& field = *control.Field;
    if (auto* text = qobject_cast<sitxEdit*>(widget)) {
        FieldValue<std::string>(*values_, field, control.Book) = text->Text();
    } else if (auto* date = qobject_cast<sidtEdit*>(widget)) {
        FieldValue<std::string>(*values_, field, control.Book) = date->Text();
    } else if (auto* list = qobject_cast<CSCombo*>(widget)) {
        if (list->currentIndex() >= 0) FieldValue<std::string>(*values_, field, control.Book) = list->Text();
    } else if (auto* amount = qobject_cast<sidbEdit*>(widget)) {
        FieldValue<CurrencyAmount>(*values_, field, control.Book) = amount->Value();
    } else if (auto* number = qobject_cast<silgEdit*>(widget)) {
        FieldValue<int>(*values_, field, control.Book) = number->Value();
    } else if (auto* box = qobject_cast<QCheckBox*>(widget)) {
        FieldValue<bool>(*values_, field, control.Book) = box->isChecked();
    }
}

}  // namespace tallymar
