#include <functional>
#include <set>
#include <string>

#include <QAbstractItemView>
#include <QAction>
#include <QHelpEngineCore>
#include <QHelpLink>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include <gtest/gtest.h>

#include "help/HelpText.h"
#include "shell/frmHelp.h"
#include "shell/frmTallymar.h"
#include "support/Keyboard.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

using test::Keyboard;

class Help : public testing::Test {
 protected:
    Help() : window_(AppPath::At(folder_.Path(), test::kProgramFolder)), books_(test::OpenBooks()) {
        test::TestCompany company;
        company.SetYearEnds(Date::FromYmd(2003, 12, 31));
        company.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 11, 1), 1000));
        company.Session.FileClose();
        std::filesystem::copy_file(company.File(), folder_ / "client.mdb");
        window_.OpenFirstCompany(folder_ / "client.mdb");
        window_.show();
        window_.activateWindow();
    }
    bool HasPage(const QString& key) { return !books_->documentsForIdentifier(key).isEmpty(); }
    // The fields and commands of a window that the keyboard can be in and that have no place of their own in the help.
    void LookAt(const QWidget* form) {
        if (const QString window = HelpKeysOf(form).value(0); !HasPage(window)) missing_.insert(window);
        for (const QWidget* control : form->findChildren<QWidget*>()) {
            const QString name = control->objectName();
            if (control->focusPolicy() == Qt::NoFocus || name.isEmpty() || name.startsWith("qt_")) continue;
            if (qobject_cast<const QTabBar*>(control->parent())) continue;  // the toolkit's arrows for tabs
            const QString key = HelpKeysOf(control).value(0);
            if (key.startsWith(form->objectName() + ".") && !HasPage(key)) missing_.insert(key);
        }
    }
    // Runs the command, looks at the windows that are open then, and closes a modal one.
    void LookAtWindowsOf(const MenuItem& item) {
        QTimer closer;
        QWidget* looked = nullptr;
        QObject::connect(&closer, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal || modal == looked) return;
            looked = modal;
            LookAt(modal);
            modal->close();
        });
        closer.start(5);
        window_.Run(item.Command, std::max(item.Index, 0));
        QTest::qWait(1);
        for (const QMdiSubWindow* each : window_.findChild<QMdiArea*>()->subWindowList()) LookAt(each->widget());
        for (const auto* help : window_.findChildren<frmHelp*>()) LookAt(help);
    }
    static QString Shown(const QWidget* host) {
        const auto* help = host->findChild<frmHelp*>();
        return help ? help->Shown().toString().section('/', -1) : QString();
    }

    test::TempFolder folder_;
    Tallymar window_;
    std::unique_ptr<QHelpEngineCore> books_;
    Keyboard keys_;
    std::set<QString> missing_;
};

TEST_F(Help, EveryCommandAndEveryFieldOfItsWindowsHasAPlace) {
    using enum Command;
    // They ask for a file, or end.
    const std::set<Command> noWindow = {None, FileNew, FileOpen, FileClose, FileExit, Backup, Restore, DeleteDB};
    for (const MenuItem& item : MenuItems()) {
        if (const QString name = QString::fromLatin1(item.Name.data()); !HasPage(name)) missing_.insert(name);
        if (!noWindow.contains(item.Command) && window_.HasWindow(item.Command)) LookAtWindowsOf(item);
    }
    for (const QString& each : missing_) ADD_FAILURE() << each.toStdString() << " is not in the help";
}

TEST_F(Help, F1ShowsThePageOfTheFieldThatHasTheKeyboard) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    ASSERT_EQ(Keyboard::Where(), "sitxAssetNum");
    keys_.Press(Qt::Key_F1);
    EXPECT_EQ(Shown(&window_), "asset-general.html#number");
    // A control array has one place; the help that is open is used again.
    window_.findChild<QWidget*>("sidbBasis(3)")->setFocus();
    QTest::keyClick(window_.findChild<QWidget*>("sidbBasis(3)"), Qt::Key_F1);
    EXPECT_EQ(Shown(&window_), "asset-book.html#asset-cost");
    EXPECT_EQ(window_.findChildren<frmHelp*>().size(), 1);
    // A field without a place of its own leads to what it stands in.
    auto* mirror = window_.findChild<QWidget*>("sitxDescription2(1)");
    QTest::keyClick(mirror, Qt::Key_F1);
    EXPECT_EQ(Shown(&window_), "assets.html#the-tabs");
    auto* menu = window_.findChild<QMenu*>("mnuTools");
    menu->popup({});
    menu->setActiveAction(window_.findChild<QAction*>("mnuBackup"));
    QTest::keyClick(menu, Qt::Key_F1);
    EXPECT_FALSE(menu->isVisible());
    EXPECT_EQ(Shown(&window_), "backup.html");
}

TEST_F(Help, StandsOverAModalWindowAndCanBeUsedThere) {
    QString shown, page;
    Keyboard::WhenModal("frmReportOptions", [&] {
        QWidget* form = QApplication::activeModalWidget();
        QTest::keyClick(form->findChild<QLineEdit*>("sitxDepartment"), Qt::Key_F1);
        shown = Shown(form);
        auto* help = form->findChild<frmHelp*>();
        QTest::mouseClick(help->findChild<QPushButton*>("cmdTutorial"), Qt::LeftButton);
        page = help->Shown().toString();
        help->close();
        form->close();
    });
    window_.findChild<QAction*>("mnuReportsRun(0)")->trigger();
    EXPECT_EQ(shown, "reports.html#department");
    EXPECT_EQ(page, "qthelp://tallymar.helptutorial/doc/index.html");
}

TEST_F(Help, F1InAMessageShowsWhereItIsToldOf) {
    QString shown, words;
    Keyboard::WhenModal("", [&] {
        QWidget* box = QApplication::activeModalWidget();
        QTest::keyClick(box, Qt::Key_F1);
        shown = Shown(box);
        words = box->findChild<QTextBrowser*>()->textCursor().selectedText();
        box->close();
    });
    window_.findChild<QPushButton*>("cmdDelete")->click();
    EXPECT_EQ(shown, "messages-assets.html");
    EXPECT_EQ(words, "Delete Asset");
}

TEST_F(Help, ContentsIndexAndSearchLeadToPages) {
    window_.findChild<QAction*>("mnuHelpIndex")->trigger();
    auto* help = window_.findChild<frmHelp*>();
    ASSERT_NE(help, nullptr);
    // Contents and index are read beside.
    for (const char* list : {"HelpContents", "HelpIndex"}) {
        const QAbstractItemModel* rows = help->findChild<QAbstractItemView*>(list)->model();
        ASSERT_TRUE(QTest::qWaitFor([&] { return rows->rowCount() > 0; }, 20000)) << list;
    }
    keys_.Type("Mid-month");
    keys_.Press(Qt::Key_Return);
    EXPECT_EQ(help->Shown().toString().section('/', -1), "mcrs.html#mid-month");
    keys_.Press(Qt::Key_F, Qt::ControlModifier);
    keys_.Type("\"holds the index\"");
    keys_.Press(Qt::Key_Return);
    EXPECT_EQ(help->Shown().toString().section('/', -1), "messages-company.html");
    keys_.Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(help->Shown().toString().section('/', -1), "mcrs.html#mid-month");
    // Addresses beyond the help are not followed.
    help->findChild<QTextBrowser*>()->setSource(QUrl("https://tallymar.example/"));
    help->findChild<QTextBrowser*>()->setSource(QUrl::fromLocalFile("/etc/passwd"));
    EXPECT_EQ(help->Shown().toString().section('/', -1), "mcrs.html#mid-month");
    window_.findChild<QAction*>("mnuHelpContents")->trigger();
    EXPECT_EQ(help->Shown().toString(), "qthelp://tallymar.tallymar/doc/index.html");
    // The contents stand at the page that is shown.
    QTest::mouseClick(help->findChild<QPushButton*>("cmdTutorial"), Qt::LeftButton);
    keys_.Press(Qt::Key_Down, Qt::NoModifier, 3);
    keys_.Press(Qt::Key_Return);
    EXPECT_EQ(help->Shown().toString(), "qthelp://tallymar.helptutorial/doc/compute.html");
}

}  // namespace
}  // namespace tallymar
