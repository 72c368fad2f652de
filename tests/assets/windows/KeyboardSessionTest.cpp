#include <fstream>
#include <sstream>

#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assets/frmCopyAsset.h"
#include "assets/frmEditAsset.h"
#include "assets/frmFindAsset.h"
#include "assets/windows/Keyboard.h"
#include "interchange/AssetCsv.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

using test::Keyboard;

class KeyboardTest : public testing::Test {
 protected:
    void SetUp() override {
        company_.SetYearEnds(Date::FromYmd(2003, 12, 31));
        QApplication::setKeyboardInputInterval(60);
    }

    void Open() {
        company_.Session.AssetsRecordset().MoveFirst();
        form_ = std::make_unique<frmEditAsset>(company_.Session, state_, engine_, &company_.Prompts);
        QObject::connect(form_.get(), &frmEditAsset::CopyWanted, form_.get(),
                         [this] { frmCopyAsset(company_.Session, state_, &company_.Prompts, form_.get()).ShowModal(); });
        form_->show();
        form_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    }

    std::string Dump(const std::vector<std::string>& columns = {}) {
        std::ostringstream out;
        DumpAssets(company_.Session.AssetsRecordset(), columns, out);
        return out.str();
    }

    std::string Text(const char* name) { return form_->findChild<QLineEdit*>(QString::fromLatin1(name))->text().toStdString(); }

    test::TestCompany company_;
    ADepre engine_{company_.Folder.Path()};
    AssetEditState state_;
    std::unique_ptr<frmEditAsset> form_;
    Keyboard keys_;
};

// A preparer's first afternoon with a company, from paper, without the mouse. Every asset is begun with New, which throws away
// what has not been saved: Page Down saves.
TEST_F(KeyboardTest, ACompanyIsKeyedIn) {
    Open();
    EXPECT_EQ(Text("sitxAssetNum"), "NEW001") << "an empty company starts with a new asset";
    const auto save = [this] { keys_.Press(Qt::Key_PageDown); };
    const auto begin = [this](const char* number) {
        keys_.Alt(Qt::Key_N);
        EXPECT_EQ(Keyboard::Name(), "sitxAssetNum");
        keys_.Type(number);
    };

    // A machine; the Federal cost spreads to the other books.
    keys_.Type("m001");
    keys_.Fill("cboAssetType", "P");
    keys_.Fill("sitxDescription", "Lathe, 16 inch");
    keys_.Fill("sitxDivision", "Plant");
    keys_.Fill("sidtPurchased", "3/10/01");
    keys_.Press(Qt::Key_Up);  // the date in service takes over the day of purchase
    EXPECT_EQ(Text("sidtInService"), "3/10/2001");
    keys_.Fill("sidbBasis(1)", "42500.50");
    EXPECT_EQ(Text("sidbAdjBasis(4)"), "42,500.50");
    save();

    // Real property: straight line and mid-month by its type.
    begin("B001");
    keys_.Fill("cboAssetType", "RL");
    keys_.Fill("sidbClassLife", "39");
    keys_.Fill("sitxDescription", "Plant building");
    keys_.Fill("sidtInService", "July 15, 1999");
    keys_.Fill("sidbPeriod(1)", "39");
    keys_.Fill("sidbBasis(1)", "250000");
    for (const char* period : {"sidbPeriod(2)", "sidbPeriod(3)", "sidbPeriod(4)"}) keys_.Fill(period, "39");
    save();

    // A third-class asset.
    begin("I001");
    keys_.Fill("cboAssetType", "I");
    keys_.Fill("sitxDescription", "Licence");
    keys_.Fill("sidtInService", "20020101");
    keys_.Press(Qt::Key_Return);
    EXPECT_EQ(Text("sidtInService"), "20020101") << "no date: it stays to be put right";
    keys_.Press(Qt::Key_Up);
    keys_.Type("1/1/2002");
    keys_.Fill("sidbBasis(1)", "1200");
    save();

    // A used automobile, mostly private: not more than half in business forces straight line. With a limit, listed, and with a
    // credit.
    begin("V001");
    keys_.Fill("cboNewUsed", "U");
    keys_.Fill("cboAssetType", "P");
    keys_.Fill("sitxDescription", "Sedan");
    keys_.Fill("sitxSerialNum", "1FAFP53U");
    keys_.Fill("sidbBusinessUse", "40");
    keys_.Fill("sidtInService", "9-1-02");
    keys_.Check("chkListed(1)");
    keys_.Check("chkAuto(1)");
    keys_.Fill("sidbBasis(1)", "18,900");
    EXPECT_EQ(Text("sidbAdjBasis(2)"), "7,560.00");
    save();

    // A stock and a collectible: nothing depreciates.
    for (const auto& [number, type] : {std::pair("S001", "ST"), std::pair("C001", "CO")}) {
        begin(number);
        keys_.Fill("sidtInService", "5/5/2000");
        keys_.Fill("cboDeprType(1)", type);
        keys_.Fill("sidbBasis(1)", "999.99");
        save();
    }
    // An amortised cost, general depreciation with salvage in one book, an expensed asset, one with additional depreciation.
    begin("A001");
    keys_.Fill("sitxDescription", "Start-up costs");
    keys_.Fill("sidtInService", "1/1/2003");
    keys_.Fill("cboDeprType(1)", "AM");
    keys_.Fill("cboDeprMethod(1)", "SL");
    keys_.Fill("sidbPeriod(1)", "5");
    keys_.Fill("sidbBasis(1)", "6000");
    save();
    begin("G001");
    keys_.Fill("sidtInService", "4/1/2000");
    keys_.Fill("sidbBasis(1)", "8000");
    keys_.Fill("cboDeprType(3)", "G");
    keys_.Fill("cboDeprMethod(3)", "SY");
    keys_.Fill("sidbSalvage(3)", "800");
    EXPECT_EQ(Text("sidbSalvage(1)"), "0.00") << "nothing spreads from another book";
    save();
    begin("E001");
    keys_.Fill("sidtInService", "2/2/2003");
    keys_.Fill("sidbBasis(1)", "2400");
    keys_.Fill("sidbSection179(1)", "2400");
    save();
    begin("P001");
    keys_.Fill("sidtInService", "6/1/2003");
    keys_.Fill("sidbADPct(1)", "30");
    keys_.Fill("sidbBasis(1)", "10000");
    EXPECT_EQ(Text("sidbAddlDepr(1)"), "3,000.00");
    keys_.Press(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(company_.Session.AssetCount(), 10);

    // Two are changed: the first two by number.
    keys_.Press(Qt::Key_PageUp, Qt::NoModifier, 12);
    EXPECT_EQ(Text("sitxAssetNum"), "A001");
    keys_.Fill("sitxDescription", "Start-up costs, Denver");
    keys_.Press(Qt::Key_PageDown);
    EXPECT_EQ(Text("sitxAssetNum"), "B001");
    keys_.Fill("sidbFairMktValue", "310000");
    keys_.Press(Qt::Key_PageDown);
    // The collectible is deleted.
    EXPECT_EQ(Text("sitxAssetNum"), "C001");
    company_.Prompts.YesNo = {true};
    keys_.Alt(Qt::Key_D);
    EXPECT_EQ(company_.Prompts.Questions.back().Text, "Delete Asset C001?");
    // What follows it is copied three times.
    EXPECT_EQ(Text("sitxAssetNum"), "E001");
    company_.Prompts.YesNo = {true, true, true};
    Keyboard::WhenModal("frmCopyAsset", [this] {
        keys_.Type("3");
        keys_.Press(Qt::Key_Return);
        keys_.Type("cpt");
        keys_.Press(Qt::Key_Return, Qt::NoModifier, 2);
        keys_.Press(Qt::Key_Escape);
    });
    keys_.Alt(Qt::Key_C);
    EXPECT_EQ(company_.Session.AssetCount(), 12);
    // The general one is sold, the machine built and saved.
    keys_.Press(Qt::Key_PageDown);
    EXPECT_EQ(Text("sitxAssetNum"), "G001");
    keys_.Fill("sidtDateSold", "11/30/2003");
    keys_.Fill("sidbSoldAmount", "5000");
    keys_.Fill("sidbSoldExpense", "125.75");
    EXPECT_EQ(Text("sidbGainLoss"), "-3,125.75");
    keys_.Check("chkAbandoned");
    keys_.Check("chkSold");
    keys_.Press(Qt::Key_PageDown, Qt::NoModifier, 2);
    keys_.GoTo("sitxAssetNum");
    EXPECT_EQ(Text("sitxAssetNum"), "M001");
    Keyboard::WhenModal("frmDeprBuild", [this] { keys_.Press(Qt::Key_Return); });
    keys_.Alt(Qt::Key_B);
    EXPECT_EQ(Text("sidbPrevDepr(1)"), "22,100.26");
    keys_.Alt(Qt::Key_L);
    EXPECT_TRUE(state_.EditFormClosed);

    const std::string dump = Dump();
    std::ifstream file(TALLYMAR_SOURCE_DIR "/tests/assets/windows/session.csv", std::ios::binary);
    const std::string expected{std::istreambuf_iterator<char>(file), {}};
    if (dump != expected) std::ofstream(TALLYMAR_BINARY_DIR "/session.csv", std::ios::binary) << dump;
    EXPECT_TRUE(dump == expected) << "what was stored is in session.csv of the build folder";
}

TEST_F(KeyboardTest, EnterAndTheArrowsGoThroughAllTabs) {
    company_.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 3, 1), 1000));
    company_.Session.AddAssetRecord(test::Machine("A2", Date::FromYmd(2003, 3, 1), 2000));
    Open();
    auto* tabs = form_->findChild<QTabWidget*>("SSTab1");
    auto* hint = form_->findChild<QLabel*>("FieldHint");
    EXPECT_EQ(hint->text(), "Enter the Asset Number (You may use characters A-Z or 0-9)");
    keys_.Press(Qt::Key_Up);
    EXPECT_EQ(Keyboard::Name(), "chkNotice4") << "before the first field comes the last";
    EXPECT_EQ(tabs->currentIndex(), 5);
    keys_.Press(Qt::Key_Down);
    EXPECT_EQ(tabs->currentIndex(), 0);
    keys_.GoTo("cboDeprType(1)");
    EXPECT_EQ(tabs->currentIndex(), 1);
    keys_.Press(Qt::Key_Up);
    EXPECT_EQ(Keyboard::Name(), "chkPropertyTax");
    EXPECT_EQ(tabs->currentIndex(), 0);
    keys_.GoTo("sidtDateSold");
    keys_.Press(Qt::Key_Up);
    EXPECT_EQ(Keyboard::Name(), "silgTaxCreditYear(4)") << "the field before, not the first of its tab";
    EXPECT_EQ(tabs->currentIndex(), 4);

    // A click on a tab: the first field gets the focus when the last field's focus had armed that.
    keys_.GoTo("cboDeprType(2)");
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(3).center());
    EXPECT_EQ(Keyboard::Name(), "cboDeprType(3)");
    keys_.GoTo("silgSwitchPeriod(3)");
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(1).center());
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_NE(Keyboard::Name(), "cboDeprType(1)");
    keys_.Press(Qt::Key_Down);
    EXPECT_EQ(Keyboard::Name(), "cboDeprType(1)");

    // Tab goes to the commands too, and pages turn from any field.
    keys_.GoTo("chkNotice4");
    keys_.Press(Qt::Key_Tab);
    EXPECT_EQ(Keyboard::Name(), "cmdNew");
    keys_.Press(Qt::Key_Backtab, Qt::ShiftModifier);
    keys_.Press(Qt::Key_PageDown);
    EXPECT_EQ(Text("sitxAssetNum"), "A2");
    EXPECT_EQ(hint->text(), "") << "cleared by the move";
    keys_.GoTo("sidbSalvage(1)");
    keys_.Press(Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(Text("sitxAssetNum"), "A1");
    keys_.Type("-5");
    EXPECT_EQ(Text("sidbSalvage(1)"), "-5") << "the other minus is a sign";
}

TEST_F(KeyboardTest, OddRowsAreShownAndKept) {
    AssetRecord odd = test::Machine("A1", Date::FromYmd(2003, 3, 1), 1000);
    odd.DBPercent[2] = 130;
    odd.TaxGroup = "      ";
    odd.Description = "padded         ";
    company_.Session.AddAssetRecord(odd);
    const std::string before = Dump({"AssetNum", "Description", "TaxGroup", "DBPercent(2)"});
    Open();
    keys_.GoTo("cboDBPct(2)");
    keys_.Press(Qt::Key_PageDown);
    EXPECT_EQ(Dump({"AssetNum", "Description", "TaxGroup", "DBPercent(2)"}), before);
    QTest::mouseClick(form_->findChild<QWidget*>("sitxTaxGroup"), Qt::LeftButton);
    keys_.GoTo("sitxTaxGroup");
    keys_.Press(Qt::Key_End);
    keys_.Type("TOOLS");
    keys_.Press(Qt::Key_PageDown);
    EXPECT_EQ(Dump({"TaxGroup"}), "TaxGroup\r\nTOOLS\r\n");
}

TEST_F(KeyboardTest, ADuplicateNumberComesBack) {
    company_.Session.AddAssetRecord(test::Machine("A1", Date(), 1));
    company_.Session.AddAssetRecord(test::Machine("A2", Date(), 1));
    Open();
    keys_.Type("a2");
    EXPECT_EQ(Text("sitxAssetNum"), "A2") << "capitals as they are typed";
    keys_.Press(Qt::Key_Return);
    EXPECT_EQ(Text("sitxAssetNum"), "A1");
    ASSERT_EQ(company_.Prompts.Messages.size(), 1u);
    EXPECT_EQ(company_.Prompts.Messages[0].Text, "Asset Number already exists. Use a different number");
}

TEST_F(KeyboardTest, TheBuildGridCopies) {
    company_.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2002, 3, 1), 1000));
    Open();
    Keyboard::WhenModal("frmDeprBuild", [this] {
        auto* grid = QApplication::activeModalWidget()->findChild<QTableView*>("MSFlexGrid1");
        grid->setFocus();
        grid->setCurrentIndex(grid->model()->index(1, 0));
        keys_.Press(Qt::Key_Right, Qt::ShiftModifier, 2);
        keys_.Press(Qt::Key_C, Qt::ControlModifier);
        keys_.Press(Qt::Key_Escape);
    });
    keys_.Alt(Qt::Key_B);
    EXPECT_EQ(QApplication::clipboard()->text(), "12/31/2003\t200.00\t320.00\n");
    EXPECT_EQ(Text("sidbPrevDepr(1)"), "0.00") << "not saved";
}

TEST_F(KeyboardTest, TheFindGridJumpsSortsAndSelects) {
    company_.Profile.FindByDate = false;
    for (const auto& [number, division] : {std::pair("A1", "West"), std::pair("A2", "East"), std::pair("B1", "East")}) {
        AssetRecord record = test::Machine(number, Date(), 1);
        record.Division = division;
        company_.Session.AddAssetRecord(record);
    }
    int wanted = 0;
    frmFindAsset find(company_.Session, state_, &company_.Prompts);
    QObject::connect(&find, &frmFindAsset::EditWanted, &find, [&wanted] { ++wanted; });
    find.show();
    find.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&find));
    EXPECT_EQ(Keyboard::Name(), "MSFlexGrid1");
    auto* grid = find.findChild<QTableView*>("MSFlexGrid1");
    const auto current = [grid] { return grid->model()->index(grid->currentIndex().row(), 0).data().toString().toStdString(); };
    keys_.Type("b");
    EXPECT_EQ(current(), "B1");
    auto* head = grid->horizontalHeader();
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, {head->sectionPosition(1) + 5, head->height() / 2});
    EXPECT_EQ(current(), "A2") << "by division";
    QTest::qWait(1100);  // a pause begins a new text
    keys_.Type("we");
    EXPECT_EQ(current(), "A1");
    keys_.Press(Qt::Key_Return);
    EXPECT_FALSE(find.isVisible());
    EXPECT_EQ(wanted, 1);
    EXPECT_EQ(state_.CurrentAssetNum, "A1");
    EXPECT_EQ(company_.Session.AssetsRecordset().Get("AssetNum").Text(), "A1    ");
}

}  // namespace
}  // namespace tallymar
