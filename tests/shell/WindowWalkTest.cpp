#include <set>

#include <QAccessible>
#include <QAction>
#include <QDialog>
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

TEST(Accessible, EveryControlOfEveryWindowHasANameAndARole) {
    test::TempFolder folder;
    const std::filesystem::path file = folder / "client.mdb";
    {
        test::TestCompany company;
        company.SetYearEnds(Date::FromYmd(2003, 12, 31));
        company.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 11, 1), 1000));
        company.Session.FileClose();
        std::filesystem::copy_file(company.File(), file);
    }
    Tallymar window(AppPath::At(folder.Path(), folder / "no-program"));
    ASSERT_TRUE(window.OpenFirstCompany(file));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));

    // Windows that wait for an answer are walked and left while their command waits.
    std::set<std::string> walked;
    const auto walk = [&walked](QWidget* form) {
        const std::string name = form->objectName().toStdString();
        if (!walked.insert(name).second) return;
        EXPECT_GT(Walk(form), 0) << name;
    };
    QTimer modal;
    QObject::connect(&modal, &QTimer::timeout, [&] {
        QWidget* shown = QApplication::activeModalWidget();
        if (!shown) return;
        auto* form = qobject_cast<CSForm*>(shown);
        if (form) walk(form);
        form ? static_cast<void>(form->Unload()) : static_cast<void>(shown->close());
    });
    modal.start(10);
    std::set<Command> run;
    for (const MenuItem& item : MenuItems()) {
        const std::set<Command> leaves = {Command::None, Command::FileExit, Command::FileClose};
        if (leaves.contains(item.Command) || !window.HasWindow(item.Command) || !run.insert(item.Command).second) continue;
        window.Run(item.Command, std::max(item.Index, 0));
        for (const QMdiSubWindow* child : window.findChild<QMdiArea*>()->subWindowList()) walk(child->widget());
        // A company that a command has taken away is the next one's to have.
        if (!window.Session().IsOpen()) {
            ASSERT_TRUE(window.OpenFirstCompany(file)) << item.Name;
        }
    }
    modal.stop();
    frmInit init([](QWidget*) { return false; }, [](QWidget*) { return false; });
    walk(&init);
    for (const char* name : {"frmEditAsset", "frmFindAsset", "frmAllBooks", "frmEditCompany", "frmEditUser", "frmComputeOptions",
                             "frmReportOptions", "frmLabelOptions", "frmLoans", "frmImportOptions", "frmCopyAsset", "frmAbout"}) {
        EXPECT_TRUE(walked.contains(name)) << name;
    }
}

}  // namespace
}  // namespace tallymar
