#pragma once

#include <vector>

#include <gtest/gtest.h>
#include <QApplication>
#include <QTest>
#include <QVBoxLayout>

#include "platform/controls/CSForm.h"

namespace tallymar::test {

// A form with fields one below the other, to press keys in.
class ShownForm : public CSForm {
 public:
    ShownForm() : CSForm("frmShown", QStringLiteral("Shown")), layout_(new QVBoxLayout(this)) {
        layout_->addWidget(MakeHintLine());
    }

    template <typename Field>
    Field* Put(Field* field, const QString& name = {}, const QString& hint = {}) {
        field->setObjectName(name);
        if (!hint.isEmpty()) SetHint(field, hint);
        layout_->addWidget(field);
        return field;
    }
    void Show() {
        show();
        activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
    }
    QString Hint() const { return findChild<QLabel*>(QStringLiteral("TextMessage"))->text(); }
    QString Focused() const { return focusWidget() ? focusWidget()->objectName() : QString(); }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    void Press(std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys) Press(key);
    }
    // QTest knows the keys of ASCII alone; any other character comes as a keyboard layout would send it.
    void Type(const char* utf8) {
        for (const QChar c : QString::fromUtf8(utf8)) {
            if (c.unicode() < 128) {
                QTest::keyClick(focusWidget(), c.toLatin1());
            } else {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
                QApplication::sendEvent(focusWidget(), &press);
            }
        }
    }

    std::vector<QString> Pages;

 protected:
    bool OnPage(Page page) override {
        Pages.push_back(page == Page::Next ? QStringLiteral("next") : QStringLiteral("previous"));
        return true;
    }

 private:
    QVBoxLayout* layout_;
};

}  // namespace tallymar::test
