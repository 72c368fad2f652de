#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CliRunner.h"

namespace tallymar::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(ExchangeCommand, AsksBeforeAFileIsReplacedAndFailsWhenARunIsRefused) {
    const CliRunner cli;
    cli.Good("new c.mdb");
    cli.Good("company c.mdb --set FYEFederal=2003-12-31");
    cli.Write("ImpDef1.Dat", "2\n1\n2\n");
    cli.Write("data.txt", "A1,East\nA2,West\n");
    EXPECT_THAT(cli.Good("import c.mdb data.txt --book federal --definition ImpDef1.Dat --check"),
                HasSubstr("Records to add: 2    to update: 0"));
    cli.Good("import c.mdb data.txt --book federal --definition ImpDef1.Dat");

    EXPECT_THAT(cli.Good("exchange export c.mdb aascii --type federal"), StartsWith("Total Assets = 2\n"));
    const std::string written = cli.Read("aascii");
    cli.Write("data.txt", "kept");
    for (const char* command :
         {"exchange export c.mdb data.txt --type federal", "export c.mdb data.txt --book federal --definition ImpDef1.Dat"}) {
        const CliResult asked = cli(command);
        EXPECT_EQ(asked.ExitStatus, 1) << command;
        EXPECT_THAT(asked.Error, HasSubstr("data.txt already exists. Replace it?"));
        EXPECT_EQ(cli.Read("data.txt"), "kept");
    }
    cli.Good("exchange export c.mdb data.txt --type federal --yes");
    EXPECT_EQ(cli.Read("data.txt"), written);

    const CliResult refused = cli("exchange export c.mdb assetctl.c01 --type company");
    EXPECT_EQ(refused.ExitStatus, 1);
    EXPECT_THAT(refused.Error, StartsWith("Asset Export file not found for this client:\n"));
    EXPECT_EQ(cli("exchange import c.mdb assetctl.c01 --type company").ExitStatus, 1);
}

TEST(TableCommands, ADumpLoadsAgainAndACheckWritesNothing) {
    const CliRunner cli;
    cli.Good("new a.mdb");
    cli.Good("new b.mdb");
    cli.Write("in.csv", "Number,Cost,Remark\nA1,1250.5,x\nA2,7,y\n");
    const std::string pairs = " --pair 'Cost=Federal Asset Cost' --pair Remark=";
    EXPECT_THAT(cli("load a.mdb in.csv").Error, HasSubstr("line 1, column 2: the table has no column \"Cost\""));
    EXPECT_THAT(cli.Good("load a.mdb in.csv --check" + pairs), HasSubstr("Records to add: 2    to update: 0"));
    EXPECT_EQ(cli.Good("load a.mdb in.csv" + pairs), "Assets added: 2, rewritten: 0\n");
    EXPECT_EQ(cli.Good("load a.mdb in.csv --add-new" + pairs), "Assets added: 2, rewritten: 0\n");

    cli.Good("dump a.mdb --out out.xlsx");
    EXPECT_THAT(cli.Bad("dump a.mdb --out out.ods"), HasSubstr("A workbook is written as an .xlsx, not as an .ods"));
    EXPECT_EQ(cli.Good("load b.mdb out.xlsx"), "Assets added: 4, rewritten: 0\n");
    EXPECT_EQ(cli.Good("dump b.mdb"), cli.Good("dump a.mdb"));
    cli.Write("gap.csv", "AssetNum,,Sold\nA1,x,True\n");
    EXPECT_THAT(cli.Bad("load b.mdb gap.csv"), HasSubstr("line 1, column 2: the table has no column \"\""));
    EXPECT_EQ(cli.Good("load b.mdb gap.csv --pair ="), "Assets added: 0, rewritten: 1\n");
    cli.Good("load b.mdb out.xlsx");
    cli.Good("dump a.mdb --out out.csv");
    EXPECT_EQ(cli.Read("out.csv"), cli.Good("dump a.mdb"));

    cli.Write("bad.csv", "AssetNum,Basis(1)\nA1,much\nA9,1\n");
    const CliResult check = cli("load a.mdb bad.csv --check");
    EXPECT_EQ(check.ExitStatus, 1);
    EXPECT_THAT(check.Out, StartsWith("line 2, column Basis(1): \"much\" is no amount"));
    EXPECT_EQ(cli("dump a.mdb --out a.mdb").ExitStatus, 1);
    EXPECT_EQ(cli.Good("dump b.mdb"), cli.Good("dump a.mdb"));
}

}  // namespace
}  // namespace tallymar::test
