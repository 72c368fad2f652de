#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assets/AssetEditSession.h"
#include "platform/runtime/Windows1252.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

using test::Machine;
using testing::ElementsAre;

class AssetEditSessionTest : public testing::Test {
 protected:
    // Numbers in order of their AssetNum.
    void Add(std::initializer_list<const char*> numbers) {
        for (const char* number : numbers) company_.Session.AddAssetRecord(Machine(number, Date::FromYmd(2003, 3, 1), 1000));
        company_.Session.AssetsRecordset().MoveFirst();
    }

    AssetRecord Stored(const std::string& number) {
        recordset::Recordset assets = company_.Session.Database().OpenRecordset("Assets");
        assets.SetIndex("AssetNum");
        assets.Seek(number);
        if (assets.NoMatch()) throw std::runtime_error("no asset " + number);
        AssetRecord record;
        AssetRecordAccess(assets).ReadAssetRecord(record);
        return record;
    }

    std::vector<std::string> Numbers() {
        std::vector<std::string> numbers;
        recordset::Recordset assets = company_.Session.Database().OpenRecordset("Assets");
        assets.SetIndex("AssetNum");
        for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) numbers.emplace_back(RTrim(assets.Get("AssetNum").Text()));
        return numbers;
    }

    test::TestCompany company_;
    AssetEditState state_;
    AssetEditSession edit_{company_.Session, state_, company_.Prompts};
};

TEST_F(AssetEditSessionTest, WhatIsTypedIsStoredWhenTheAssetIsLeft) {
    Add({"A1", "A2", "A3"});
    edit_.Open();
    EXPECT_EQ(edit_.Caption(), "Edit Asset Information for New Company with 3 Assets in the database");
    EXPECT_FALSE(state_.EditFormClosed);
    EXPECT_EQ(edit_.Values.InService, "3/1/2003");
    EXPECT_EQ(edit_.Values.Book[2].AdjBasis, Units(1000)) << "computed on the load";

    AssetRecord expected = Stored("A1");
    edit_.Values.Description = expected.Description = "Lathe";
    edit_.Values.Division = "East";
    expected.Division = "East";
    edit_.Values.Book[3].DeprMethod = "SL";
    expected.DeprMethod[3] = 1;
    edit_.Values.Book[3].DBPercent = "";
    expected.DBPercent[3] = 0;
    edit_.Values.DateSold = "not a date";
    edit_.Values.Book[4].Basis = expected.Basis[4] = Units(1234);
    expected.TaxGroup = "      ";
    edit_.Next();
    EXPECT_EQ(Stored("A1"), expected);
    EXPECT_EQ(edit_.Values.AssetNum, "A2");
    EXPECT_EQ(edit_.Values.Description, "");

    edit_.Next();
    edit_.Values.Description = "kept at the end too";
    edit_.Next();
    EXPECT_EQ(edit_.Values.AssetNum, "A3");
    EXPECT_EQ(Stored("A3").Description, "kept at the end too");
    edit_.First();
    edit_.Previous();
    EXPECT_EQ(edit_.Values.AssetNum, "A1");
    edit_.Last();
    EXPECT_EQ(edit_.Values.AssetNum, "A3");
}

TEST_F(AssetEditSessionTest, ListsWithoutTheStoredLetterCarryOver) {
    Add({"A1", "A2"});
    AssetRecord odd = Stored("A2");
    odd.IRSConvUsed[2] = " ";
    odd.DeprType[2] = 27;
    odd.DBPercent[2] = 130;
    odd.AssetType = "??";
    company_.Session.AssetsRecordset().Seek("A2");
    company_.Session.WriteAssetRecord(odd);
    company_.Session.AssetsRecordset().MoveFirst();

    edit_.Open();
    edit_.Values.Book[2].IRSConvUsed = "Q";
    edit_.Values.AssetType = "RL";
    edit_.Next();
    EXPECT_EQ(edit_.Values.Book[2].IRSConvUsed, "Q");
    edit_.SaveEdit();
    EXPECT_EQ(Stored("A2").IRSConvUsed[2], "Q");
    EXPECT_EQ(Stored("A2").AssetType, "RL");
    EXPECT_EQ(Stored("A2").DeprType[2], 27) << "an index that the list lacks is not lost";
    EXPECT_EQ(Stored("A2").DBPercent[2], 130);
}

TEST_F(AssetEditSessionTest, DeletingLeavesNoTraceOfTheEntry) {
    Add({"A1", "A2"});
    edit_.Open();
    edit_.Last();
    edit_.Values.Description = "gone with it";
    company_.Prompts.YesNo = {false, true, true};
    EXPECT_FALSE(edit_.Delete());
    EXPECT_EQ(company_.Prompts.Questions.back().Text, "Delete Asset A2?");
    EXPECT_EQ(company_.Prompts.Questions.back().Title, "Confirm");
    EXPECT_THAT(Numbers(), ElementsAre("A1", "A2"));
    EXPECT_FALSE(edit_.Delete());
    EXPECT_EQ(edit_.Values.AssetNum, "A1") << "the one before the last";

    EXPECT_TRUE(edit_.Delete()) << "the form closes";
    EXPECT_TRUE(edit_.Leave());
    EXPECT_THAT(Numbers(), ElementsAre());
}

TEST_F(AssetEditSessionTest, WhatACommandDroppedComesBack) {
    Add({"A1", "A2", "A3"});
    edit_.Open();
    edit_.Values.Description = "Lathe";
    edit_.Values.Book[3].Basis = Units(700);
    company_.Session.AssetsRecordset().Seek("A3");
    edit_.LoadEdit();  // as the find list does
    EXPECT_EQ(edit_.TakeNotice()->Text, "Entries of A1 were not saved. Ctrl+Z brings them back");
    EXPECT_EQ(Stored("A1").Description, "");
    // Meanwhile something else of the asset is stored: that stays.
    edit_.First();
    edit_.Values.Division = "East";
    edit_.Last();
    edit_.Values.Description = "saved on the way back";
    EXPECT_TRUE(edit_.BringBack());
    EXPECT_EQ(Stored("A3").Description, "saved on the way back");
    EXPECT_EQ(edit_.Values.AssetNum, "A1");
    EXPECT_EQ(edit_.Values.Description, "Lathe");
    EXPECT_EQ(edit_.Values.Division, "East");
    EXPECT_EQ(edit_.Values.Book[3].AdjBasis, Units(700));
    edit_.SaveEdit();
    EXPECT_EQ(Stored("A1").Basis[3], Units(700));
    EXPECT_FALSE(edit_.BringBack()) << "once";

    // A new asset drops entries too, also those of another new one, which is as new as it was when it comes back.
    edit_.New();
    edit_.Values.Description = "first";
    edit_.New();
    EXPECT_EQ(edit_.TakeNotice()->Text, "Entries of NEW001 were not saved. Ctrl+Z brings them back");
    edit_.SaveEdit();
    EXPECT_TRUE(edit_.BringBack());
    EXPECT_EQ(edit_.Values.Description, "first");
    EXPECT_TRUE(state_.NewAssetPending);

    // A deleted asset comes back whole, with what had been entered last; a form that stands no longer does not matter.
    edit_.Values.Description = "entered, then deleted";
    const AssetRecord before = Stored("NEW001");
    company_.Prompts.YesNo = {true};
    edit_.Delete();
    EXPECT_EQ(edit_.TakeNotice()->Text, "Asset NEW001 was deleted. Ctrl+Z brings it back");
    EXPECT_TRUE(edit_.Leave());
    AssetEditSession again(company_.Session, state_, company_.Prompts);
    again.Open();
    EXPECT_TRUE(again.BringBack());
    EXPECT_EQ(Stored("NEW001"), before);
    EXPECT_EQ(again.Values.AssetNum, "NEW001");
    EXPECT_EQ(again.Values.Description, "entered, then deleted");
    EXPECT_TRUE(state_.NewAssetPending);
}

TEST_F(AssetEditSessionTest, WhatFieldsTakeInSilentlyIsSaid) {
    Add({"A1", "A2"});
    edit_.Open();
    const auto use = [this](int percent) {
        edit_.Values.BusinessUse = Units(percent);
        edit_.Changed(AssetField::BusinessUse);
        const auto notice = edit_.TakeNotice();
        return notice && notice->IsWarning ? notice->Text : std::string();
    };
    edit_.Focused(AssetField::BusinessUse);
    EXPECT_EQ(use(60), "");
    for (const int typed : {1, 10, 100}) EXPECT_EQ(use(typed), kBusinessUseSetMethods) << "it stays so";
    edit_.Focused(AssetField::BusinessUse);
    EXPECT_EQ(use(40), "") << "straight line already";

    edit_.Values.InService = "2003/13/1";
    EXPECT_TRUE(edit_.Next());
    EXPECT_EQ(edit_.TakeNotice()->Text, "In Service of A1 is not a date: nothing was stored. Ctrl+Z brings it back");
    EXPECT_TRUE(Stored("A1").InService.IsNone());
    EXPECT_TRUE(edit_.BringBack());
    EXPECT_EQ(edit_.Values.InService, "2003/13/1");
}

TEST_F(AssetEditSessionTest, ClosingByTheFrameComesBackToTheAsset) {
    Add({"A1", "A2"});
    edit_.Open();
    edit_.Next();
    edit_.Values.Description = "stored on closing";
    edit_.Values.AssetNum = "A15";
    EXPECT_TRUE(edit_.Leave());
    EXPECT_TRUE(state_.EditFormClosed);
    EXPECT_EQ(Stored("A15").Description, "stored on closing");
    company_.Session.AssetsRecordset().MoveFirst();
    AssetEditSession again(company_.Session, state_, company_.Prompts);
    again.Open();
    EXPECT_EQ(again.Values.AssetNum, "A15") << "under its new number";
    again.Close();
    company_.Session.AssetsRecordset().MoveFirst();
    AssetEditSession third(company_.Session, state_, company_.Prompts);
    third.Open();
    EXPECT_EQ(third.Values.AssetNum, "A1");

    // An asset that has gone meanwhile, and a recordset left after the last row.
    state_.CurrentAssetNum = "GONE";
    AssetEditSession fourth(company_.Session, state_, company_.Prompts);
    fourth.Open();
    EXPECT_EQ(fourth.Values.AssetNum, "A1");
    company_.Session.AssetsRecordset().MoveLast();
    company_.Session.AssetsRecordset().MoveNext();
    fourth.LoadEdit();
    EXPECT_EQ(fourth.Values.AssetNum, "A15");
}

// However the asset is to be left, an entry that cannot be stored keeps it on the screen and is named.
TEST_F(AssetEditSessionTest, AnEntryThatCannotBeStoredIsNeverDropped) {
    Add({"A1", "A2"});
    edit_.Open();
    AssetRecord lathe = Stored("A2");
    lathe.Description = "Engine lathe";
    company_.Session.AssetsRecordset().Seek("A2");
    company_.Session.WriteAssetRecord(lathe);
    ADepre engine(company_.Folder.Path());
    DeprBuildGrid grid;
    struct {
        const char* Why;
        AssetField Field;
        std::function<void(AssetFieldValues&)> Enter;
    } const cases[] = {
        {"Account Number holds 12 characters\n\n", AssetField::AccountNum,
         [](auto& values) { values.AccountNum = "1234567890123"; }},
        {"Number A2 belongs to Engine lathe\n\n", AssetField::AssetNum, [](auto& values) { values.AssetNum = "A2"; }}};
    const std::function<bool()> ways[] = {[this] { return edit_.Next(); },           [this] { return edit_.First(); },
                                          [this] { return edit_.Leave(); },          [this] { return edit_.Close(); },
                                          [&] { return edit_.Build(engine, grid); }, [this] { return edit_.BringBack(); }};
    company_.Prompts.YesNo = {true};
    edit_.Last();
    edit_.New();
    edit_.Values.Description = "Press";
    const AssetRecord before = Stored("NEW001");
    state_.Kept.Keep({.AssetNum = "A1"});
    const AssetFieldValues good = edit_.Values;
    for (const auto& each : cases) {
        edit_.Values = good;
        each.Enter(edit_.Values);
        const AssetFieldValues entered = edit_.Values;
        for (const auto& leave : ways) {
            company_.Prompts.Messages.clear();
            EXPECT_FALSE(leave()) << each.Why;
            ASSERT_EQ(company_.Prompts.Messages.size(), 1u);
            EXPECT_THAT(company_.Prompts.Messages[0].Text, testing::StartsWith(each.Why));
            EXPECT_EQ(edit_.Offending, each.Field);
            EXPECT_EQ(edit_.Values, entered);
            EXPECT_EQ(Stored("NEW001"), before);
            EXPECT_EQ(state_.CurrentAssetNum, "NEW001") << "a refused Close forgets nothing";
            EXPECT_FALSE(state_.EditFormClosed);
        }
    }
    edit_.Values = good;
    EXPECT_TRUE(edit_.Close());
    EXPECT_EQ(Stored("NEW001").Description, "Press");
}

// What no entry can mend, such as a row that another program has deleted, may be left, if the user says so.
TEST_F(AssetEditSessionTest, WhatNoEntryCanMendMayBeLeft) {
    Add({"A1", "A2"});
    edit_.Open();
    edit_.Values.Description = "Lathe";
    recordset::Recordset other = company_.Session.Database().OpenRecordset("Assets");
    other.SetIndex("AssetNum");
    other.Seek("A1");
    other.Delete();
    company_.Prompts.YesNo = {false, true};
    EXPECT_FALSE(edit_.Leave());
    EXPECT_EQ(company_.Prompts.Questions.back().Text, "Close without saving the entries of A1?");
    EXPECT_TRUE(edit_.Leave());
}

TEST_F(AssetEditSessionTest, ADuplicateNumberIsRefusedInTheField) {
    Add({"A1", "A2"});
    edit_.Open();
    const recordset::Recordset& assets = company_.Session.AssetsRecordset();
    edit_.Values.AssetNum = "B7";
    edit_.Left(AssetField::AssetNum);
    EXPECT_FALSE(edit_.AssetNumRejected);
    EXPECT_TRUE(assets.HasCurrentRow()) << "what copies the asset finds it";
    edit_.Values.AssetNum = "A2";
    edit_.Tab = 3;
    edit_.Left(AssetField::AssetNum);
    EXPECT_TRUE(edit_.AssetNumRejected);
    EXPECT_EQ(edit_.Values.AssetNum, "A1");
    EXPECT_EQ(edit_.Tab, kGeneralTab);
    EXPECT_EQ(company_.Prompts.Messages.back().Text, "Asset Number already exists. Use a different number");

    EXPECT_EQ(assets.Get("AssetNum").Text(), "A1    ");

    // Wherever the recordset has gone, what is deleted or saved is the asset on the screen.
    company_.Session.AssetsRecordset().MoveLast();
    company_.Prompts.YesNo = {false};
    edit_.Delete();
    EXPECT_EQ(company_.Prompts.Questions.back().Text, "Delete Asset A1?");
    edit_.Values.AssetNum = "B7";
    edit_.SaveEdit();
    EXPECT_THAT(Numbers(), ElementsAre("A2", "B7"));
}

TEST_F(AssetEditSessionTest, AnEmptyCompanyStartsWithANewAsset) {
    edit_.Open();
    EXPECT_EQ(edit_.Values.AssetNum, "NEW001");
    EXPECT_TRUE(state_.NewAssetPending);
    edit_.Values.Book[1].Basis = Units(500);
    edit_.Changed(AssetField::Basis, 1);
    EXPECT_EQ(edit_.Values.Book[4].AdjBasis, Units(500));
    edit_.Left(AssetField::ClassLife);
    EXPECT_EQ(edit_.Values.Book[4].Period, Units(5));
    edit_.SaveEdit();
    EXPECT_FALSE(state_.NewAssetPending);
    EXPECT_EQ(Stored("NEW001").Basis[3], Units(500));

    edit_.Values.Description = "not saved by a new asset";
    edit_.New();
    EXPECT_EQ(Stored("NEW001").Description, "");
    EXPECT_THAT(Numbers(), ElementsAre("NEW001", "NEW002"));
}

TEST_F(AssetEditSessionTest, TabsAndFocus) {
    Add({"A1"});
    edit_.Open();
    edit_.Focused(AssetField::AssetNum);
    EXPECT_EQ(edit_.FieldHint, "Enter the Asset Number (You may use characters A-Z or 0-9)");
    edit_.Values.Description = "now";
    EXPECT_EQ(edit_.TabChanged(2), AssetField::DeprType);
    EXPECT_EQ(edit_.FieldHint, "");
    EXPECT_EQ(edit_.Mirrors.Description, "now");
    edit_.Focused(AssetField::SwitchPeriod, 2);
    edit_.Values.Description = "and now";
    EXPECT_EQ(edit_.TabChanged(kSaleTab), std::nullopt) << "the last field of a tab takes the jump away";
    EXPECT_EQ(edit_.Mirrors.Description, "and now");
    edit_.Focused(AssetField::DeprType, 4);
    EXPECT_EQ(edit_.Tab, 4) << "the keyboard brings its tab along";
    edit_.Focused(AssetField::Casualty);
    EXPECT_EQ(edit_.Tab, kSaleTab);
    EXPECT_EQ(edit_.TabChanged(kGeneralTab), AssetField::AssetNum);

    edit_.Values.Purchased = "2/2/2002";
    EXPECT_FALSE(edit_.Focused(AssetField::InService));
    edit_.Values.InService = "2/30/2002";
    EXPECT_TRUE(edit_.Focused(AssetField::InService));
    EXPECT_EQ(edit_.Values.InService, "2/2/2002");

    edit_.Values.Sold = true;
    edit_.MsgLabel = "unchanged";
    edit_.TabChanged(3);
    EXPECT_EQ(edit_.MsgLabel, "unchanged");
    edit_.TabChanged(kSaleTab);
    EXPECT_EQ(edit_.MsgLabel, "Asset has been Sold");
}

}  // namespace
}  // namespace tallymar
