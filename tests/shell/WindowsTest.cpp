#include <functional>

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include "platform/controls/CSForm.h"
#include "shell/frmInit.h"
#include "shell/frmTallymar.h"
#include "support/Files.h"
#include "support/Keyboard.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

using test::Keyboard;

class MainWindow : public testing::Test {
 protected:
    MainWindow() : window_(AppPath::At(folder_.Path(), folder_ / "no-program")) {}

    // A company file of one asset, or of none; its year ends at 12/31/2003 in all books.
    std::filesystem::path MakeCompany(bool withAsset) {
        test::TestCompany company;
        company.SetYearEnds(Date::FromYmd(2003, 12, 31));
        if (withAsset) company.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 11, 1), 1000));
        company.Session.FileClose();
        std::filesystem::copy_file(company.File(), folder_ / "client.mdb");
        return folder_ / "client.mdb";
    }
    void Open(const std::filesystem::path& file) {
        ASSERT_TRUE(window_.OpenFirstCompany(file));
        Show();
    }
    void Show() {
        window_.show();
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    }
    QAction* Action(const char* name) { return window_.findChild<QAction*>(name); }
    CSForm* Form(const char* name) { return window_.findChild<CSForm*>(name); }
    template <typename Control>
    Control* In(const char* form, const char* name) {
        return Form(form)->findChild<Control*>(name);
    }
    // The names of the windows that stand open.
    QStringList Windows() {
        QStringList names;
        for (const QMdiSubWindow* each : window_.findChild<QMdiArea*>()->subWindowList()) names << each->widget()->objectName();
        return names;
    }
    test::TempFolder folder_;
    Tallymar window_;
    Keyboard keys_;
    test::ScriptedPrompts prompts_;
};

TEST_F(MainWindow, OpensACompanyWithItsAssetsAndClosesAllOfIt) {
    EXPECT_EQ(window_.objectName(), "Tallymar");
    EXPECT_TRUE(Action("mnuFileOpen")->isEnabled());
    EXPECT_FALSE(Action("Close")->isEnabled());
    Open(MakeCompany(true));
    EXPECT_EQ(Windows(), QStringList("frmEditAsset"));
    EXPECT_TRUE(Form("frmEditAsset")->parentWidget()->isMaximized()) << "alone in the frame";
    EXPECT_EQ(window_.windowTitle(),
              "Tallymar - New Company - [Edit Asset Information for New Company with 1 Assets in the database]");
    for (const char* name : {"Close", "Calculate", "mnuEditCompanyInformation"}) EXPECT_TRUE(Action(name)->isEnabled()) << name;
    Action("mnuEditCompanyInformation")->trigger();
    Action("mnuFileClose")->trigger();
    EXPECT_EQ(window_.windowTitle(), "Tallymar");
    EXPECT_TRUE(Windows().isEmpty());
    for (const char* name : {"Close", "Calculate", "mnuEditCompanyInformation"}) EXPECT_FALSE(Action(name)->isEnabled()) << name;
}

TEST_F(MainWindow, ACommandWithoutAWindowStaysOff) {
    Open(MakeCompany(true));
    for (const MenuItem& item : MenuItems()) {
        if (item.Command == Command::None || window_.HasWindow(item.Command)) continue;
        const QString name =
            item.Index < 0 ? QString::fromLatin1(item.Name.data()) : QString("mnuReportsRun(%1)").arg(item.Index);
        EXPECT_FALSE(window_.findChild<QAction*>(name)->isEnabled()) << item.Name;
    }
}

TEST_F(MainWindow, MenusShowTheirHintsOfCommandsThatAreOffToo) {
    Open(MakeCompany(false));
    const auto hint = [&] { return window_.statusBar()->currentMessage(); };
    const auto goTo = [&](QMenu* menu, int row) {
        window_.menuBar()->setActiveAction(menu->menuAction());
        while (row-- > 0) QTest::keyClick(menu, Qt::Key_Down);
    };
    QMenu* activities = window_.findChild<QMenu*>("mnuActivities");
    goTo(activities, 0);
    EXPECT_EQ(hint(), "Selects an activity to perform on the assets");
    ASSERT_FALSE(Action("mnuResequence")->isEnabled());
    goTo(activities, 4);
    EXPECT_EQ(activities->activeAction(), Action("mnuResequence"));
    EXPECT_EQ(hint(), "Create a new database with resequenced Asset numbers");
    QMenu* tools = window_.findChild<QMenu*>("mnuTools");
    goTo(tools, 4);
    EXPECT_EQ(tools->activeAction(), Action("mnuBackup"));
    EXPECT_EQ(hint(), "");
    QTest::keyClick(tools, Qt::Key_Escape);
    window_.menuBar()->setActiveAction(nullptr);
}

TEST_F(MainWindow, AFormsAccessKeysComeBeforeTheMainMenus) {
    Open(MakeCompany(true));
    ASSERT_NE(Form("frmEditAsset"), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::AltModifier);
    QTest::qWait(200);
    EXPECT_NE(Form("frmFindAsset"), nullptr);
    QMenu* file = window_.findChild<QMenu*>("mnuFile");
    EXPECT_FALSE(file->isVisible());
    // The menu is reached all the same.
    Form("frmFindAsset")->Unload();
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_F, Qt::AltModifier | Qt::ShiftModifier), std::pair(Qt::Key_F10, Qt::KeyboardModifiers())}) {
        window_.activateWindow();
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        EXPECT_TRUE(file->isVisible());
        EXPECT_EQ(file->activeAction(), Action("mnuFileNew"));
        QTest::keyClick(file, Qt::Key_Escape);
        window_.menuBar()->setActiveAction(nullptr);
    }
}

TEST_F(MainWindow, TheStatusBarTellsTheCompanyThePlaceAndWhatIsNotSaved) {
    const std::filesystem::path file = MakeCompany(true);
    Open(file);
    window_.Session().AddAssetRecord(test::Machine("A2", Date(), 1));
    const auto part = [&](const char* name) {
        const QLabel* label = window_.findChild<QLabel*>(name);
        return label->isVisible() ? label->text().toStdString() : "";
    };
    EXPECT_EQ(part("lblCompany"), "New Company");
    EXPECT_EQ(part("lblYearEnds"), "Year ends 12/31/2003");
    EXPECT_TRUE(QTest::qWaitFor([&] { return part("lblPlace") == "1 of 2"; })) << part("lblPlace");
    EXPECT_EQ(part("lblUnsaved"), "");
    keys_.GoTo("sitxDescription");
    keys_.Type("Lathe");
    EXPECT_EQ(part("lblUnsaved"), "Not saved");
    keys_.Press(Qt::Key_PageDown);
    EXPECT_EQ(part("lblUnsaved"), "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return part("lblPlace") == "2 of 2"; })) << part("lblPlace");
    Action("mnuFileClose")->trigger();
    for (const char* name : {"lblCompany", "lblYearEnds", "lblPlace", "lblUnsaved"}) EXPECT_EQ(part(name), "") << name;
}

TEST_F(MainWindow, ACommandThatIsOffSaysWhy) {
    EXPECT_EQ(Action("Find")->toolTip(), "Find an asset\nOpen a company first");
    EXPECT_EQ(Action("mnuFileClose")->toolTip(), "Open a company first");
    Open(MakeCompany(false));
    EXPECT_EQ(Action("Find")->toolTip(), "Find an asset\nThe company has no assets yet");
    EXPECT_EQ(Action("mnuResequence")->toolTip(), "The company has no assets yet");
    keys_.Type("A1");
    keys_.Press(Qt::Key_PageDown);
    EXPECT_EQ(Action("Find")->toolTip(), "Find an asset");
}

TEST_F(MainWindow, WindowsComeBackWhereTheyWereAndTheMenuListsTheCompaniesOpenedLast) {
    const std::filesystem::path first = MakeCompany(true);
    std::filesystem::copy_file(first, folder_ / "other.mdb");
    Open(first);
    ASSERT_TRUE(window_.OpenFirstCompany(folder_ / "other.mdb"));
    window_.resize(700, 560);
    QMdiSubWindow* frame = window_.findChild<QMdiArea*>()->activeSubWindow();
    frame->showNormal();
    frame->setGeometry(20, 10, 600, 400);
    ASSERT_TRUE(window_.close());

    Tallymar again(AppPath::At(folder_.Path(), folder_ / "no-program"));
    again.show();
    EXPECT_EQ(again.size(), QSize(700, 560));
    QMenu* recent = again.findChild<QMenu*>("mnuFileRecent");
    emit recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 2);
    EXPECT_TRUE(recent->actions()[0]->text().startsWith("&1 other.mdb"));
    recent->actions()[1]->trigger();
    EXPECT_EQ(again.Session().DatabaseFileName(), first);
    frame = qobject_cast<QMdiSubWindow*>(again.findChild<CSForm*>("frmEditAsset")->parentWidget());
    EXPECT_FALSE(frame->isMaximized());
    EXPECT_EQ(frame->geometry(), QRect(20, 10, 600, 400));
}

TEST_F(MainWindow, FieldsOfAFormStayTogetherInALargerFrame) {
    Open(MakeCompany(true));
    window_.resize(1300, 800);
    const auto expectTogether = [&](const char* command, const char* form, const char* field) {
        Action(command)->trigger();
        ASSERT_NE(Form(form), nullptr) << form;
        QCoreApplication::processEvents();
        const int left = In<QWidget>(form, field)->mapTo(Form(form), QPoint()).x();
        EXPECT_GT(left, Form(form)->width() / 10) << form;
        EXPECT_LT(left, Form(form)->width() / 2) << form;
    };
    expectTogether("mnuEditUserInformation", "frmEditUser", "sitxCompany");
    expectTogether("mnuActivitiesComputeCurrent", "frmComputeOptions", "chkCompute(1)");
}

TEST_F(MainWindow, AFileThatIsDroppedIsAPictureOrACompany) {
    const std::filesystem::path file = MakeCompany(true);
    Open(file);
    std::filesystem::copy_file(file, folder_ / "other.mdb");
    window_.Session().Paths().Prepare();
    test::WriteAll(folder_ / "lathe.jpg", "\xFF\xD8\xFF");
    const auto drop = [&](QWidget* on, const std::filesystem::path& dropped) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(dropped.string()))});
        const QPoint place = on->mapTo(&window_, on->rect().center());
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        for (; on; on = on->parentWidget()) {
            enter.ignore();
            if (on->acceptDrops()) QApplication::sendEvent(on, &enter);
            if (enter.isAccepted()) break;
        }
        if (on) QApplication::sendEvent(on, &event);
        return on != nullptr;
    };
    {
        QDialog question(&window_);
        question.setModal(true);
        question.show();
        EXPECT_FALSE(drop(Form("frmEditAsset"), folder_ / "lathe.jpg")) << "nothing changes behind a modal window";
    }
    QString said;
    Keyboard::WhenMessage(said);
    ASSERT_TRUE(drop(In<QLineEdit>("frmEditAsset", "sitxDescription"), folder_ / "lathe.jpg"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return In<QLineEdit>("frmEditAsset", "sitxPictureName")->text() == "lathe.jpg"; }));
    EXPECT_TRUE(std::filesystem::exists(folder_ / "Images" / "lathe.jpg"));
    EXPECT_EQ(In<QLineEdit>("frmEditAsset", "sitxDescription")->text(), "");
    ASSERT_TRUE(drop(In<QLineEdit>("frmEditAsset", "sitxDescription"), folder_ / "other.mdb"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window_.Session().DatabaseFileName() == folder_ / "other.mdb"; }));
}

TEST_F(MainWindow, AllBooksFollowsTheAssetFormAndATabSaysWhatDiffers) {
    Open(MakeCompany(true));
    keys_.Fill("sidbBasis(2)", "900");
    keys_.Press(Qt::Key_B, Qt::ControlModifier);
    ASSERT_NE(Form("frmAllBooks"), nullptr);
    auto* grid = In<QTableWidget>("frmAllBooks", "grdBooks");
    const auto cell = [&](const char* label, int book) {
        for (int row = 0; row < grid->rowCount(); ++row) {
            if (grid->verticalHeaderItem(row)->text() == label) return grid->item(row, book - 1);
        }
        throw std::out_of_range(label);
    };
    EXPECT_EQ(cell("Asset Cost", 1)->text(), "1,000.00");
    EXPECT_EQ(cell("Asset Cost", 2)->text(), "900.00") << "as it stands on the form, saved or not";
    EXPECT_TRUE(cell("Asset Cost", 2)->font().bold());
    keys_.Press(Qt::Key_Escape);
    QTest::qWait(0);
    EXPECT_EQ(Windows(), QStringList("frmEditAsset"));

    auto* tabs = In<QTabWidget>("frmEditAsset", "SSTab1");
    EXPECT_EQ(tabs->tabToolTip(2), "Not as in the Federal book: basis");
    EXPECT_FALSE(tabs->tabIcon(2).isNull());
    EXPECT_TRUE(tabs->tabIcon(1).isNull());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(tabs->tabBar())->child(2)->text(QAccessible::Name),
              "State. Not as in the Federal book: basis");
}

TEST_F(MainWindow, TheWindowMenuListsWhatIsOpenAndAFormOpensOnce) {
    Open(MakeCompany(true));
    for (int i = 0; i < 2; ++i) {
        for (const char* name : {"mnuEditAsset", "mnuEditCompanyInformation", "mnuEditUserInformation"}) Action(name)->trigger();
    }
    EXPECT_EQ(Windows(), QStringList({"frmEditAsset", "frmEditCompany", "frmEditUser"}));
    QMenu* menu = window_.findChild<QMenu*>("mnuWindow");
    emit menu->aboutToShow();
    emit menu->aboutToShow();
    const QList<QAction*> listed = menu->actions().mid(menu->actions().size() - 3);
    EXPECT_EQ(menu->actions().front(), Action("mnuAllBooks"));
    EXPECT_EQ(menu->actions().size(), 5) << "All Books, a line and the windows, however often it is opened";
    EXPECT_EQ(listed[0]->text(), "&1 Edit Asset Information for New Company with 1 Assets in the database");
    EXPECT_EQ(listed[1]->text(), "&2 Edit Company Information");
    EXPECT_TRUE(listed[2]->isChecked());
    listed[1]->trigger();
    EXPECT_EQ(window_.findChild<QMdiArea*>()->activeSubWindow()->widget(), Form("frmEditCompany"));
}

TEST_F(MainWindow, AFormsEditButtonOpensTheViewerAnewButNotOverUnsavedChanges) {
    std::filesystem::create_directories(folder_ / "Laser");
    std::string fields(170, ' ');
    fields.replace(85 + 49, 9, "  1  0 10");
    test::WriteAll(folder_ / "Laser/242551.FPF", fields);
    test::WriteAll(folder_ / "Laser/242551.HP", "\x1B&l0O\x1B&l8c66p");
    Open(MakeCompany(true));
    Action("mnuCreate4255")->trigger();
    const auto edit = [&] {
        In<QPushButton>("frmCreate4255", "cmdEdit4255")->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the viewer that was there
    };
    edit();
    EXPECT_EQ(Windows(), QStringList({"frmEditAsset", "frmCreate4255", "frmHPViewer"}));
    test::WriteAll(folder_ / "242551.LDT", "x \r\n  Old name \r\n\x1A");
    edit();
    auto* field = In<QLineEdit>("frmHPViewer", "sitxEdit1");
    EXPECT_EQ(field->text(), "Old name");
    QTest::keyClicks(field, "New");
    edit();
    EXPECT_EQ(Windows(), QStringList({"frmEditAsset", "frmCreate4255", "frmHPViewer"}));
    EXPECT_EQ(In<QLineEdit>("frmHPViewer", "sitxEdit1"), field);
    EXPECT_EQ(field->text(), "New");
    EXPECT_EQ(In<QLabel>("frmHPViewer", "TextMessage")->text(), "Changes on this page are not saved");
}

TEST_F(MainWindow, CompanyProfileIsEnteredByKeyboard) {
    Open(MakeCompany(true));
    Action("mnuEditCompanyInformation")->trigger();
    ASSERT_EQ(Keyboard::Where(), "sitxCompany");
    keys_.Type("Tamarind Gap");
    keys_.Press(Qt::Key_Return, Qt::NoModifier, 5);
    keys_.Type("Denver");
    keys_.Press(Qt::Key_Down);
    keys_.Type("co");
    auto* state = In<QLineEdit>("frmEditCompany", "sidtFYEState");
    state->clear();
    state->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(state->text(), "");  // only a new company's year ends fill themselves
    In<QCheckBox>("frmEditCompany", "chkRound")->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(In<QLabel>("frmEditCompany", "TextMessage")->text(), "Check this box if you want amounts rounded to the dollar");
    keys_.Press(Qt::Key_Space);
    keys_.Press(Qt::Key_Down);
    ASSERT_EQ(Keyboard::Where(), "cmdSave");
    keys_.Press(Qt::Key_Return);
    const recordset::Recordset& row = window_.Session().CompanyRecordset();
    EXPECT_EQ(row.Get("Company").Text(), "Tamarind Gap");
    EXPECT_EQ(row.Get("City").Text(), "Denver");
    EXPECT_EQ(row.Get("State").Text(), "CO");
    EXPECT_EQ(row.Get("FYEState").AsDate(), Date());
    EXPECT_EQ(row.Get("FYEFederal").AsDate(), Date::FromYmd(2003, 12, 31));
    EXPECT_TRUE(row.Get("Round").Boolean());
    EXPECT_TRUE(window_.windowTitle().startsWith("Tallymar - Tamarind Gap - [")) << window_.windowTitle().toStdString();
    EXPECT_EQ(window_.findChild<QLabel*>("lblCompany")->text(), "Tamarind Gap");
    EXPECT_EQ(window_.findChild<QLabel*>("lblYearEnds")->text(), "Year ends Federal, Book, AMT 12/31/2003; State not set");
    EXPECT_EQ(Windows(), QStringList("frmEditAsset"));  // the profile is closed
}

TEST_F(MainWindow, AFormThatClosesLeavesTheOneBelowInItsField) {
    Open(MakeCompany(true));
    In<QLineEdit>("frmEditAsset", "sitxDescrip2")->setFocus(Qt::TabFocusReason);
    for (const char* name : {"mnuEditCompanyInformation", "mnuEditUserInformation"}) {
        Action(name)->trigger();
        QApplication::processEvents();
    }
    keys_.Press(Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(Keyboard::Where(), "sitxCompany") << "back the way that led here";
    keys_.Press(Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(Keyboard::Where(), "sitxDescrip2");
}

TEST_F(MainWindow, CancelledCompanyProfileWritesNothing) {
    Open(MakeCompany(true));
    Action("mnuEditCompanyInformation")->trigger();
    keys_.Type("Another");
    keys_.Press(Qt::Key_Escape);
    EXPECT_EQ(window_.Session().CompanyName(), "New Company");
    EXPECT_EQ(Windows(), QStringList("frmEditAsset"));  // the profile is closed
}

TEST_F(MainWindow, TheAssetFormGivesWayToABatchCommandAndComesBack) {
    Open(MakeCompany(true));
    ASSERT_FALSE(window_.EditFormClosed());
    EXPECT_EQ(Form("frmEditAsset")->windowTitle(), "Edit Asset Information for New Company with 1 Assets in the database");
    auto* description = In<QLineEdit>("frmEditAsset", "sitxDescription");
    description->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(description, "Lathe");
    Action("mnuActivitiesComputeCurrent")->trigger();
    QTest::qWait(0);
    EXPECT_TRUE(window_.EditFormClosed());
    In<QPushButton>("frmComputeOptions", "cmdOK")->click();
    Form("frmComputeOptions")->Unload();
    QTest::qWait(0);
    ASSERT_FALSE(window_.EditFormClosed());
    EXPECT_EQ(In<QLineEdit>("frmEditAsset", "sitxDescription")->text(), "Lathe");
    EXPECT_EQ(In<QLineEdit>("frmEditAsset", "sidbCurrDepr(1)")->text(), "200.00") << "what was computed";
    Action("mnuActivitiesComputeCurrent")->trigger();
    EXPECT_TRUE(Form("frmComputeOptions")->parentWidget()->isMaximized()) << "as it was left";
    Form("frmComputeOptions")->parentWidget()->showNormal();
    Form("frmComputeOptions")->Unload();
    QTest::qWait(0);
    EXPECT_TRUE(Form("frmEditAsset")->parentWidget()->isMaximized()) << "alone again";

    // Without its asset form the company comes back to it from the find list; deleting the last asset turns Find off.
    In<QPushButton>("frmEditAsset", "cmdClose")->click();
    QTest::qWait(0);
    Action("mnuFindAssets")->trigger();
    In<QPushButton>("frmFindAsset", "cmdClose")->click();
    QTest::qWait(0);
    ASSERT_FALSE(window_.EditFormClosed());
    EXPECT_TRUE(Action("mnuEditFind")->isEnabled());
    QTimer::singleShot(0,
                       [] { qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(QMessageBox::Yes)->click(); });
    In<QPushButton>("frmEditAsset", "cmdDelete")->click();
    EXPECT_FALSE(Action("mnuEditFind")->isEnabled());
    EXPECT_FALSE(Action("Find")->isEnabled());
    EXPECT_EQ(window_.Session().AssetCount(), 0);
}

TEST_F(MainWindow, AnImportRunsWithoutTheAssetFormWhichShowsWhatCame) {
    Open(MakeCompany(true));
    std::string record = "A1";
    for (int item = 2; item <= 40; ++item) record += item == 4 ? ",Lathe" : ",";
    test::WriteAll(folder_ / "aascii.txt", record + "\n");
    Keyboard::WhenModal("frmImportOptions", [&] {
        EXPECT_TRUE(window_.EditFormClosed());
        Keyboard::WhenAskedForFile(folder_ / "aascii.txt");
        QApplication::activeModalWidget()->findChild<QPushButton*>("cmdOK")->click();
        keys_.Press(Qt::Key_Escape);
    });
    Action("mnuFileImport")->trigger();
    EXPECT_EQ(In<QLineEdit>("frmEditAsset", "sitxDescription")->text(), "Lathe");

    // From the company's profile, which stays in front.
    Action("mnuEditCompanyInformation")->trigger();
    Keyboard::WhenModal("frmImportOptions", [&] { keys_.Press(Qt::Key_Escape); });
    In<QPushButton>("frmEditCompany", "cmdImport")->click();
    EXPECT_EQ(window_.findChild<QMdiArea*>()->activeSubWindow()->widget(), Form("frmEditCompany"));
    EXPECT_FALSE(window_.EditFormClosed());
}

TEST_F(MainWindow, AnAssetThatCannotBeStoredKeepsItsCompanyOpen) {
    Open(MakeCompany(true));
    In<QLineEdit>("frmEditAsset", "sitxAccountNum")->setText("1234567890123");
    Action("mnuEditCompanyInformation")->trigger();
    const std::function<void()> ways[] = {[&] { Action("mnuFileClose")->trigger(); }, [&] { window_.close(); },
                                          [&] { Action("Calculate")->trigger(); },
                                          [&] { window_.Session().OpenCompany(folder_ / "client.mdb", prompts_); },
                                          [&] { window_.findChild<QMdiArea*>()->closeActiveSubWindow(); }};
    for (const auto& leave : ways) {
        QString said;
        Keyboard::WhenMessage(said);
        leave();
        EXPECT_TRUE(said.startsWith("Account Number holds 12 characters\n\n")) << said.toStdString();
        EXPECT_EQ(Windows(), QStringList({"frmEditAsset", "frmEditCompany"}));
        EXPECT_EQ(window_.findChild<QMdiArea*>()->activeSubWindow()->widget(), Form("frmEditAsset"));
        EXPECT_EQ(window_.focusWidget()->objectName(), "sitxAccountNum");
        EXPECT_TRUE(window_.isVisible() && window_.Session().IsOpen());
    }
    keys_.Type("123");
    EXPECT_TRUE(window_.close());
}

TEST_F(MainWindow, TheFirstAssetSavedTurnsItsCommandsOnAndTheLastDeletedOff) {
    Open(MakeCompany(false));
    const auto areOn = [&] { return Action("Calculate")->isEnabled() && Action("mnuReportsRun(0)")->isEnabled(); };
    EXPECT_FALSE(areOn());
    keys_.Type("A1");
    keys_.Press(Qt::Key_PageDown);
    EXPECT_TRUE(areOn());
    QTimer::singleShot(0,
                       [] { qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(QMessageBox::Yes)->click(); });
    keys_.Alt(Qt::Key_D);
    EXPECT_FALSE(areOn());
    EXPECT_FALSE(Action("mnuEditFind")->isEnabled());
    // With the form open again the asset is brought back.
    Action("mnuEditAsset")->trigger();
    keys_.Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(In<QLineEdit>("frmEditAsset", "sitxAssetNum")->text(), "A1");
    EXPECT_TRUE(areOn());
}

TEST_F(MainWindow, UserProfileTurnsItsTabsByKeyboardAndSaves) {
    Open(MakeCompany(false));
    Action("mnuEditUserInformation")->trigger();
    EXPECT_EQ(Keyboard::Where(), "sitxCompany");
    EXPECT_EQ(In<QLabel>("frmEditUser", "TextMessage")->text(), "Enter your company name");
    keys_.Type("Smith \"& Co\"");
    keys_.Press(Qt::Key_Down, Qt::NoModifier, 3);
    EXPECT_EQ(In<QLabel>("frmEditUser", "TextMessage")->text(), "Enter your 2 chararacter state code");
    keys_.Type("oh");
    keys_.Press(Qt::Key_Up);
    EXPECT_EQ(In<QLineEdit>("frmEditUser", "sitxStateCode")->text(), "OH");
    keys_.Press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(Keyboard::Where(), "sitxDataAsset");
    keys_.Press(Qt::Key_PageUp, Qt::ControlModifier, 2);
    EXPECT_EQ(Keyboard::Where(), "chkDateFind");
    keys_.Press(Qt::Key_Down, Qt::NoModifier, 3);
    ASSERT_EQ(Keyboard::Where(), "cboNewUsed");
    keys_.Type("u");
    In<QAbstractButton>("frmEditUser", "cmdSave")->click();
    UserProfile saved;
    saved.Load(folder_ / "Assets1.dat");
    EXPECT_EQ(saved.At(UserProfile::kCompany), "Smith & Co");
    EXPECT_EQ(saved.At(UserProfile::kStateCode), "OH");
    EXPECT_EQ(saved.DefaultNewUsed, "Used");
    EXPECT_EQ(saved.LastDataPath, (folder_ / "client.mdb").string());
}

TEST_F(MainWindow, ANewCompanysYearEndsFollowTheFederalOneOnTabbing) {
    window_.Session().NewCompany(folder_ / "new.mdb");
    ASSERT_TRUE(window_.Session().NewCompanyPending);
    Show();
    window_.Run(Command::EditCompanyInformation);
    In<QLineEdit>("frmEditCompany", "sidtFYEFederal")->setFocus(Qt::TabFocusReason);
    keys_.Type("6/30/04");
    keys_.Press(Qt::Key_Tab, Qt::NoModifier, 4);
    for (const char* name : {"sidtFYEFederal", "sidtFYEState", "sidtFYEBook", "sidtFYEAMT"}) {
        EXPECT_EQ(In<QLineEdit>("frmEditCompany", name)->text(), "6/30/2004") << name;
    }
    Form("frmEditCompany")->Unload();
    EXPECT_FALSE(window_.Session().NewCompanyPending);
}

TEST_F(MainWindow, ComputeCurrentShowsTheFourthQuarter) {
    Open(MakeCompany(true));
    Action("Calculate")->trigger();
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        EXPECT_TRUE(In<QCheckBox>("frmComputeOptions", qPrintable(QString("chkCompute(%1)").arg(book)))->isChecked());
    }
    auto* month = In<QLineEdit>("frmComputeOptions", "silgMonth");
    month->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(In<QLabel>("frmComputeOptions", "TextMessage")->text(), "Applies to Book Column ONLY");
    QTest::keyClicks(month, "6");
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        EXPECT_EQ(In<QCheckBox>("frmComputeOptions", qPrintable(QString("chkCompute(%1)").arg(book)))->isChecked(), book == 3);
    }
    QTest::keyClick(month, Qt::Key_Backspace);
    In<QCheckBox>("frmComputeOptions", "chkCompute(1)")->setChecked(true);
    In<QAbstractButton>("frmComputeOptions", "cmdOK")->click();
    EXPECT_EQ(In<QLabel>("frmComputeOptions", "lblInService(1)")->text(), "1,000.00");
    EXPECT_EQ(In<QLabel>("frmComputeOptions", "lblPercent(1)")->text(), "100.00");
    EXPECT_EQ(In<QLabel>("frmComputeOptions", "lblInService(2)")->text(), "0.00");  // not chosen
    AssetRecord record;
    window_.Session().AssetsRecordset().MoveFirst();
    window_.Session().ReadAssetRecord(record);
    EXPECT_EQ(record.CurrDepr[1], Units(200));
    EXPECT_EQ(record.CurrDepr[2], Units(0));
}

TEST_F(MainWindow, AnAssetFormOpenedBesideComputeOptionsDoesNotWriteItsOldFiguresBack) {
    Open(MakeCompany(true));
    const auto active = [&] { return qobject_cast<CSForm*>(window_.findChild<QMdiArea*>()->activeSubWindow()->widget()); };
    Action("Calculate")->trigger();
    CSForm* options = active();
    Action("Edit")->trigger();
    ASSERT_EQ(active()->objectName(), "frmEditAsset");
    auto* description = active()->findChild<QLineEdit*>("sitxDescription");
    description->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(description, "Lathe");
    options->findChild<QAbstractButton*>("cmdOK")->click();
    options->Unload();
    ASSERT_EQ(active()->objectName(), "frmEditAsset");
    EXPECT_EQ(active()->findChild<QLineEdit*>("sitxDescription")->text(), "Lathe");
    active()->Unload();
    AssetRecord record;
    window_.Session().AssetsRecordset().MoveFirst();
    window_.Session().ReadAssetRecord(record);
    EXPECT_EQ(record.CurrDepr[1], Units(200));
    EXPECT_EQ(record.Description, "Lathe");
}

TEST_F(MainWindow, FirstQuestionStaysUntilACompanyIsOpen) {
    int asked = 0;
    frmInit form([](QWidget*) { return false; }, [&](QWidget*) { return ++asked == 2; });
    QTimer::singleShot(0, &form, [&] {
        QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        QTest::keyClick(form.focusWidget(), Qt::Key_Return);
    });
    form.ShowModal();
    EXPECT_EQ(asked, 2);
    EXPECT_FALSE(form.Cancelled());

    frmInit left([](QWidget*) { return true; }, [](QWidget*) { return true; });
    QTimer::singleShot(0, &left, [&] { QTest::keyClick(left.focusWidget(), Qt::Key_Escape); });
    left.ShowModal();
    EXPECT_TRUE(left.Cancelled());
}

}  // namespace
}  // namespace tallymar
