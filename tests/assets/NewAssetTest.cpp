#include <gtest/gtest.h>

#include "assets/CopyAsset.h"
#include "assets/NewAsset.h"
#include "support/Failures.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

class NewAssetTest : public testing::Test {
 protected:
    void Add(const std::string& number) { company_.Session.AddAssetRecord(test::Machine(number, Date(), 1)); }
    std::string New(bool numeric) { return AddNewAsset(company_.Session, {.NumericNumbers = numeric}); }
    int FailureOfNew(bool numeric) {
        const auto before = company_.Session.AssetCount();
        const int failure = test::NumberOf([&] { New(numeric); });
        EXPECT_TRUE(failure == 0 || company_.Session.AssetCount() == before);
        return failure;
    }

    test::TestCompany company_;
};

TEST_F(NewAssetTest, PrefixedNumbersFillTheFirstGap) {
    EXPECT_EQ(New(false), "NEW001");
    EXPECT_EQ(New(false), "NEW002");
    company_.Session.AssetsRecordset().Seek("NEW001");
    company_.Session.AssetsRecordset().Delete();
    EXPECT_EQ(New(false), "NEW001");
    EXPECT_EQ(New(false), "NEW003");
    recordset::RunBatch(company_.Session.Database(), recordset::OnFailure::AllOrNothing, [&] {
        for (int k = 4; k <= 999; ++k) Add(CopyNumber("NEW", k));
    });
    EXPECT_EQ(FailureOfNew(false), 3163) << "NEW1000 is too wide";
}

TEST_F(NewAssetTest, NumericNumbersCountOnFromTheLast) {
    EXPECT_EQ(New(true), "1");
    EXPECT_EQ(New(true), "2");
    Add("123");  // sorts before "2"
    EXPECT_EQ(New(true), "3");
    Add("99");
    EXPECT_EQ(New(true), "100");
    EXPECT_EQ(New(true), "000101") << "100 is taken: from the second try on six digits wide";
    Add("A00123");
    EXPECT_EQ(New(true), "000001") << "no digits in front: from one, as wide as the last";
    EXPECT_EQ(New(true), "000002");
}

TEST_F(NewAssetTest, TheWidthIsThatOfTheLastNumber) {
    Add("000123");
    EXPECT_EQ(New(true), "000124");
    Add("000125");
    EXPECT_EQ(New(true), "000126");
    Add("12E3");
    EXPECT_EQ(New(true), "13") << "digits up to the letter count, nothing after it";
}

TEST_F(NewAssetTest, NumbersAreCountedInSixteenBits) {
    Add("032766");
    EXPECT_EQ(New(true), "032767");
    EXPECT_EQ(FailureOfNew(true), 6) << "free, and above the count all the same";
    Add("9999");
    EXPECT_EQ(New(true), "10000");
}

TEST_F(NewAssetTest, StartsWithTheUsersDefaults) {
    const auto row = [this](const NewAssetDefaults& defaults) {
        AddNewAsset(company_.Session, defaults);
        AssetRecord record;
        company_.Session.ReadAssetRecord(record);
        return record;
    };
    const recordset::Recordset& assets = company_.Session.AssetsRecordset();
    const AssetRecord plain = row({});
    EXPECT_EQ(plain.NewUsed, "N");
    EXPECT_EQ(plain.CodeSection, "1245");
    EXPECT_EQ(plain.AssetType, "PP");
    EXPECT_EQ(plain.ClassLife, Units(5));
    EXPECT_EQ(plain.BusinessUse, Units(100));
    EXPECT_EQ(plain.TaxGroup, "      ");
    EXPECT_EQ(plain.IRSConvUsed[4], "Y");
    EXPECT_EQ(plain.DBPercent[4], 200);
    EXPECT_TRUE(assets.Get("Period(1)").IsNull());
    EXPECT_TRUE(assets.Get("Description").IsNull());

    const AssetRecord collectible = row({.DeprType = "COLL", .DeprMethod = "XX", .NewUsed = "Used"});
    EXPECT_EQ(collectible.NewUsed, "U");
    EXPECT_EQ(collectible.DeprType[1], 10);
    EXPECT_EQ(collectible.DeprType[3], 10);
    EXPECT_EQ(collectible.DeprType[4], 1);
    EXPECT_EQ(collectible.DeprMethod[4], 7);
    EXPECT_TRUE(assets.Get("DBPercent(1)").IsNull());

    row({.DeprType = "NONE", .DeprMethod = "??"});
    EXPECT_TRUE(assets.Get("DeprType(1)").IsNull());
    EXPECT_TRUE(assets.Get("DeprMethod(1)").IsNull());
}

}  // namespace
}  // namespace tallymar
