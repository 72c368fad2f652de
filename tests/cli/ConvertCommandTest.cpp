#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRunner.h"

namespace tallymar {
namespace {

using test::ReadText;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

const std::string kLegacy = TALLYMAR_SOURCE_DIR "/tests/legacy/";

TEST(ConvertCommandTest, AnOldFileBecomesACompanyThatHoldsTheSame) {
    const test::CliRunner cli;
    for (const std::string release : {"sample", "old-release", "odd"}) {
        const std::string company = release + "-new.mdb";
        EXPECT_THAT(cli.Good("convert '" + kLegacy + release + ".mdb' " + company),
                    AllOf(ContainsRegex("\nAssets +([0-9]+) +([0-9]+)\n"), ContainsRegex("\nBasis\\(1\\) +[-0-9.]+ +[-0-9.]+\n"),
                          HasSubstr("columns with amounts agree")));
        EXPECT_EQ(cli.Good("dump " + company), ReadText(kLegacy + release + ".expected.csv"));
        EXPECT_EQ(cli.Good("company " + company), ReadText(kLegacy + release + ".company.expected.txt"));
    }
    EXPECT_THAT(cli.Bad("convert '" + kLegacy + "sample.mdb' sample-new.mdb"), HasSubstr("exists already"));
    EXPECT_THAT(cli.Bad("convert '" + kLegacy + "beyond-1252.mdb' beyond.mdb"), HasSubstr("; --replace writes \"?\""));
    EXPECT_THAT(cli.Good("convert --replace '" + kLegacy + "beyond-1252.mdb' beyond.mdb"), HasSubstr("3 texts have a \"?\""));
}

TEST(ConvertCommandTest, EveryOtherCommandAsksBeforeItMakesACompany) {
    const test::CliRunner cli;
    std::filesystem::copy_file(kLegacy + "sample-jet3.mdb", cli.Folder() / "old.mdb");
    for (const char* command : {"dump old.mdb", "compute old.mdb --books 1", "company old.mdb"}) {
        EXPECT_THAT(cli.Bad(command), AllOf(HasSubstr("Make a company of it, old (converted).mdb beside it?"),
                                            HasSubstr("old.mdb was not converted")));
    }
    EXPECT_FALSE(std::filesystem::exists(cli.Folder() / "old (converted).mdb"));
    EXPECT_EQ(cli.Read("old.mdb"), ReadText(kLegacy + "sample-jet3.mdb"));
}

}  // namespace
}  // namespace tallymar
