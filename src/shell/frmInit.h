#pragma once

#include <functional>

#include "platform/controls/CSForm.h"

namespace tallymar {

// The first question of a start: a new company file or an existing one.
class frmInit : public CSForm {
    Q_OBJECT

 public:
    // What New and Open do; each tells whether a company is now open. While none is, the form stays.
    using Choice = std::function<bool(QWidget* over)>;

    frmInit(Choice fileNew, Choice fileOpen, QWidget* parent = nullptr);

    // No company was opened: the program is to end.
    bool Cancelled() const { return cancelled_; }

 private:
    void Choose(const Choice& choice);

    bool cancelled_ = true;
};

}  // namespace tallymar
