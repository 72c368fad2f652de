#pragma once

#include "platform/controls/CSForm.h"

namespace tallymar {

class frmAbout : public CSForm {
    Q_OBJECT

 public:
    explicit frmAbout(QWidget* parent = nullptr);

 private:
    void ShowSystemInformation();
};

}  // namespace tallymar
