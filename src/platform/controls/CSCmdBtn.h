#pragma once

#include <QPushButton>
#include <QShortcutEvent>

namespace tallymar {

// A command button; Enter presses it as Space does, and its access key does so at once.
class CSCmdBtn : public QPushButton {
    Q_OBJECT

 public:
    explicit CSCmdBtn(const QString& caption, QWidget* parent = nullptr) : QPushButton(caption, parent) { setAutoDefault(true); }

 protected:
    bool event(QEvent* event) override {
        if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous())
            return QPushButton::event(event);
        click();
        return true;
    }
};

}  // namespace tallymar
