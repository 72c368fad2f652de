#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CliRunner.h"

namespace tallymar::test {
namespace {

using testing::HasSubstr;

TEST(LoanCommand, SolvesSavesAndPrintsALoan) {
    const CliRunner cli;
    EXPECT_EQ(cli.Good("loan solve --amount 10000 --rate 8 --name Elm --save elm.lon"),
              "Text16=Elm\nText2=10,000.00\nText3=36\nText4=12\nText5=30\nText6=313.36\nText7=8.0000\nText8=36\n"
              "Text9=01/01/2003\nText10=1,281.09\nText14=11,281.09\n");
    EXPECT_THAT(cli.Bad("loan solve --amount 1 --save elm.lon"), HasSubstr("Nothing was saved"));
    EXPECT_THAT(cli.Read("elm.lon"), HasSubstr("\"10,000.00\"\r\n"));

    EXPECT_EQ(cli.Good("loan schedule --amount 10000 --rate 8 --out s.txt"), "");
    EXPECT_THAT(cli.Read("s.txt"), HasSubstr("Totals Paid in 2003 =            3,071.36        689.00"));
    cli.Good("loan schedule --amount 10000 --rate 8 --out s.csv");
    EXPECT_THAT(cli.Read("s.csv"), HasSubstr("1,2003-01-01,10000.00,246.69,66.67,66.67,9753.31"));

    // No savings plan in place of a loan, and no file.
    EXPECT_THAT(cli.Bad("loan schedule --amount 10000 --rate 8 --periods 0 --out none.txt"), HasSubstr("cannot be computed"));
    EXPECT_THAT(cli.Bad("loan schedule --out none.txt"), HasSubstr("Nothing to print"));
    EXPECT_EQ(cli.Read("none.txt"), "");
}

}  // namespace
}  // namespace tallymar::test
