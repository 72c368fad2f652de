#include <QLabel>
#include <QLineEdit>

#include "loans/frmLoans.h"
#include "support/Keyboard.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

class Loans : public testing::Test, protected test::Keyboard {
 protected:
    Loans() {
        form_.show();
        QApplication::setActiveWindow(&form_);
    }

    std::string Text(LoanBox box) { return form_.findChild<QLineEdit*>(InfoOf(box).Control.data())->text().toStdString(); }
    bool IsMarked(LoanBox box) {
        const int index = static_cast<int>(box);
        auto* mark = form_.findChild<QLabel*>(QStringLiteral("lblSolved(%1)").arg(index));
        const bool bold = form_.findChild<QLineEdit*>(InfoOf(box).Control.data())->font().bold();
        EXPECT_EQ(bold, !mark->text().isEmpty());
        return bold;
    }
    void GoBackTo(LoanBox box) {
        const std::string wanted(InfoOf(box).Control);
        for (int presses = 0; Name() != wanted && presses < 20; ++presses) Press(Qt::Key_Up);
        ASSERT_EQ(Name(), wanted);
    }
    std::string Said() { return form_.findChild<QLabel*>("TextMessage")->text().toStdString(); }

    test::TempFolder folder_;
    frmLoans form_{folder_.Path()};
};

TEST_F(Loans, AreSolvedFromTheKeyboardAndTheSolvedBoxIsMarked) {
    Fill("Text2", "10000");
    Fill("Text7", "8");
    Alt(Qt::Key_S);
    EXPECT_EQ(Text(LoanBox::Payment), "313.36");
    EXPECT_EQ(Text(LoanBox::Amount), "10,000.00");
    EXPECT_TRUE(IsMarked(LoanBox::Payment));
    EXPECT_EQ(Said(), "Payment each period is solved.");
    GoBackTo(LoanBox::Amount);
    Type("20000");
    EXPECT_FALSE(IsMarked(LoanBox::Payment));  // the result of other terms
    Alt(Qt::Key_S);
    EXPECT_EQ(Text(LoanBox::Payment), "626.73");
    EXPECT_TRUE(IsMarked(LoanBox::Payment));
    GoBackTo(LoanBox::Periods);
    Press(Qt::Key_Delete);
    Alt(Qt::Key_S);
    EXPECT_EQ(Text(LoanBox::Periods), "36");
    EXPECT_TRUE(IsMarked(LoanBox::Periods));
    EXPECT_FALSE(IsMarked(LoanBox::Payment));
}

// What cannot be solved for is not printed as something else, and the boxes stay as they are.
TEST_F(Loans, ARefusedPrintLeavesTheBoxesAndSaysWhy) {
    Fill("Text2", "10000");
    Fill("Text3", "0");
    Fill("Text7", "8");
    for (int attempt = 0; attempt < 2; ++attempt) {
        QString asked;
        WhenModal("", [&] {
            asked = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->text();
            Press(Qt::Key_Y, Qt::AltModifier);
        });
        Alt(Qt::Key_P);
        EXPECT_EQ(asked, "Print the schedule of this loan?");
        EXPECT_EQ(Text(LoanBox::Payment), "");
        EXPECT_EQ(Said(), "The payment cannot be computed without an amortization period and a number of periods per year.");
    }
    Alt(Qt::Key_S);
    EXPECT_EQ(Text(LoanBox::Payment), "0.00");
    EXPECT_FALSE(IsMarked(LoanBox::Payment));
}

}  // namespace
}  // namespace tallymar
