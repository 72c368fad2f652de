#include <QApplication>
#include <QClipboard>

#include <gtest/gtest.h>

#include "platform/controls/NumberEdit.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sidtEdit.h"
#include "platform/controls/sitxEdit.h"
#include "platform_controls/ShownForm.h"

namespace tallymar::test {
namespace {

CurrencyAmount Amount(const char* text) {
    return CurrencyAmount::Parse(text).value();
}

void PasteInto(QLineEdit* edit, const char* text) {
    QApplication::clipboard()->setText(QString::fromUtf8(text));
    edit->paste();
}

// ---- text

TEST(TextEntry, RefusesWhatTheCodePageCannotHold) {
    ShownForm form;
    auto* edit = form.Put(new sitxEdit(40));
    form.Show();
    form.Type("Caf\u00e9 \u20ac5 \u0416\u4e2d!");
    EXPECT_EQ(edit->Text(),
              "Caf\xe9 \x80"
              "5 !");
    PasteInto(edit, " \u0416");  // a paste is taken whole or not at all
    EXPECT_EQ(edit->text(), QString::fromUtf8("Caf\u00e9 \u20ac5 !"));
}

TEST(TextEntry, TakesItsCharactersUpToItsWidthAndLeavesTheCaretWhereItIs) {
    ShownForm form;
    auto* edit = form.Put(new sitxEdit(6));
    edit->SetUpperCase(true);
    edit->SetAllowed(sitxEdit::kLettersAndDigits);
    form.Show();
    form.Type("a-b *cd");
    form.Press({Qt::Key_Left, Qt::Key_Left});
    form.Type("xy");
    EXPECT_EQ(edit->Text(), "ABXYCD");
    EXPECT_EQ(edit->cursorPosition(), 4);
    form.Type("z");
    EXPECT_EQ(edit->Text(), "ABXYCD") << "no wider than its field";
}

TEST(TextEntry, PatternPutsItsOwnSeparatorsIn) {
    ShownForm form;
    auto* edit = form.Put(new sitxEdit(16));
    edit->SetPattern("999-99-9999");
    form.Show();
    form.Type("12345x6789");
    EXPECT_EQ(edit->Text(), "123-45-6789");
    form.Type("0");
    EXPECT_EQ(edit->Text(), "123-45-6789");
    // Backspace goes through the separators without sticking at one.
    for (int i = 0; i < 6; ++i) form.Press(Qt::Key_Backspace);
    EXPECT_EQ(edit->Text(), "123");
    form.Type("-45");
    EXPECT_EQ(edit->Text(), "123-45");
    form.Press(Qt::Key_Home);
    form.Type("9");
    EXPECT_EQ(edit->Text(), "912-34-5");
    EXPECT_EQ(edit->cursorPosition(), 1);
}

TEST(TextEntry, StoredTextThatFitsNoPatternStaysUntilItIsEdited) {
    ShownForm form;
    auto* edit = form.Put(new sitxEdit(16));
    edit->SetPattern("999-99-9999");
    edit->SetText("AB 12-34");
    form.Show();
    form.Press(Qt::Key_Tab);
    EXPECT_EQ(edit->Text(), "AB 12-34");
    edit->setFocus(Qt::TabFocusReason);
    form.Press({Qt::Key_End, Qt::Key_Backspace});
    EXPECT_EQ(edit->Text(), "AB 12-3");
}

// ---- numbers

class MoneyEntry : public testing::Test {
 protected:
    void SetUp() override {
        edit_ = form_.Put(new sidbEdit(sidbEdit::Money()), QStringLiteral("sidbBasis(1)"));
        form_.Put(new sitxEdit(5), QStringLiteral("other"));
        QObject::connect(edit_, &EntryEdit::Changed, edit_, [this] { changes_.push_back(edit_->Value().ToText()); });
        form_.Show();
    }

    ShownForm form_;
    sidbEdit* edit_ = nullptr;
    std::vector<std::string> changes_;
};

TEST_F(MoneyEntry, TypingReplacesTheSelectedValueAndGroupsAsItGoes) {
    edit_->SetValue(Amount("55"));
    edit_->clearFocus();
    edit_->setFocus(Qt::TabFocusReason);
    form_.Type("1234567.5");
    EXPECT_EQ(edit_->text(), "1,234,567.5");
    EXPECT_EQ(edit_->cursorPosition(), edit_->text().size());
    form_.Press(Qt::Key_Tab);
    EXPECT_EQ(edit_->text(), "1,234,567.50");
    EXPECT_EQ(edit_->Value(), Amount("1234567.5"));
}

TEST_F(MoneyEntry, ChangesAreToldOncePerNewValueWhileTyping) {
    form_.Type("100.0");
    form_.Press(Qt::Key_Tab);  // to "100.00": no other value
    edit_->SetValue(Amount("7"));
    EXPECT_EQ(changes_, (std::vector<std::string>{"1", "10", "100", "7"}));
}

TEST_F(MoneyEntry, DigitsTypedInTheMiddleStayTogether) {
    edit_->SetValue(Amount("1234.56"));
    form_.Press({Qt::Key_Home, Qt::Key_Right});  // after the 1
    form_.Type("98");
    EXPECT_EQ(edit_->text(), "198,234.56");
    EXPECT_EQ(edit_->cursorPosition(), 3);
    // Both deleting keys take a digit where a comma lies beside the caret.
    form_.Press(Qt::Key_Delete);
    EXPECT_EQ(edit_->text(), "19,834.56");
    form_.Press({Qt::Key_Left, Qt::Key_Right, Qt::Key_Backspace});
    EXPECT_LT(edit_->Value(), Amount("19834.56"));
}

TEST_F(MoneyEntry, SignPointAndLimits) {
    form_.Type("-12.345-6.");
    EXPECT_EQ(edit_->text(),
              "-12.34");  // a third decimal, a second sign and a second point are refused; 5 and 6 are both too many
    form_.Press(Qt::Key_Tab);
    EXPECT_EQ(edit_->Value(), Amount("-12.34"));
    edit_->setFocus(Qt::TabFocusReason);
    form_.Type("999999999");
    EXPECT_EQ(edit_->text(), "99,999,999");
    edit_->selectAll();
    form_.Type(".5");
    form_.Press(Qt::Key_Tab);
    EXPECT_EQ(edit_->text(), "0.50");
    edit_->setFocus(Qt::TabFocusReason);
    form_.Type("-");
    form_.Press(Qt::Key_Tab);
    EXPECT_EQ(edit_->text(), "0.00");
}

TEST_F(MoneyEntry, PastesOfOtherPrograms) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"$1,234.50", "1234.5"}, {"(1,234.5)", "-1234.5"}, {" 42 ", "42"}, {"100,000,000", "42"}, {"12a", "42"}, {"1.005", "42"}};
    for (const auto& [pasted, expected] : cases) {
        edit_->selectAll();
        PasteInto(edit_, pasted);
        EXPECT_EQ(edit_->Value(), Amount(expected)) << pasted;
    }
}

TEST_F(MoneyEntry, StoredValuesOutsideTheLimitsAreNotTouched) {
    edit_->SetValue(Amount("123456789.12"));
    edit_->setFocus(Qt::TabFocusReason);
    form_.Press(Qt::Key_Tab);
    EXPECT_EQ(edit_->Value(), Amount("123456789.12"));
    edit_->SetValue(Amount("-0.005"));  // halves away from zero
    EXPECT_EQ(edit_->text(), "-0.01");
    edit_->SetValue(Amount("-0.0049"));
    EXPECT_EQ(edit_->text(), "0.00");
}

TEST(NumberEntry, PercentagesAndLivesHoldTheirLimits) {
    ShownForm form;
    auto* use = form.Put(new sidbEdit({Units(0), Units(100), 2, false}));
    form.Show();
    form.Type("-100.5");
    EXPECT_EQ(use->Value(), Units(100));  // no sign below a limit of 0, no decimals that lead past 100
    use->selectAll();
    form.Type("101");
    EXPECT_EQ(use->text(), "10");
}

TEST(NumberEntry, AYearOnItsWayMayLieBelowItsLimitUntilTheFieldIsLeft) {
    ShownForm form;
    auto* year = form.Put(new silgEdit(1900, 2100), QStringLiteral("year"));
    form.Put(new sitxEdit(5), QStringLiteral("next"), QStringLiteral("The next field"));
    year->SetValue(1999);
    form.Show();
    std::vector<int> changes;
    QObject::connect(year, &EntryEdit::Changed, [&] { changes.push_back(year->Value()); });
    form.Type("2003");
    EXPECT_EQ(changes, std::vector<int>{2003}) << "2, 20 and 200 are no years to store";
    form.Press(Qt::Key_Tab);
    EXPECT_EQ(year->Value(), 2003);
    year->setFocus(Qt::TabFocusReason);
    form.Type("25");
    EXPECT_EQ(year->Value(), 25);
    form.Press(Qt::Key_Tab);
    EXPECT_EQ(year->Value(), 2003);
    EXPECT_TRUE(form.Hint().startsWith("25 is not between 1900 and 2100.")) << form.Hint().toStdString();
    year->setFocus(Qt::TabFocusReason);
    form.Type("0");
    form.Press(Qt::Key_Tab);
    EXPECT_EQ(year->Value(), 0);  // none
    year->setFocus(Qt::TabFocusReason);
    form.Type("1.5,2-3");
    EXPECT_EQ(year->text(), "1523");
}

// ---- dates

// What is read as a date is tested beside ParseDate.
TEST(DateEntry, ShowsADateOneWayOnceTheFieldIsLeftAndMarksATextThatIsNone) {
    const std::pair<const char*, const char*> cases[] = {
        {"081503", "8/15/2003"}, {"12/31/45", "12/31/1945"}, {"2/29/2003", "2/29/2003"}, {"soon", "soon"}, {"", ""}};
    for (const auto& [typed, shown] : cases) {
        ShownForm form;
        auto* edit = form.Put(new sidtEdit);
        form.Put(new sitxEdit(5));
        form.Show();
        form.Type(typed);
        EXPECT_EQ(edit->text(), typed);  // nothing changes under the user's hands
        EXPECT_TRUE(edit->toolTip().isEmpty());
        form.Press(Qt::Key_Tab);
        EXPECT_EQ(edit->text(), shown);
        const bool date = edit->text().endsWith("45") || edit->text().startsWith("8/");
        EXPECT_EQ(edit->IsDate(), date) << typed;
        EXPECT_EQ(edit->Value().IsNone(), !date) << typed;
        EXPECT_EQ(edit->toolTip().isEmpty(), date || edit->text().isEmpty()) << typed;
        edit->SetValue(Date::FromYmd(2003, 12, 31));
        EXPECT_EQ(edit->Text(), "12/31/2003");
        EXPECT_TRUE(edit->toolTip().isEmpty());
    }
}

}  // namespace
}  // namespace tallymar::test
