#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace tallymar::test {

// A user who has no mouse: everything goes to the widget that has the focus.
class Keyboard {
 public:
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1) {
        for (; times > 0; --times) QTest::keyClick(Focus(), key, modifiers);
    }
    // Replaces what the field holds, as it is selected on entry.
    void Type(const char* text) { QTest::keyClicks(Focus(), QString::fromLatin1(text)); }
    // The button or tab of that access key.
    void Alt(Qt::Key key) { Press(key, Qt::AltModifier); }

    // Presses Enter until the field of that name has the focus.
    void GoTo(const char* name) {
        const QString wanted = QString::fromLatin1(name);
        for (int presses = 0; Where() != wanted; ++presses) {
            if (presses == 200) throw std::runtime_error(std::string("Enter never comes to ") + name);
            Press(Qt::Key_Return);
        }
    }
    void Fill(const char* field, const char* text) {
        GoTo(field);
        // A list takes letters that come at once for one word, even across assets: no user is as fast as this one.
        if (qobject_cast<QComboBox*>(Focus())) QTest::qWait(QApplication::keyboardInputInterval() + 10);
        Type(text);
    }
    void Check(const char* field) {
        GoTo(field);
        Press(Qt::Key_Space);
    }

    static QString Where() { return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString(); }
    static std::string Name() { return Where().toStdString(); }

    // Presses Enter at each message box that comes up from now on, until one has come; its text is put into `said`.
    static void WhenMessage(QString& said) {
        QTimer::singleShot(kPoll, [&said] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return WhenMessage(said);
            said = box->text();
            QTest::keyClick(box, Qt::Key_Return);
        });
    }
    // Does this when a modal window of that name comes up.
    static void WhenModal(const char* name, std::function<void()> then) {
        QTimer::singleShot(kPoll, [name, then = std::move(then)] {
            QWidget* window = QApplication::activeModalWidget();
            if (!window || window->objectName() != QLatin1String(name)) {
                WhenModal(name, then);
                return;
            }
            // Offscreen there is no window manager to hand the keyboard on.
            QApplication::setActiveWindow(window);
            try {
                then();
            } catch (const std::exception& failure) {
                ADD_FAILURE() << name << ": " << failure.what();
                window->close();
            }
        });
    }
    // Enters the name when a file dialog comes up.
    static void WhenAskedForFile(const std::filesystem::path& file) {
        WhenModal("QFileDialog", [file] {
            auto* name = QApplication::activeModalWidget()->findChild<QLineEdit*>("fileNameEdit");
            name->setText(QString::fromStdString(file.string()));
            QTest::keyClick(name, Qt::Key_Return);
        });
    }

 private:
    static constexpr int kPoll = 20;  // milliseconds

    // Offscreen there is no window manager to give the keyboard back when a modal window has gone.
    static QWidget* Focus() {
        if (!QApplication::focusWidget()) {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                QWidget* modal = QApplication::activeModalWidget();  // nothing below it takes a key
                if (window->isVisible() && window->focusWidget() && (!modal || window == modal))
                    QApplication::setActiveWindow(window);
            }
        }
        if (QWidget* focus = QApplication::focusWidget()) return focus;
        throw std::runtime_error("nothing has the focus");
    }
};

}  // namespace tallymar::test
