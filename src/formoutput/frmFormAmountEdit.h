#pragma once

#include <string>
#include <string_view>

#include "platform/controls/NumberEdit.h"

namespace tallymar {

// Entry of an amount of a form page: what stands in the field is shown, and stays, as the page has it ("1,235.", "(450.00)",
// "*ERROR*") until something is typed; nothing wider than the field is taken.
class FormAmountEdit : public sidbEdit {
    Q_OBJECT

 public:
    explicit FormAmountEdit(QWidget* parent = nullptr);

    // COMPAT: a text that is empty or reads as 0 is shown as "0.00", and stored so when the field is left.
    void Show(std::string_view pageText, int width);
    std::string Text() const;

 protected:
    QValidator::State Check(QString& text, int& caret) const override;
    QString WhyRefused() const override;
    void Enter() override {}
    void Leave() override {}

 private:
    int width_ = 1;
    mutable bool isTooWide_ = false;
};

}  // namespace tallymar
