#pragma once

#include <functional>
#include <span>
#include <vector>

#include "assets/AssetFieldValues.h"
#include "assets/AssetFields.h"

class QCheckBox;
class QWidget;

namespace tallymar {

// The controls of the asset form, made from the table of fields, and the way of values between the two.
class AssetControls {
 public:
    struct Control {
        const AssetFieldDef* Field;
        int Book;
        QWidget* Widget;
        int Tab() const;
    };

    // A value was typed or chosen: it has been taken into the values that ShowValues was last given.
    std::function<void(const Control&)> OnChanged;
    std::function<void(const Control&)> OnLeft;

    QWidget* Make(AssetField field, int book, QWidget* parent);
    QWidget* Find(AssetField field, int book) const;
    const Control* Of(const QWidget* widget) const;
    std::span<const Control> All() const { return controls_; }

    // Puts into the controls what they do not show already; carets and half-typed entries stay as they are. The values must live
    // as long as the controls.
    void ShowValues(AssetFieldValues& values);

 private:
    void Changed(std::size_t place);
    void Show(const Control& control);
    void Take(const Control& control);

    std::vector<Control> controls_;
    AssetFieldValues* values_ = nullptr;
    bool showing_ = false;
};

// A read-only field looks like what it is: text on the form's own ground.
void LookReadOnly(QWidget* field);

}  // namespace tallymar
