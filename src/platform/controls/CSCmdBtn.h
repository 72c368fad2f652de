#pragma once

#include <QPushButton>

namespace tallymar {

// A command button; Enter presses it as Space does.
class CSCmdBtn : public QPushButton {
    Q_OBJECT

 public:
    explicit CSCmdBtn(const QString& caption, QWidget* parent = nullptr) : QPushButton(caption, parent) { setAutoDefault(true); }
};

}  // namespace tallymar
