#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "CliRunner.h"
#include "platform/runtime/CurrencyAmount.h"

namespace tallymar::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ReportCommands : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_EQ(cli_("new c.mdb --name Works").ExitStatus, 0);
        ASSERT_EQ(cli_("company c.mdb --set FYEFederal=2003-12-31 --set FYEState=2003-12-31 --set FYEBook=2003-12-31 "
                       "--set FYEAMT=2003-12-31")
                      .ExitStatus,
                  0);
        std::string assets = "AssetNum,Description,AssetType,InService,BusinessUse,ClassLife";
        for (int book = 1; book <= 4; ++book) {
            for (const char* column : {"Basis", "Period", "DBPercent", "IRSConvUsed"}) {
                assets += std::string(",") + column + "(" + std::to_string(book) + ")";
            }
        }
        const char* inService[] = {"2002-03-01", "2003-05-01"};
        for (int i = 0; i < 2; ++i) {
            assets += "\nA" + std::to_string(i + 1) + ",Lathe,PP," + inService[i] + ",100,5";
            for (int book = 1; book <= 4; ++book) assets += "," + std::to_string(1000 * book) + ",5,200,Y";
        }
        cli_.Write("assets.csv", assets + "\n");
        ASSERT_EQ(cli_("load c.mdb assets.csv").ExitStatus, 0);
        ASSERT_EQ(cli_("compute c.mdb --books 1,2,3,4").ExitStatus, 0);
    }

    // A column of the whole company, added up.
    CurrencyAmount Sum(const std::string& column) {
        std::istringstream dump(cli_("dump c.mdb --columns \"" + column + "\"").Out);
        std::string line;
        std::getline(dump, line);
        CurrencyAmount sum;
        while (std::getline(dump, line)) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            sum += CurrencyAmount::Parse(line).value();
        }
        return sum;
    }

    CliRunner cli_;
};

TEST_F(ReportCommands, WriteTheSameRunInEveryFormat) {
    const std::string options = " --report-date 2004-01-15 --now 2004-01-15T12:00:00 --sequence \"in service date\"";
    for (const char* name : {"r.pdf", "r.txt", "r.csv", "r.xlsx"}) {
        const CliResult result = cli_("report c.mdb fixed-assets --items items.json --out " + std::string(name) + options);
        ASSERT_EQ(result.ExitStatus, 0) << result.Error;
        EXPECT_FALSE(cli_.Read(name).empty());
    }
    EXPECT_THAT(cli_.Read("r.pdf"), StartsWith("%PDF"));
    EXPECT_THAT(cli_.Read("r.txt"), HasSubstr("Fiscal Year 2002"));
    EXPECT_THAT(cli_.Read("r.csv"), HasSubstr("A2,Lathe,2003-05-01,,100,5,MCRS,DB,200,Y,1000.00,0.00,0.00,200.00,800.00"));
    EXPECT_THAT(cli_.Read("items.json"),
                StartsWith("{\"page\":1,\"op\":\"text\",\"x\":85,\"y\":180,\"w\":826,\"size\":7.5,\"text\":\"Report date:\"}\n"));
}

TEST_F(ReportCommands, RefuseWhatTheFormRefuses) {
    EXPECT_EQ(cli_("report c.mdb no-such --out r.txt").ExitStatus, 1);
    EXPECT_EQ(cli_("report c.mdb post --sequence Colour --out r.txt").ExitStatus, 1);
    const CliResult dates = cli_("report c.mdb fixed-assets --from 2003-01-01 --out r.txt");
    EXPECT_EQ(dates.ExitStatus, 1);
    EXPECT_THAT(dates.Error, HasSubstr("You must enter Both dates or leave both dates blank"));
    ASSERT_EQ(cli_("company c.mdb --set FYEState=").ExitStatus, 0);
    EXPECT_EQ(cli_("report c.mdb fixed-assets --book 1 --out r.txt").ExitStatus, 0);
    EXPECT_EQ(cli_("report c.mdb fixed-assets --book 2 --out r.txt").ExitStatus, 1);
}

TEST_F(ReportCommands, PostNothingWithoutAYesOrAPlaceToPrint) {
    const std::string before = cli_("dump c.mdb").Out;
    const CliResult declined = cli_("post c.mdb --book 1 --out r.txt");  // the end of input is No
    EXPECT_EQ(declined.ExitStatus, 1);
    EXPECT_THAT(declined.Error, HasSubstr("WARNING: Database will be Updated. Do you wish to Continue ?"));
    EXPECT_EQ(cli_("post c.mdb --book 1 --yes --out no/such/folder/r.txt").ExitStatus, 1);
    EXPECT_EQ(cli_("report c.mdb post --out trial.txt").ExitStatus, 0);
    EXPECT_EQ(cli_("dump c.mdb").Out, before);
    EXPECT_FALSE(std::filesystem::exists(cli_.Folder() / "app/Backup/Works Federal 2003-12-31 before closing.mdb"));
}

// Two years of the whole cycle: what was previous and current of one year is previous of the next, in every book.
TEST_F(ReportCommands, CarryTheBooksFromYearToYear) {
    for (int year = 2003; year <= 2004; ++year) {
        for (int book = 1; book <= 4; ++book) {
            const std::string n = "(" + std::to_string(book) + ")";
            const CurrencyAmount previous = Sum("PrevDepr" + n);
            const CurrencyAmount current = Sum("CurrDepr" + n);
            EXPECT_GT(current, CurrencyAmount());
            const CliResult posted = cli_("post c.mdb --book " + std::to_string(book) + " --yes --out posted.csv");
            ASSERT_EQ(posted.ExitStatus, 0) << posted.Error;
            EXPECT_EQ(Sum("PrevDepr" + n), previous + current);
            EXPECT_EQ(Sum("CurrDepr" + n), CurrencyAmount());
        }
        EXPECT_THAT(cli_("company c.mdb").Out, HasSubstr("FYEAMT=" + std::to_string(year + 1) + "-12-31"));
        ASSERT_EQ(cli_("compute c.mdb --books 1,2,3,4").ExitStatus, 0);
    }
    EXPECT_TRUE(std::filesystem::exists(cli_.Folder() / "app/Backup/Works A.M.T. 2004-12-31 before closing.mdb"));
}

TEST_F(ReportCommands, PrintLabels) {
    const CliResult result = cli_("labels c.mdb --sheet 5161 --start A2 --out l.txt --items l.json");
    ASSERT_EQ(result.ExitStatus, 0) << result.Error;
    EXPECT_EQ(result.Out, "1 labels\n");
    EXPECT_THAT(cli_.Read("l.json"), StartsWith("{\"page\":1,\"op\":\"text\",\"x\":576,\"y\":960,"));
    EXPECT_EQ(cli_("labels c.mdb --sheet 9999 --out l.txt").ExitStatus, 1);
}

}  // namespace
}  // namespace tallymar::test
