#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRunner.h"

namespace tallymar {
namespace {

using testing::HasSubstr;

class AssetCommandsTest : public testing::Test {
 protected:
    void SetUp() override {
        Good("new c.mdb");
        Good("company c.mdb --set FYEFederal=2002-06-30");
        cli_.Write("a.csv",
                   "AssetNum,InService,AssetType,BusinessUse,ClassLife,Division,Description,Basis(1),Period(1),DBPercent(1),"
                   "IRSConvUsed(1),Sold\r\n"
                   "A2,2000-07-01,PP,100,5,9,Caf\xC3\xA9 table,1000,5,200,Y,False\r\n"
                   "A1,2001-01-15,PP,100,5,10,Lathe,2000,5,200,Y,True\r\n");
        Good("load c.mdb a.csv");
    }

    std::string Good(const std::string& arguments) { return cli_.Good(arguments); }
    std::string Bad(const std::string& arguments) { return cli_.Bad(arguments); }

    test::CliRunner cli_;
};

TEST_F(AssetCommandsTest, BuildPrintsTheYearsAndSavesWhenTold) {
    EXPECT_EQ(Good("build c.mdb a2 --csv"),
              "YearEnding,Previous(1),Current(1),Previous(2),Current(2),Previous(3),Current(3),Previous(4),Current(4)\r\n"
              "2001-06-30,0,200,0,0,0,0,0,0\r\n"
              "2002-06-30,200,320,0,0,0,0,0,0\r\n");
    EXPECT_EQ(Good("dump c.mdb --columns 'CurrDepr(1)'"), "CurrDepr(1)\r\n\r\n\r\n") << "nothing is written unasked";
    EXPECT_EQ(Good("build c.mdb A2 --save"),
              "              Federal  Federal     State    State      Book     Book       AMT      AMT\n"
              "Year Ending  Previous  Current  Previous  Current  Previous  Current  Previous  Current\n"
              "6/30/2001        0.00   200.00      0.00     0.00      0.00     0.00      0.00     0.00\n"
              "6/30/2002      200.00   320.00      0.00     0.00      0.00     0.00      0.00     0.00\n");
    EXPECT_EQ(Good("dump c.mdb --columns 'AssetNum,PrevDepr(1),CurrDepr(1),YearThru(1)'"),
              "AssetNum,PrevDepr(1),CurrDepr(1),YearThru(1)\r\nA1,,,\r\n\"A2    \",200,320,1\r\n");
    EXPECT_THAT(Bad("build c.mdb A9"), HasSubstr("There is no asset \"A9\""));
    Good("company c.mdb --set FYEFederal=");
    EXPECT_THAT(Bad("build c.mdb A2"), HasSubstr("Company fiscal year end dates have not been set up properly"));
}

TEST_F(AssetCommandsTest, FindListsAndSorts) {
    EXPECT_EQ(Good("find c.mdb"),
              "Asset #  Division  Department  Description\n"
              "A1(*)    10                    Lathe\n"
              "A2       9                     Caf\xC3\xA9 table\n");
    EXPECT_EQ(Good("find c.mdb --date --gl --sort date --descending"),
              "Asset #  G/L Number  Date        Description\n"
              "A1(*)                2001/01/15  Lathe\n"
              "A2                   2000/07/01  Caf\xC3\xA9 table\n");
    EXPECT_THAT(Good("find c.mdb --sort division"), HasSubstr("A2       9                     Caf\xC3\xA9 table\nA1(*)"));
    EXPECT_THAT(Bad("find c.mdb --sort Price"), HasSubstr("Price"));
    EXPECT_EQ(Good("find c.mdb --search 'caf\xC3\xA9 a'"),
              "Asset #  Division  Department  Description\n"
              "A2       9                     Caf\xC3\xA9 table\n");
}

TEST_F(AssetCommandsTest, CopyIsAllOrNothing) {
    EXPECT_EQ(Good("copy c.mdb A2 --prefix cpt --count 2"), "CPT001\nCPT002\n");
    EXPECT_THAT(Bad("copy c.mdb A2 --prefix ABCDE --count 11"), HasSubstr("ABCDE10"));
    EXPECT_EQ(Good("dump c.mdb --columns AssetNum"), "AssetNum\r\nA1\r\nA2\r\nCPT001\r\nCPT002\r\n");
    Bad("copy c.mdb A2 --prefix 'A B' --count 1");
}

TEST_F(AssetCommandsTest, NewAssetTakesTheNextNumber) {
    EXPECT_EQ(Good("new-asset c.mdb"), "NEW001\n");
    EXPECT_EQ(Good("new-asset c.mdb --numeric --default-type COLL --default-method XX --default-newused Used"), "000001\n");
    EXPECT_EQ(Good("dump c.mdb --columns 'AssetNum,NewUsed,DeprType(1),DeprType(4),DeprMethod(2),DBPercent(1)'"),
              "AssetNum,NewUsed,DeprType(1),DeprType(4),DeprMethod(2),DBPercent(1)\r\n"
              "000001,U,10,1,7,\r\nA1,,,,,200\r\nA2,,,,,200\r\nNEW001,N,0,0,0,200\r\n");
    cli_.Write("high.csv", "AssetNum\r\n032767\r\n");
    Good("load c.mdb high.csv");
    Good("new d.mdb");
    Good("load d.mdb high.csv");
    EXPECT_THAT(Bad("new-asset d.mdb --numeric"), HasSubstr("Overflow"));
}

}  // namespace
}  // namespace tallymar
