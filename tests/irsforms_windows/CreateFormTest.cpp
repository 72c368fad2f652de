#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "irsforms/frmCreateForm.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

class CreateForms : public testing::Test {
 protected:
    CreateForms() {
        company_.SetYearEnds(Date::FromYmd(2002, 12, 31));
        for (const char* number : {"A1", "A2"}) {
            AssetRecord asset = test::Machine(number, Date::FromYmd(2002, 3, 1), 1000);
            asset.Division = number;
            asset.CurrDepr[2] = Units(320);
            asset.ClassLife = Units(25);
            company_.Session.AddAssetRecord(asset);
        }
        // Message boxes are read and acknowledged as they come up.
        QObject::connect(&acknowledge_, &QTimer::timeout, [this] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                told_.push_back(box->windowTitle() + ": " + box->text());
                box->accept();
            }
        });
        acknowledge_.start(5);
    }

    template <typename Control>
    Control* The(frmCreateForm& form, const char* name) {
        auto* control = form.findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    void Press(std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys) QTest::keyClick(QApplication::focusWidget(), key);
    }

    test::TestCompany company_;
    std::vector<QString> told_;
    QTimer acknowledge_;
};

TEST_F(CreateForms, IsFilledInAndRunFromTheKeyboard) {
    frmCreateForm form("4562", company_.Session);
    form.show();
    QApplication::setActiveWindow(&form);
    EXPECT_EQ(form.objectName(), "frmCreate4562");
    ASSERT_EQ(QApplication::focusWidget()->objectName(), "silgBook");
    EXPECT_EQ(The<QLabel>(form, "TextMessage")->text(), "1 = Federal,  2 = State,  3 = Bookkeeping,  4 = A.M.T.");
    QTest::keyClicks(QApplication::focusWidget(), "2");
    Press({Qt::Key_Return});
    QTest::keyClicks(QApplication::focusWidget(), "A1");
    Press({Qt::Key_Down, Qt::Key_Up, Qt::Key_Down, Qt::Key_Tab});
    ASSERT_EQ(QApplication::focusWidget()->objectName(), "sitxType");
    QTest::keyClicks(QApplication::focusWidget(), "1120s");
    Press({Qt::Key_Return});
    ASSERT_EQ(QApplication::focusWidget()->objectName(), "cmdCreate4562");
    Press({Qt::Key_Return});
    QTest::qWait(200);

    EXPECT_EQ(told_, std::vector<QString>{"Form 4562: Number of Assets processed 2"});
    const QString notes = The<QPlainTextEdit>(form, "txtLeftOut")->toPlainText();
    EXPECT_EQ(notes.toStdString(),
              "A1: class life 25, on no line\nCurrent depreciation: 320.00 in the book, 0.00 on the form, 320.00 left out");
    EXPECT_EQ(The<QPushButton>(form, "cmdCancel")->text(), "Done");
    EXPECT_TRUE(The<QLabel>(form, "TextMessage")->text().startsWith("Another run adds to this one"));
    EXPECT_FALSE(The<QPushButton>(form, "cmdEdit4562")->isEnabled());
    EXPECT_TRUE(std::filesystem::exists(company_.Folder / "245621.LDT"));
}

TEST_F(CreateForms, SaysWhatIsMissingAndStaysInTheField) {
    frmCreateForm form("4562", company_.Session);
    form.show();
    QApplication::setActiveWindow(&form);
    auto* message = The<QLabel>(form, "TextMessage");
    Press({Qt::Key_Delete, Qt::Key_Return});
    The<QPushButton>(form, "cmdCreate4562")->click();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "silgBook");
    EXPECT_EQ(message->text(), "Which Book (1 thru 4)");
    QTest::keyClicks(QApplication::focusWidget(), "2");
    Press({Qt::Key_Return, Qt::Key_Return, Qt::Key_Return});
    QTest::keyClicks(QApplication::focusWidget(), "1120x");
    The<QPushButton>(form, "cmdCreate4562")->click();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "sitxType");
    EXPECT_EQ(message->text(), "There is no entity type \"1120X\"; enter 1040, 1041, 1120, 1120S or 1065");
    EXPECT_FALSE(std::filesystem::exists(company_.Folder / "245621.LDT"));
}

TEST_F(CreateForms, EachFormBringsItsOwnWindowAndOpensTheViewerOnItsFirstPage) {
    std::vector<std::string> pages;
    std::vector<std::string> windows;
    for (const FormInfo* info : AllForms()) {
        frmCreateForm form(info->Name, company_.Session, [&](std::string_view page) { pages.emplace_back(page); });
        form.show();
        windows.push_back(form.objectName().toStdString());
        EXPECT_EQ(form.findChild<QLineEdit*>("sitxType") != nullptr, !info->TypeCaption.empty()) << info->Name;
        The<QPushButton>(form, info->EditButton.data())->click();
        QTest::keyClick(&form, Qt::Key_Escape);
        EXPECT_FALSE(form.isVisible());
    }
    EXPECT_EQ(pages, (std::vector<std::string>{"245621", "247971", "2D1", "242551", "288241"}));
    EXPECT_EQ(windows,
              (std::vector<std::string>{"frmCreate4562", "frmCreate4797", "frmCreateSchD", "frmCreate4255", "frmCreate8824"}));
}

}  // namespace
}  // namespace tallymar
