#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSCombo.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/NumberEdit.h"
#include "platform/controls/sidtEdit.h"
#include "platform/controls/sitxEdit.h"
#include "platform_controls/ShownForm.h"

namespace tallymar::test {
namespace {

class FormKeys : public testing::Test {
 protected:
    void SetUp() override {
        form_.Put(new sitxEdit(8), "text", "Enter a text");
        list_ = form_.Put(new CSCombo, "list", "Select a list entry");
        list_->Fill(std::array{"DB", "SL", "MI"});
        form_.Put(new QCheckBox("Sold"), "check", "Check box if Asset was Sold");
        form_.Put(new sidbEdit(sidbEdit::Money()), "number");
        form_.Put(new sidtEdit, "date");
        button_ = form_.Put(new CSCmdBtn("&Save"), "button");
        form_.Show();
    }

    ShownForm form_;
    CSCombo* list_ = nullptr;
    CSCmdBtn* button_ = nullptr;
};

TEST_F(FormKeys, EnterAndDownGoOnAndUpGoesBackThroughEveryKindOfField) {
    ASSERT_EQ(form_.Focused(), "text");
    EXPECT_EQ(form_.Hint(), "Enter a text");
    const std::pair<const char*, const char*> hints[] = {
        {"list", "Select a list entry"}, {"check", "Check box if Asset was Sold"}, {"number", ""}, {"date", ""}, {"button", ""}};
    for (const auto& [next, hint] : hints) {
        form_.Press(form_.Focused() == "check" ? Qt::Key_Enter : Qt::Key_Return);
        EXPECT_EQ(form_.Focused(), next);
        EXPECT_EQ(form_.Hint(), hint) << next;
    }
    for (const char* previous : {"date", "number", "check", "list", "text"}) {
        form_.Press(Qt::Key_Up);
        EXPECT_EQ(form_.Focused(), previous);
    }
    form_.Press(Qt::Key_Down, Qt::KeypadModifier);
    EXPECT_EQ(form_.Focused(), "list");
}

TEST_F(FormKeys, ListsKeepTheirChoiceUnderTheMovingKeysAndChangeItByTheirOwn) {
    form_.Press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Up});
    ASSERT_EQ(form_.Focused(), "list");
    EXPECT_EQ(list_->Text(), "DB");
    form_.Press(Qt::Key_Right);
    EXPECT_EQ(list_->Text(), "SL");
    form_.Press({Qt::Key_Left, Qt::Key_Left});
    EXPECT_EQ(list_->Text(), "DB");
    form_.Type("m");
    EXPECT_EQ(list_->Text(), "MI");
    EXPECT_FALSE(list_->Choose("ZZ"));
    EXPECT_EQ(list_->Text(), "MI");
}

TEST_F(FormKeys, AltAndALetterThatIsNoCommandTypesAndChoosesNothing) {
    for (const char* name : {"text", "list", "number", "date"}) {
        ASSERT_EQ(form_.Focused(), name);
        for (const char c : {'m', '7'}) QTest::keyClick(form_.focusWidget(), c, Qt::AltModifier);
        EXPECT_EQ(form_.Focused(), name);
        form_.Press(Qt::Key_Tab);
        if (form_.Focused() == "check") form_.Press(Qt::Key_Tab);
    }
    EXPECT_EQ(form_.findChild<sitxEdit*>("text")->Text(), "");
    EXPECT_EQ(list_->Text(), "DB");
    EXPECT_EQ(form_.findChild<sidbEdit*>("number")->text(), "0.00");
    EXPECT_EQ(form_.findChild<sidtEdit*>("date")->Text(), "");
}

TEST_F(FormKeys, TheKeyThatTypesAThirdCharacterStillDoes) {
    QKeyEvent euro(QEvent::KeyPress, Qt::Key_unknown, Qt::AltModifier | Qt::ControlModifier, QStringLiteral("\u20ac"));
    QApplication::sendEvent(form_.focusWidget(), &euro);
    EXPECT_EQ(form_.findChild<sitxEdit*>("text")->Text(), "\x80");
}

TEST_F(FormKeys, TheWheelLeavesAClosedListAlone) {
    list_->setFocus();
    QWheelEvent wheel({5, 5}, list_->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(list_, &wheel);
    EXPECT_EQ(list_->Text(), "DB") << "an asset must not change by scrolling";
}

TEST_F(FormKeys, AResultStaysUntilTheNextEntry) {
    class Copying : public ShownForm {
     public:
        using CSForm::ShowResult;
    } form;
    auto* first = form.Put(new sidbEdit(sidbEdit::Money()), "first", "Enter an amount");
    auto* date = form.Put(new sidtEdit, "date", "Enter a date");
    form.Show();
    form.ShowResult("Copies added: 2");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.Hint(), "Copies added: 2");
    form.Type("x");
    EXPECT_EQ(form.Hint(), "Enter a date");
    form.Press(Qt::Key_Up);
    EXPECT_EQ(form.Hint(), "Not a date: nothing will be stored");
    EXPECT_EQ(form.findChild<QLabel*>("TextMessage")->accessibleName(), "Warning: Not a date: nothing will be stored");
    form.Type("999999999");
    EXPECT_EQ(form.Hint(), "Above the limit of 99,999,999.99");
    form.Press(Qt::Key_Backspace);
    EXPECT_EQ(form.Hint(), "Enter an amount");
    first->selectAll();
    QApplication::clipboard()->setText("-100,000,000");
    first->paste();
    EXPECT_EQ(form.Hint(), "Below the limit of -99,999,999.99");
    EXPECT_FALSE(date->IsDate());
}

TEST_F(FormKeys, EnterPressesAButton) {
    int pressed = 0;
    QObject::connect(button_, &QPushButton::clicked, button_, [&] { ++pressed; });
    button_->setFocus();
    form_.Press(Qt::Key_Return);
    form_.Press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(pressed, 2);
}

TEST_F(FormKeys, PageKeysAndTheNumericPadsSignsGoToTheForm) {
    auto* number = form_.findChild<sidbEdit*>("number");
    number->setFocus(Qt::TabFocusReason);
    form_.Press({Qt::Key_PageDown, Qt::Key_PageUp});
    form_.Press(Qt::Key_Plus, Qt::KeypadModifier);
    form_.Press(Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(form_.Pages, (std::vector<QString>{"next", "previous", "next", "previous"}));
    EXPECT_EQ(number->text(), "0.00");
    form_.Type("-5");  // the sign of the main keys is an entry
    EXPECT_EQ(number->text(), "-5");
    EXPECT_EQ(form_.Pages.size(), 4u);
}

TEST(Form, ModalRunEndsWithTheFormAndEscapePressesCancel) {
    class Modal : public ShownForm {
     public:
        Modal() { SetCancelButton(Put(new CSCmdBtn("Exit"), "cancel")); }
    } form;
    int unloaded = 0;
    QObject::connect(&form, &CSForm::Unloaded, &form, [&] { ++unloaded; });
    QObject::connect(form.findChild<CSCmdBtn*>("cancel"), &QPushButton::clicked, &form, &CSForm::Unload);
    QTimer::singleShot(0, &form, [&] {
        EXPECT_TRUE(form.isModal() && form.isVisible());
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    form.ShowModal();
    EXPECT_EQ(unloaded, 1);
    EXPECT_FALSE(form.isVisible());
}

TEST(Form, StaysWhileACommandIsAtWork) {
    ShownForm form;
    form.Show();
    {
        const class_Hourglass wait;
        form.Unload();
        EXPECT_TRUE(form.isVisible());
    }
    form.Unload();
    EXPECT_FALSE(form.isVisible());
}

}  // namespace
}  // namespace tallymar::test
