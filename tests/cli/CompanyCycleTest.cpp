#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRunner.h"

namespace tallymar {
namespace {

using testing::HasSubstr;

constexpr const char* kTwoAssets =
    "AssetNum,AssetType,NewUsed,InService,BusinessUse,ClassLife,Basis(1),Period(1),DBPercent(1),IRSConvUsed(1)\r\n"
    "A2,PP,N,2003-11-02,100,5,1000.25,5,200,Y\r\n"
    "A1,PP,N,2003-02-01,100,5,1000,5,200,Y\r\n";

class CliTest : public testing::Test {
 protected:
    std::string Good(const std::string& arguments) { return cli_.Good(arguments); }
    std::string Bad(const std::string& arguments) { return cli_.Bad(arguments); }

    test::CliRunner cli_;
};

TEST_F(CliTest, AYearFromNothing) {
    Good("new c.mdb --name 'Caf\xC3\xA9 Machine Works'");
    const std::string profile = Good("company c.mdb --set FYEFederal=2003-12-31 --set 'City=Denver' --set Round=True");
    EXPECT_THAT(profile, HasSubstr("Company=Caf\xC3\xA9 Machine Works\n"));
    EXPECT_THAT(profile, HasSubstr("FYEFederal=2003-12-31\nFYEState=\n"));
    EXPECT_THAT(profile, HasSubstr("Round=True\n"));
    cli_.Write("two.csv", kTwoAssets);
    Good("load c.mdb two.csv");
    EXPECT_EQ(Good("compute c.mdb --books 1 --list list.csv"), "Federal 2,000.25 1,000.25 50.01\n");
    EXPECT_EQ(cli_.Read("list.csv"), "AssetNum,Book,CurrDepr,Status,StatusText\r\nA1,1,200,0,\r\nA2,1,200.05,0,\r\n");
    EXPECT_EQ(Good("--trace trace.txt compute c.mdb --books 1 --mid-quarter 1"), "Federal 2,000.25 1,000.25 50.01\n");
    const std::string trace = cli_.Read("trace.txt");
    EXPECT_THAT(trace, testing::AllOf(HasSubstr("engine: A1 Federal as of 12/31/2003: 350\n"), HasSubstr("sql: UPDATE")));
    EXPECT_EQ(Good("dump c.mdb --columns 'AssetNum,CurrDepr(1),IRSConvUsed(1)'"),
              "AssetNum,CurrDepr(1),IRSConvUsed(1)\r\n\"A1    \",350,Q\r\n\"A2    \",50.01,Q\r\n");

    // Version control: what is dumped loads into the same company again.
    const std::string dump = Good("dump c.mdb");
    cli_.Write("dump.csv", dump);
    Good("new d.mdb");
    Good("load d.mdb dump.csv");
    EXPECT_EQ(Good("dump d.mdb"), dump);
}

TEST_F(CliTest, RefusalsChangeNothing) {
    Good("new c.mdb");
    cli_.Write("two.csv", kTwoAssets);
    Good("load c.mdb two.csv");
    const std::string before = cli_.Read("c.mdb");
    EXPECT_THAT(Bad("new c.mdb"), HasSubstr("--force"));
    EXPECT_THAT(Bad("company c.mdb --set Company=X --set FYEFederal=31/12/2003"), HasSubstr("FYEFederal"));
    EXPECT_THAT(Bad("company c.mdb --set Compnay=X"), HasSubstr("Compnay"));
    EXPECT_THAT(Bad("company c.mdb --set State=Colorado"), HasSubstr("State"));
    EXPECT_THAT(Bad("load c.mdb missing.csv"), HasSubstr("missing.csv"));
    cli_.Write("bad.csv", "AssetNum,Basis(1)\nA1,5\nA9,1.23456\n");
    EXPECT_THAT(Bad("load c.mdb bad.csv"), testing::AllOf(HasSubstr("line 3"), HasSubstr("Basis(1)")));
    EXPECT_THAT(Bad("dump c.mdb --columns Nonsense"), HasSubstr("Nonsense"));
    Bad("compute c.mdb --books 5");
    EXPECT_THAT(Bad("lode c.mdb two.csv"), HasSubstr("lode"));
    Bad("compute c.mdb");
    Bad("compute c.mdb --books 1 --list /nonexistent/list.csv");
    Bad("frobnicate c.mdb");
    EXPECT_EQ(cli_.Read("c.mdb"), before);
    EXPECT_THAT(Bad("dump missing.mdb"), HasSubstr("missing.mdb"));
    EXPECT_FALSE(std::filesystem::exists(cli_.Folder() / "missing.mdb"));
    cli_.Write("text.mdb", "this is no company");
    EXPECT_THAT(Bad("dump text.mdb"), HasSubstr("text.mdb"));
    EXPECT_EQ(cli_.Read("text.mdb"), "this is no company");
}

TEST_F(CliTest, NeedsNoFolderOfItsOwn) {
    cli_.Write("app", "a file where the application folder should be");
    Good("new c.mdb");
    Good("company c.mdb --set FYEFederal=2003-12-31");
    cli_.Write("two.csv", kTwoAssets);
    Good("load c.mdb two.csv");
    EXPECT_EQ(Good("compute c.mdb --books 1"), "Federal 2,000.25 1,000.25 50.01\n");
    EXPECT_THAT(Good("dump c.mdb"), HasSubstr("A2"));
    EXPECT_EQ(cli_.Read("app"), "a file where the application folder should be");
}

TEST_F(CliTest, TheListOfResultsStaysACsvWhateverTheNumbersHold) {
    Good("new c.mdb");
    cli_.Write("odd.csv",
               "AssetNum\n\"A,\"\"1\"\n\xC3\x89"
               "2\n");
    Good("load c.mdb odd.csv");
    const test::CliResult computed = cli_("compute c.mdb --books 1 --list list.csv");
    EXPECT_EQ(computed.ExitStatus, 0);
    EXPECT_THAT(computed.Error, HasSubstr("Federal: no fiscal year end is set"));
    EXPECT_THAT(cli_.Read("list.csv"), testing::AllOf(HasSubstr("\n\"A,\"\"1\",1,0,"), HasSubstr("\n\xC3\x89"
                                                                                                 "2,1,0,")));
}

}  // namespace
}  // namespace tallymar
