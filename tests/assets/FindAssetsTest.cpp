#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assets/FindAssets.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

using testing::ElementsAre;

class FindAssetsTest : public testing::Test {
 protected:
    AssetRecord Add(const std::string& number, const std::string& division, const std::string& description = "",
                    Date inService = Date()) {
        AssetRecord record = test::Machine(number, inService, 100);
        record.Division = division;
        record.Department = "D" + division;
        record.AccountNum = "GL" + number;
        record.Description = description;
        company_.Session.AddAssetRecord(record);
        return record;
    }

    FindAssets Filled(bool byDate = false, bool byGLNumber = false) {
        FindAssets found(company_.Session, byDate, byGLNumber);
        found.FillAll();
        return found;
    }

    static std::vector<std::string> Column(const FindAssets& found, int column) {
        std::vector<std::string> cells;
        for (int row = 0; row < found.RowCount(); ++row) cells.push_back(found.Cell(row, column));
        return cells;
    }

    test::TestCompany company_;
};

TEST_F(FindAssetsTest, ColumnsFollowTheSettings) {
    Add("A1", "East", "Lathe", Date::FromYmd(2003, 2, 1));
    const auto texts = [this](bool byDate, bool byGL) {
        const FindAssets found = Filled(byDate, byGL);
        std::string text;
        for (int i = 0; i < FindColumns::kCount; ++i)
            text += std::string(found.Columns().Heading(i)) + "=" + found.Cell(0, i) + " ";
        return text;
    };
    EXPECT_EQ(FindColumns::For(false, true).Find("g/l number"), 2);
    EXPECT_EQ(FindColumns::For(false, true).Find("AccountNum"), 2);
    EXPECT_EQ(FindColumns::For(false, true).Find("Department"), std::nullopt);
    EXPECT_EQ(texts(false, false), "Asset #=A1 Division=East Department=DEast Description=Lathe ");
    EXPECT_EQ(texts(false, true), "Asset #=A1 Division=East G/L Number=GLA1 Description=Lathe ");
    EXPECT_EQ(texts(true, false), "Asset #=A1 Division=East Date=2003/02/01 Description=Lathe ");
    EXPECT_EQ(texts(true, true), "Asset #=A1 G/L Number=GLA1 Date=2003/02/01 Description=Lathe ");
}

TEST_F(FindAssetsTest, DisposedAssetsCarryTheirMark) {
    struct {
        const char* Number;
        void (*Dispose)(AssetRecord&);
        bool Marked;
    } const cases[] = {{"A0", [](AssetRecord&) {}, false},
                       {"A1", [](AssetRecord& r) { r.Sold = true; }, true},
                       {"A2", [](AssetRecord& r) { r.Abandoned = true; }, true},
                       {"A3", [](AssetRecord& r) { r.Casualty = true; }, true},
                       {"A4", [](AssetRecord& r) { r.LikeKind = true; }, true},
                       {"A5", [](AssetRecord& r) { r.Notice4 = true; }, false},
                       {"A6", [](AssetRecord& r) { r.SoldExpense = Units(1); }, true},
                       {"A7", [](AssetRecord& r) { r.SoldAmount = Units(1), r.Notice4 = r.Sold = true; }, false},
                       {"A8", [](AssetRecord& r) { r.SoldAmount = Units(-1); }, false},
                       {"A9", [](AssetRecord& r) { r.Notice4 = r.Sold = true; }, true}};
    for (const auto& c : cases) {
        AssetRecord record = test::Machine(c.Number, Date(), 1);
        c.Dispose(record);
        company_.Session.AddAssetRecord(record);
    }
    const FindAssets found = Filled();
    for (int row = 0; row < found.RowCount(); ++row) {
        EXPECT_EQ(found.Cell(row, 0), std::string(cases[row].Number) + (cases[row].Marked ? "(*)" : ""));
        EXPECT_EQ(found.AssetNum(row), cases[row].Number);
    }
}

TEST_F(FindAssetsTest, SortsNumbersAsNumbersAndTextsAsTexts) {
    Add("A1", "10");
    Add("A2", "9");
    Add("A3", "west");
    Add("A4", "East");
    Add("A5", "");
    Add("A6", "9.5");
    Add("A7", "1-2");
    AssetRecord sold = test::Machine("A0", Date(), 1);
    sold.Sold = true;
    sold.Division = "10";
    company_.Session.AddAssetRecord(sold);
    FindAssets found = Filled();
    found.Sort(1);
    EXPECT_THAT(Column(found, 1), ElementsAre("", "9", "9.5", "10", "10", "1-2", "East", "west"));
    EXPECT_FALSE(found.SortAscending());
    found.Sort(0);
    EXPECT_THAT(Column(found, 0), ElementsAre("A7", "A6", "A5", "A4", "A3", "A2", "A1", "A0(*)"))
        << "one direction for all columns";
    found.Sort(0);
    EXPECT_EQ(found.Cell(0, 0), "A0(*)");

    EXPECT_EQ(found.Jump("a3", 0), 3);
    EXPECT_EQ(found.Jump("A", 5), 5);
    EXPECT_EQ(found.Jump("A1", 5), 1) << "around the end";
    EXPECT_EQ(found.Jump("B", 0), std::nullopt);
    found.Sort(1, true);
    EXPECT_EQ(found.Cell(found.Jump("WE", 0).value(), 0), "A3");
}

TEST_F(FindAssetsTest, ASearchFindsEveryWordInAnyOfItsFields) {
    const auto add = [this](const char* number, const char* description, const char* second, const char* serial, const char* gl) {
        AssetRecord record = test::Machine(number, Date(), 1);
        record.Description = description;
        record.Descrip2 = second;
        record.SerialNum = serial;
        record.AccountNum = gl;
        record.Division = "lathe";  // is not looked at
        company_.Session.AddAssetRecord(record);
    };
    add("A1", "Lathe, big", "", "SN-77", "1500");
    add("A2", "Desk", "Caf\xe9 table", "", "1500-LATHE");
    add("A3", "Press", "", "SN-78", "");
    add("77", "Lat", "he", "", "");
    FindAssets found(company_.Session, false, false);
    found.FillMore(1);
    const auto search = [&found](const char* text) {
        found.Search(text);
        std::string numbers;
        for (int row = 0; row < found.RowCount(); ++row) numbers += found.AssetNum(row) + " ";
        return numbers;
    };
    EXPECT_EQ(search("lathe"), "");
    found.FillAll();
    EXPECT_EQ(found.RowCount(), 2) << "rows read later are searched too, and no word reaches from one field into the next";
    EXPECT_EQ(found.AssetsRead(), 4);
    EXPECT_EQ(search("77"), "77 A1 ");
    EXPECT_EQ(search("  sn big "), "A1 ");
    EXPECT_EQ(search("CAF\xc9"), "A2 ");
    EXPECT_EQ(search("lathe"), "A1 A2 ");
    found.Sort(0, false);
    EXPECT_EQ(found.Cell(0, 0), "A2");
    EXPECT_EQ(found.RowOf("a1    "), 1);
    EXPECT_EQ(found.RowOf("A3"), std::nullopt);
    EXPECT_EQ(search(" "), "A3 A2 A1 77 ");
}

TEST_F(FindAssetsTest, DatesComeNewestFirst) {
    Add("A1", "", "", Date::FromYmd(1999, 12, 1));
    Add("A2", "", "", Date::FromYmd(2003, 1, 31));
    Add("A3", "", "", Date::FromYmd(2003, 1, 4));
    FindAssets found = Filled(true);
    found.Sort(2);
    EXPECT_THAT(Column(found, 2), ElementsAre("2003/01/31", "2003/01/04", "1999/12/01"));
    found.Sort(2);
    EXPECT_EQ(found.Cell(0, 2), "1999/12/01");
}

TEST_F(FindAssetsTest, ReadsAsFarAsItIsAsked) {
    for (int i = 100; i < 150; ++i) Add(std::to_string(i), "");
    FindAssets found(company_.Session, false, false);
    EXPECT_TRUE(found.FillMore(20));
    EXPECT_EQ(found.RowCount(), 20);
    found.Sort(0);
    EXPECT_EQ(found.RowCount(), 50);
    EXPECT_FALSE(found.FillMore(20));

    EXPECT_TRUE(SelectAsset(company_.Session, "123(*)", company_.Prompts));
    EXPECT_EQ(company_.Session.AssetsRecordset().Get("AssetNum").Text(), "123   ");
    company_.Session.AssetsRecordset().Delete();
    EXPECT_FALSE(SelectAsset(company_.Session, "123(*)", company_.Prompts));
    EXPECT_EQ(company_.Prompts.Messages.back().Text, "Asset 123 no longer exists");
    EXPECT_EQ(found.Cell(23, 0), "123") << "the grid still shows what it was filled with";
}

}  // namespace
}  // namespace tallymar
