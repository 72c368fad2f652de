#include "store/AssetRecordAccess.h"

#include <gtest/gtest.h>

#include "platform/runtime/PlatformError.h"
#include "store/Schema.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

class AssetRecordAccessTest : public testing::Test {
 protected:
    recordset::Recordset& Assets() { return company_.Session.AssetsRecordset(); }

    void AddBareRow(const char* number) {
        Assets().AddNew();
        Assets().Set("AssetNum", number);
        Assets().Update();
        Assets().Seek(number);
    }

    AssetRecord Read() {
        AssetRecord record;
        record.CodeSection = "left over";
        company_.Session.ReadAssetRecord(record);
        return record;
    }

    test::TestCompany company_;
};

TEST_F(AssetRecordAccessTest, NullsReadAsNothingAndAreWrittenBackAsValues) {
    AddBareRow("A1");
    const AssetRecord record = Read();
    EXPECT_EQ(record.AssetNum.View(), "A1    ");
    EXPECT_EQ(record.Description, "");
    EXPECT_TRUE(record.InService.IsNone());
    EXPECT_EQ(record.DBPercent[4], 0);
    EXPECT_TRUE(record.Basis[1].IsZero());
    EXPECT_EQ(record.CodeSection, "1245");

    company_.Session.WriteAssetRecord(record);
    EXPECT_EQ(Assets().Get("InService"), recordset::Value(Date()));
    EXPECT_EQ(Assets().Get("Division").Text(), std::string(16, ' '));
    EXPECT_EQ(Assets().Get("TaxGroup").Text(), "      ");
    EXPECT_EQ(Assets().Get("Description").Text(), "");
    EXPECT_EQ(Assets().Get("AssetNum").Text(), "A1    ");
    EXPECT_EQ(Assets().Get("CodeSection").Text(), "1245");
}

TEST_F(AssetRecordAccessTest, FedLifeFollowsClassLife) {
    AddBareRow("A1");
    Assets().Edit();
    Assets().Set("FedLife", std::int16_t{7});
    Assets().Set("ClassLife", *CurrencyAmount::Parse("12.5"));
    Assets().Update();
    const AssetRecord record = Read();
    EXPECT_EQ(record.FedLife, 12);
    EXPECT_EQ(record.CodeSection, "");
    company_.Session.WriteAssetRecord(record);
    EXPECT_EQ(Assets().Get("FedLife").Integer(), 12);
}

TEST_F(AssetRecordAccessTest, BlankCodeSectionDependsOnClassLifeOfEleven) {
    AddBareRow("A1");
    for (const auto& [life, section] : {std::pair{"10.9999", "1245"}, {"11", ""}, {"10.5", "1245"}}) {
        Assets().Edit();
        Assets().Set("ClassLife", *CurrencyAmount::Parse(life));
        Assets().Set("CodeSection", "");
        Assets().Update();
        EXPECT_EQ(Read().CodeSection, section) << life;
    }
}

TEST_F(AssetRecordAccessTest, EveryFieldComesBackAndOnlyAddingLeavesTheGroupEmpty) {
    AssetRecord record = test::Machine("ZZ9", Date::FromYmd(2003, 5, 6), 1234);
    record.Division = "North";
    record.Descrip2 = "caf\xE9";
    record.CodeSection = "1250";
    record.DateSold = Date::FromYmd(2004, 1, 2);
    record.Notice4 = record.Sold = record.PropertyTax = true;
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        record.DeprType[book] = static_cast<std::int16_t>(book);
        record.Salvage[book] = CurrencyAmount::FromTenThousandths(book * 11111);
        record.DateDeprToo[book] = Date::FromYmd(2000 + book, 12, 31);
        record.Agri[book] = book % 2 == 0;
        record.Auto[book] = book % 2 == 1;
    }
    record.FedLife = 5;
    company_.Session.AddAssetRecord(record);
    Assets().Seek("zz9");
    ASSERT_FALSE(Assets().NoMatch());
    EXPECT_EQ(Assets().Get("TaxGroup").Text(), "");
    EXPECT_EQ(Read(), record);

    company_.Session.WriteAssetRecord(record);
    record.TaxGroup = "      ";
    EXPECT_EQ(Read(), record);
}

TEST_F(AssetRecordAccessTest, AFailedWriteLeavesTheRowAndNoEdit) {
    AddBareRow("A1");
    AddBareRow("A2");
    AssetRecord record = Read();
    record.AssetNum = "A1";
    record.Description = "changed";
    const auto failsWith = [&](Failure failure) {
        try {
            company_.Session.WriteAssetRecord(record);
            ADD_FAILURE() << "no failure";
        } catch (const PlatformError& error) {
            EXPECT_EQ(error.Code(), failure);
        }
        EXPECT_FALSE(Assets().EditPending());
        EXPECT_EQ(Read().AssetNum.Trimmed(), "A2");
        EXPECT_EQ(Read().Description, "");
    };
    failsWith(Failure::DuplicateKey);
    record.AssetNum = "A2";
    record.AccountNum = "1234567890123";
    failsWith(Failure::FieldTooSmall);
}

}  // namespace
}  // namespace tallymar
