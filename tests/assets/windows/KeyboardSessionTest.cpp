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
#include "interchange/AssetDump.h"
#include "support/Files.h"
#include "support/Keyboard.h"
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
        std::string out;
        DumpAssets(company_.Session.AssetsRecordset(), columns, [&out](std::string_view text) { out += text; });
        return out;
    }

    std::string Text(const char* name) { return form_->findChild<QLineEdit*>(QString::fromLatin1(name))->text().toStdString(); }

    // Steps at the form, with bars between them: "new NUMBER", "check FIELD", "press KEY", "FIELD=what is typed", "FIELD shows
    // TEXT".
    void Play(const QString& steps) {
        for (const QString& part : steps.split(QStringLiteral(" | "))) {
            const auto after = [&part](const char* word) { return part.section(QLatin1String(word), 1).toStdString(); };
            const auto before = [&part](const char* word) { return part.section(QLatin1String(word), 0, 0).toStdString(); };
            if (part.startsWith(QLatin1String("new "))) {
                keys_.Alt(Qt::Key_N);
                EXPECT_EQ(Keyboard::Name(), "sitxAssetNum");
                keys_.Type(after("new ").c_str());
            } else if (part.startsWith(QLatin1String("check "))) {
                keys_.Check(after("check ").c_str());
            } else if (part.startsWith(QLatin1String("press "))) {
                keys_.Press(static_cast<Qt::Key>(QKeySequence(part.mid(6))[0].key()));
            } else if (part.contains(QLatin1String(" shows "))) {
                EXPECT_EQ(Text(before(" shows ").c_str()), after(" shows "));
            } else {
                keys_.Fill(before("=").c_str(), after("=").c_str());
            }
        }
    }

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
    // A machine: the date in service takes over the day of purchase, the Federal cost spreads to the other books.
    keys_.Type("m001");
    Play("cboAssetType=P | sitxDescription=Lathe, 16 inch | sitxDivision=Plant | sidtPurchased=3/10/01 | press Up");
    Play("sidtInService shows 3/10/2001 | sidbBasis(1)=42500.50 | sidbAdjBasis(4) shows 42,500.50 | press PgDown");
    // Real property: straight line and mid-month by its type.
    Play("new B001 | cboAssetType=RL | sidbClassLife=39 | sitxDescription=Plant building | sidtInService=July 15, 1999");
    Play("sidbPeriod(1)=39 | sidbBasis(1)=250000 | sidbPeriod(2)=39 | sidbPeriod(3)=39 | sidbPeriod(4)=39 | press PgDown");
    // A third-class asset; what is no date stays to be put right.
    Play("new I001 | cboAssetType=I | sitxDescription=Licence | sidtInService=20020101 | press Return");
    Play("sidtInService shows 20020101 | sidtInService=1/1/2002 | sidbBasis(1)=1200 | press PgDown");
    // A used automobile, mostly private: not more than half in business forces straight line. With a limit, and listed.
    Play("new V001 | cboNewUsed=U | cboAssetType=P | sitxDescription=Sedan | sitxSerialNum=1FAFP53U | sidbBusinessUse=40");
    Play("sidtInService=9-1-02 | check chkListed(1) | check chkAuto(1) | sidbBasis(1)=18,900");
    Play("sidbAdjBasis(2) shows 7,560.00 | press PgDown");
    // A stock and a collectible: nothing depreciates.
    Play("new S001 | sidtInService=5/5/2000 | cboDeprType(1)=ST | sidbBasis(1)=999.99 | press PgDown");
    Play("new C001 | sidtInService=5/5/2000 | cboDeprType(1)=CO | sidbBasis(1)=999.99 | press PgDown");
    // An amortised cost; salvage in one book, which spreads to no other; an expensed asset; one with additional depreciation.
    Play("new A001 | sitxDescription=Start-up costs | sidtInService=1/1/2003 | cboDeprType(1)=AM | cboDeprMethod(1)=SL");
    Play("sidbPeriod(1)=5 | sidbBasis(1)=6000 | press PgDown");
    Play("new G001 | sidtInService=4/1/2000 | sidbBasis(1)=8000 | cboDeprType(3)=G | cboDeprMethod(3)=SY | sidbSalvage(3)=800");
    Play("sidbSalvage(1) shows 0.00 | press PgDown");
    Play("new E001 | sidtInService=2/2/2003 | sidbBasis(1)=2400 | sidbSection179(1)=2400 | press PgDown");
    Play("new P001 | sidtInService=6/1/2003 | sidbADPct(1)=30 | sidbBasis(1)=10000 | sidbAddlDepr(1) shows 3,000.00");
    keys_.Press(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(company_.Session.AssetCount(), 10);

    // The first two by number are changed; the collectible after them is deleted.
    keys_.Press(Qt::Key_PageUp, Qt::NoModifier, 12);
    Play("sitxAssetNum shows A001 | sitxDescription=Start-up costs, Denver | press PgDown");
    Play("sitxAssetNum shows B001 | sidbFairMktValue=310000 | press PgDown | sitxAssetNum shows C001");
    company_.Prompts.YesNo = {true};
    keys_.Alt(Qt::Key_D);
    EXPECT_EQ(company_.Prompts.Questions.back().Text, "Delete Asset C001?");
    // What follows it is copied three times.
    Play("sitxAssetNum shows E001");
    company_.Prompts.YesNo = {true, true, true};
    Keyboard::WhenModal("frmCopyAsset", [this] {
        keys_.Type("3");
        keys_.Press(Qt::Key_Return);
        keys_.Type("cpt");
        keys_.Press(Qt::Key_Return, Qt::NoModifier, 2);
        keys_.Press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::activeModalWidget()->findChild<QLabel*>("TextMessage")->text(), "Copies added: 3");
        keys_.Press(Qt::Key_Escape);
    });
    keys_.Alt(Qt::Key_C);
    EXPECT_EQ(company_.Session.AssetCount(), 12);
    // The general one is sold, the machine built and saved.
    Play("press PgDown | sitxAssetNum shows G001 | sidtDateSold=11/30/2003 | sidbSoldAmount=5000 | sidbSoldExpense=125.75");
    Play("sidbGainLoss shows -3,125.75 | check chkAbandoned | check chkSold | press PgDown | press PgDown");
    keys_.GoTo("sitxAssetNum");
    Play("sitxAssetNum shows M001");
    Keyboard::WhenModal("frmDeprBuild", [this] {
        EXPECT_EQ(Keyboard::Name(), "MSFlexGrid1") << "Enter must not save what nobody has looked at";
        keys_.Alt(Qt::Key_S);
    });
    keys_.Alt(Qt::Key_B);
    Play("sidbPrevDepr(1) shows 22,100.26");
    keys_.Alt(Qt::Key_L);
    EXPECT_TRUE(state_.EditFormClosed);

    const std::string dump = Dump();
    const std::string expected = test::ReadAll(TALLYMAR_SOURCE_DIR "/tests/assets/windows/session.csv");
    if (dump != expected) test::WriteAll(TALLYMAR_BINARY_DIR "/session.csv", dump);
    EXPECT_TRUE(dump == expected) << "what was stored is in session.csv of the build folder";
}

TEST_F(KeyboardTest, EnterAndTheArrowsGoThroughAllTabs) {
    for (const char* number : {"A1", "A2"}) company_.Session.AddAssetRecord(test::Machine(number, Date(), 1000));
    Open();
    auto* tabs = form_->findChild<QTabWidget*>("SSTab1");
    auto* hint = form_->findChild<QLabel*>("FieldHint");
    EXPECT_EQ(hint->text(), "Enter the Asset Number (You may use characters A-Z or 0-9)");
    // A number that another asset has comes back; capitals as they are typed.
    keys_.Type("a2");
    Play("sitxAssetNum shows A2 | press Return | sitxAssetNum shows A1 | press Up");
    ASSERT_EQ(company_.Prompts.Messages.size(), 1u);
    EXPECT_EQ(company_.Prompts.Messages[0].Text, "Asset Number already exists. Use a different number");

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

TEST_F(KeyboardTest, TurningATabRunsNoRuleOfAFieldThatNobodyWentTo) {
    AssetRecord asset = test::Machine("A1", Date(), 1000);
    asset.Purchased = Date::FromYmd(2001, 3, 10);
    company_.Session.AddAssetRecord(asset);
    company_.Session.AddAssetRecord(test::Machine("A2", Date(), 1000));
    Open();
    const auto turn = [this](Qt::Key key) { keys_.Press(key, Qt::ControlModifier); };
    keys_.GoTo("sidbBusinessUse");
    turn(Qt::Key_PageDown);
    EXPECT_EQ(Keyboard::Name(), "cboDeprType(1)");
    keys_.GoTo("silgSwitchPeriod(1)");
    keys_.Alt(Qt::Key_G);
    EXPECT_EQ(Keyboard::Name(), "sitxAssetNum");
    turn(Qt::Key_PageUp);
    EXPECT_EQ(Keyboard::Name(), "sidtDateSold");
    turn(Qt::Key_PageDown);
    EXPECT_EQ(Text("sidtInService"), "") << "the day of purchase is for who enters the field";
    // The field that is left has its rules run first, and may keep its tab.
    keys_.Type("A2");
    turn(Qt::Key_PageDown);
    EXPECT_EQ(company_.Prompts.Messages.size(), 1u);
    EXPECT_EQ(Keyboard::Name(), "sitxAssetNum");
    EXPECT_EQ(form_->findChild<QTabWidget*>("SSTab1")->currentIndex(), 0);
}

TEST_F(KeyboardTest, EntriesThatCannotBeStoredKeepTheirFieldAndDroppedOnesComeBack) {
    for (const char* number : {"A1", "A2"}) company_.Session.AddAssetRecord(test::Machine(number, Date(), 1000));
    Open();
    auto* hint = form_->findChild<QLabel*>("FieldHint");
    keys_.Fill("sitxAccountNum", "1234567890123");
    keys_.GoTo("cboDeprType(2)");
    keys_.Press(Qt::Key_PageDown);
    EXPECT_EQ(Keyboard::Name(), "sitxAccountNum");
    keys_.GoTo("sidtDateSold");
    form_->Unload();
    EXPECT_TRUE(form_->isVisible());
    EXPECT_EQ(Keyboard::Name(), "sitxAccountNum");
    keys_.Type("123");
    EXPECT_EQ(hint->text(), "Enter the Bookkeeping General Ledger Account Number ");

    keys_.Fill("sidbBusinessUse", "40");
    keys_.Press(Qt::Key_Return);
    EXPECT_EQ(hint->text(), "Below 51% business use: method set to SL in all books") << "until the next entry";
    keys_.Type("2003/13/1");
    keys_.Press(Qt::Key_Return);
    EXPECT_EQ(hint->text(), "Not a date: nothing will be stored");
    // What is typed right after an access key belongs to what it leads to.
    keys_.Alt(Qt::Key_N);
    keys_.Type("B1");
    EXPECT_EQ(Text("sitxAssetNum"), "B1");
    keys_.Press(Qt::Key_Z, Qt::ControlModifier, 3);
    EXPECT_EQ(Text("sitxAssetNum"), "A1");
    EXPECT_EQ(Text("sitxAccountNum"), "123");
    EXPECT_EQ(Text("sidtInService"), "2003/13/1");
    EXPECT_EQ(hint->text(), "Entries of A1 are back");
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
    state_.CurrentAssetNum = "A2";
    frmFindAsset find(company_.Session, state_, &company_.Prompts);
    QObject::connect(&find, &frmFindAsset::EditWanted, &find, [&wanted] { ++wanted; });
    find.show();
    find.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&find));
    EXPECT_EQ(Keyboard::Name(), "txtSearch");
    auto* grid = find.findChild<QTableView*>("MSFlexGrid1");
    const auto current = [grid] { return grid->model()->index(grid->currentIndex().row(), 0).data().toString().toStdString(); };
    EXPECT_EQ(current(), "A2") << "the asset of the form";
    keys_.Press(Qt::Key_Down);
    EXPECT_EQ(current(), "B1");
    keys_.Type("a");
    EXPECT_EQ(grid->model()->rowCount(), 2);
    EXPECT_EQ(current(), "A1");
    keys_.Press(Qt::Key_Escape);
    EXPECT_EQ(grid->model()->rowCount(), 3);
    EXPECT_EQ(current(), "A1") << "stays chosen";
    keys_.Press(Qt::Key_Tab);
    EXPECT_EQ(Keyboard::Name(), "MSFlexGrid1");
    keys_.Type("b");
    EXPECT_EQ(current(), "B1");
    auto* head = grid->horizontalHeader();
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, {head->sectionPosition(1) + 5, head->height() / 2});
    EXPECT_EQ(current(), "A2") << "by division";
    EXPECT_EQ(head->sortIndicatorSection(), 1);
    EXPECT_EQ(head->sortIndicatorOrder(), Qt::AscendingOrder);
    keys_.Press(Qt::Key_Down);
    EXPECT_EQ(current(), "B1");
    keys_.Press(Qt::Key_Up);
    EXPECT_EQ(current(), "A2");
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
