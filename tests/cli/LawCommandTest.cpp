#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRunner.h"

namespace tallymar {
namespace {

using testing::HasSubstr;

// A company of one limited automobile and one expensed machine of 2020, with the tables of the source.
class LawCommand : public testing::Test {
 protected:
    LawCommand() {
        std::filesystem::create_directories(run.Folder() / "app");
        std::filesystem::copy(TALLYMAR_SOURCE_DIR "/data/law", run.Folder() / "app/law");
        run.Good("new client.mdb");
        run.Good("company client.mdb --set FYEFederal=2020-12-31");
        run.Write("assets.csv",
                  "AssetNum,Description,AssetType,NewUsed,InService,BusinessUse,ClassLife,Period(1),DBPercent(1),IRSConvUsed(1),"
                  "Basis(1),Section179(1),ADPct(1),Auto(1)\n"
                  "CAR,Sedan,PP,N,2020-04-01,100,5,5,200,Y,60000,0,0,True\n"
                  "ROBOT,Robot,PP,N,2020-05-01,100,7,7,200,Y,1040001,1040001,0,False\n");
        run.Good("load client.mdb assets.csv");
    }

    std::string Computed(const std::string& file) {
        run.Good("compute " + file + " --books 1 --list list.csv");
        return run.Read("list.csv");
    }
    test::CliRunner run;
};

TEST_F(LawCommand, TheCompanysChoiceDecidesAndGoesWithIt) {
    const std::string profile = run.Good("company client.mdb");
    EXPECT_EQ(profile.find("Limits"), profile.npos) << "a company that has not chosen says nothing of it";
    const std::string delivered = Computed("client.mdb");
    EXPECT_THAT(delivered, HasSubstr("7660"));
    run.Good("report client.mdb current-depreciation --out r.txt");
    EXPECT_THAT(run.Read("r.txt"), HasSubstr("179 Expense EXCEEDS $25,000 ***"));
    std::filesystem::create_directories(run.Folder() / "forms");
    run.Good("form 4562 client.mdb --book 1 --out forms --json f.json");
    EXPECT_THAT(run.Read("f.json"), HasSubstr("\"1\": \"24000.00\""));

    EXPECT_THAT(run.Good("company client.mdb --set limits=law"), HasSubstr("\nLimits=Law\n"));
    EXPECT_THAT(Computed("client.mdb"), HasSubstr("10100"));
    run.Good("report client.mdb current-depreciation --out r.txt");
    EXPECT_THAT(run.Read("r.txt"), HasSubstr("*** WARNING - Current Year 179 Expense EXCEEDS $1,040,000 ***"));
    run.Good("form 4562 client.mdb --book 1 --out forms --json f.json");
    EXPECT_THAT(run.Read("f.json"), HasSubstr("\"1\": \"1040000.00\""));
    EXPECT_THAT(run.Read("f.json"), HasSubstr("\"3\": \"2590000.00\""));

    run.Good("resequence client.mdb again.mdb");
    EXPECT_THAT(run.Good("company again.mdb"), HasSubstr("\nLimits=Law\n"));
    run.Good("company client.mdb --set Limits=Delivered");
    EXPECT_EQ(Computed("client.mdb"), delivered);
    EXPECT_THAT(run.Bad("company client.mdb --set Limits=Lax --set City=Denver"), HasSubstr("not \"Lax\""));
    EXPECT_EQ(run.Good("company client.mdb").find("Denver"), std::string::npos) << "all or nothing";
}

TEST_F(LawCommand, AYearWithoutItsRowIsToldAndNotGuessed) {
    run.Good("company client.mdb --set Limits=Law --set FYEFederal=2031-12-31");
    EXPECT_THAT(run.Bad("form 4562 client.mdb --book 1 --out ."), HasSubstr("no limits of the tax year 2031"));
    run.Good("post client.mdb --book 1 --out p.txt --yes");  // nothing was expensed in 2031: nothing to warn of
    EXPECT_EQ(run.Read("p.txt").find("WARNING"), std::string::npos);
    run.Write("next.csv", "AssetNum,InService\nROBOT,2032-05-01\n");
    run.Good("load client.mdb next.csv");
    run.Good("report client.mdb current-depreciation --out r.txt");
    EXPECT_THAT(run.Read("r.txt"), HasSubstr("NO 179 Limit of 2032"));
}

TEST_F(LawCommand, PrintsWhatHoldsAndWhereItComesFrom) {
    const std::string own = run.Read("app/law/automobiles.txt");
    run.Write("app/law/automobiles.txt",
              "table automobiles\ncar | 2024-01-01..2024-12-31 | any | 1 | 2 | 3 | 4 | 5 | our own |\n");
    EXPECT_THAT(run.Good("law 2024-05-01"),
                HasSubstr("Automobile, car: 1 (with the allowance 2), 3, 4, then 5; acquired at any time\n"
                          "    our own ("));
    run.Write("app/law/automobiles.txt", own);
    const std::string law = run.Good("law 2025-06-01 --acquired 2025-01-19");
    EXPECT_THAT(law, HasSubstr("Special allowance: 40%"));
    EXPECT_EQ(law.find("100%"), law.npos) << law;
    EXPECT_THAT(law, HasSubstr("limit 2,500,000, threshold 4,000,000, heavy sport utility vehicle 31,300"));
    EXPECT_THAT(run.Good("law --check app/law/automobiles.txt"), HasSubstr("has no faults"));
    run.Write("bad.txt", "table section179\n2027 | 1 | 2 | - | x\n2027 | 1 | 2 | - | x\ntwenty | 1 | 2 | - | x\n");
    const test::CliResult bad = run("law --check bad.txt");
    EXPECT_EQ(bad.ExitStatus, 1);
    EXPECT_EQ(bad.Out, "bad.txt, line 3: line 2 holds for the same dates\nbad.txt, line 4: \"twenty\" is no year\n");
    EXPECT_EQ(bad.Error, "tallymar-cli: bad.txt has 2 faults\n");
    run.Bad("law");
    run.Bad("law 2025-13-01");
}

}  // namespace
}  // namespace tallymar
