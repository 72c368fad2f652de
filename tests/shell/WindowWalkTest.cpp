#include <functional>
#include <set>

#include <QAccessible>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "platform/controls/CSForm.h"
#include "shell/frmInit.h"
#include "shell/frmTallymar.h"
#include "support/TestCompany.h"

// Who hears the screen must be told of every control what it is and what it is called: a walk over all windows.
namespace tallymar {
namespace {

std::string NameOf(const QWidget* widget) {
    std::string name;
    for (; widget; widget = widget->parentWidget()) name = "/" + widget->objectName().toStdString() + name;
    return name;
}

// What the keyboard can go to, in the window and on the pages of its tabs that are not turned up.
int Walk(QWidget* window) {
    int controls = 0;
    for (QWidget* control : window->findChildren<QWidget*>()) {
        if (!(control->focusPolicy() & Qt::TabFocus) || control->focusProxy()) continue;
        if (control->window() != window->window()) continue;  // the list of a closed box
        ++controls;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(control);
        if (!told) {
            ADD_FAILURE() << NameOf(control);
            continue;
        }
        EXPECT_FALSE(told->text(QAccessible::Name).trimmed().isEmpty())
            << NameOf(control) << " (" << control->metaObject()->className() << ") has no name";
        const std::set<QAccessible::Role> nothing = {QAccessible::NoRole, QAccessible::Client, QAccessible::Pane,
                                                     QAccessible::Grouping, QAccessible::Border};
        EXPECT_FALSE(nothing.contains(told->role()))
            << NameOf(control) << " (" << control->metaObject()->className() << ") has no role";
    }
    return controls;
}

// Opens every window that a command of the menus shows and calls `look` with each once, while it is up.
class WindowWalk : public testing::Test {
 protected:
    WindowWalk() : window_(AppPath::At(folder_.Path(), folder_ / "no-program")) {
        test::TestCompany company;
        company.SetYearEnds(Date::FromYmd(2003, 12, 31));
        company.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 11, 1), 1000));
        company.Session.FileClose();
        std::filesystem::copy_file(company.File(), file_);
    }

    void ForEach(const std::function<void(CSForm& form)>& look) {
        ASSERT_TRUE(window_.OpenFirstCompany(file_));
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
        const auto lookOnce = [&](QWidget* shown) {
            auto* form = qobject_cast<CSForm*>(shown);
            if (form && walked_.insert(form->objectName().toStdString()).second) look(*form);
        };
        // A window that waits for an answer is looked at and left while its command waits.
        QTimer modal;
        QObject::connect(&modal, &QTimer::timeout, [&] {
            QWidget* shown = QApplication::activeModalWidget();
            if (!shown) return;
            lookOnce(shown);
            shown->close();
        });
        modal.start(10);
        std::set<Command> run = {Command::None, Command::FileExit, Command::FileClose};
        for (const MenuItem& item : MenuItems()) {
            if (!window_.HasWindow(item.Command) || !run.insert(item.Command).second) continue;
            window_.Run(item.Command, std::max(item.Index, 0));
            for (const QMdiSubWindow* child : window_.findChild<QMdiArea*>()->subWindowList()) lookOnce(child->widget());
            // A company that a command has taken away is the next one's to have.
            if (!window_.Session().IsOpen()) {
                ASSERT_TRUE(window_.OpenFirstCompany(file_)) << item.Name;
            }
        }
        modal.stop();
        frmInit init([](QWidget*) { return false; }, [](QWidget*) { return false; });
        lookOnce(&init);
        EXPECT_GE(walked_.size(), 25U) << "there are more windows than that";
    }

    test::TempFolder folder_;
    const std::filesystem::path file_ = folder_ / "client.mdb";
    Tallymar window_;
    std::set<std::string> walked_;
};

TEST_F(WindowWalk, EveryControlHasANameAndARole) {
    ForEach([](CSForm& form) { EXPECT_GT(Walk(&form), 0) << form.objectName().toStdString(); });
}

// 1366 x 768 at 100% and 1920 x 1080 at 150%: what all of a window must fit in, its commands and status line with it. Beside a
// child window stand the main window's title, menu, toolbar and status bar.
TEST_F(WindowWalk, EveryWindowFitsTheSmallestScreens) {
    const QFont before = QApplication::font();
    QApplication::setFont(QFont("Arial", 10));
    constexpr QSize kModalRoom(1280, 680);
    constexpr QSize kChildRoom(1280, 560);
    ForEach([&](CSForm& form) {
        const QSize room = form.isWindow() ? kModalRoom : kChildRoom;
        const QSize least = form.minimumSizeHint().expandedTo(form.minimumSize());
        EXPECT_TRUE(least.boundedTo(room) == least)
            << form.objectName().toStdString() << " needs " << least.width() << " x " << least.height();
    });
    QApplication::setFont(before);
}

}  // namespace
}  // namespace tallymar
