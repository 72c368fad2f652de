#include <functional>

#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "platform/controls/EventGuard.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::test {
namespace {

class Guard : public testing::Test {
 protected:
    void SetUp() override {
        Application()->SetReporter([this](const QString& text) { reports_.push_back(text); });
    }
    void TearDown() override { Application()->SetReporter({}); }

    static GuardedApplication* Application() { return qobject_cast<GuardedApplication*>(QCoreApplication::instance()); }

    std::vector<QString> reports_;
};

TEST_F(Guard, AFailureEndsItsCommandAndTheProgramGoesOn) {
    QPushButton button;
    int runs = 0;
    QObject::connect(&button, &QPushButton::clicked, &button, Guarded([&] {
        ++runs;
        throw PlatformError(Failure::Overflow);
    }));
    button.click();
    button.click();
    EXPECT_EQ(runs, 2);
    ASSERT_EQ(reports_.size(), 2u);
    EXPECT_EQ(reports_[0], "Overflow\n\n(Error 6)");
}

TEST_F(Guard, AnEventHandlerThatNobodyGuardedIsCaughtToo) {
    class Thrower : public QWidget {
     protected:
        void keyPressEvent(QKeyEvent*) override { throw std::runtime_error("no such thing"); }
    } widget;
    QTest::keyClick(&widget, Qt::Key_A);
    QTest::keyClick(&widget, Qt::Key_B);
    EXPECT_EQ(reports_, (std::vector<QString>{"no such thing", "no such thing"}));
}

TEST_F(Guard, MessagesReadRightWhetherTheyQuoteAPathOrAText) {
    EXPECT_EQ(MessageOf(std::runtime_error("/home/Jos\xc3\xa9/a.mdb")), QString::fromUtf8("/home/José/a.mdb"));
    EXPECT_EQ(MessageOf(std::runtime_error("Jos\xe9")), QString::fromUtf8("José"));
}

// Answers the message box that comes up next.
void Answer(const std::function<void(QMessageBox&)>& answer) {
    QTimer::singleShot(0, [answer] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), "Confirm");
        answer(*box);
    });
}

TEST(QtPrompts, NoIsTheDefaultAnswerAndEscapeMeansNo) {
    QtPrompts prompts(nullptr);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        Answer([key](QMessageBox& box) { QTest::keyClick(&box, key); });
        EXPECT_FALSE(prompts.AskYesNo("Delete Asset 000123?", "Confirm"));
    }
    Answer([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
    EXPECT_TRUE(prompts.AskYesNo("Delete Asset 000123?", "Confirm"));
}

TEST(QtPrompts, ProgressReachesTheBarHoweverManyTheSteps) {
    QProgressBar bar;
    bar.show();
    QtPrompts prompts(nullptr, &bar);
    prompts.ProgressStart(10'000'000'000);
    QTest::qSleep(60);
    prompts.ProgressStep(5'000'000'000);
    EXPECT_EQ(bar.value() * 2, bar.maximum());
    prompts.ProgressStart(0);
    EXPECT_EQ(bar.value(), 0);
}

}  // namespace
}  // namespace tallymar::test
