#include <gtest/gtest.h>

#include "CliRunner.h"

namespace tallymar::test {
namespace {

TEST(FormCommand, WritesPagesAndDataAndSaysWhatItLeftOut) {
    const CliRunner cli;
    cli.Good("new c.mdb --name Boatyard");
    cli.Good("company c.mdb --set FYEFederal=2002-12-31");
    cli.Good("load c.mdb '" TALLYMAR_SOURCE_DIR "/tests/irsforms/assets.csv'");
    const std::string said = cli.Good("form 4562 c.mdb --book 1 --type 1065 --division SMALL --out new/pages --json 4562.json");
    EXPECT_EQ(said,
              "Number of Assets processed 94\n"
              "Current depreciation: 15,039.32 in the book, 15,039.32 on the form, 0.00 left out\n");
    EXPECT_EQ(cli.Read("new/pages/245622.LDT").substr(0, 9), "\\\\145622 ");
    EXPECT_NE(cli.Read("4562.json").find("\"22\": \"14539.22\""), std::string::npos);

    // Messages on the way are lines of their own.
    const CliResult exchange = cli("form 8824 c.mdb --book 1 --division SMALL");
    EXPECT_EQ(exchange.Error, "Processing Asset - Van given up - Sold on 8/1/2002\n");
    EXPECT_EQ(exchange.Out, "94 Assets processed and 1 Asset(s) Like-Kind exchanged\n");
    EXPECT_FALSE(cli.Read("app/28824101.LDT").empty());

    cli.Bad("form 1040 c.mdb --book 1");
    cli.Bad("form 4562 c.mdb --book 5");
    cli.Bad("form 4562 c.mdb --book 1 --type 1120-S --out none");
    EXPECT_FALSE(std::filesystem::exists(cli.Folder() / "none"));
}

}  // namespace
}  // namespace tallymar::test
