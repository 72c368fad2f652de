#include "irsforms/FormFile.h"

#include <gtest/gtest.h>

#include "irsforms/FormatPicture.h"
#include "irsforms/PageSheet.h"
#include "irsforms/WorkFile.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/TempFolder.h"

namespace tallymar::test {
namespace {

TEST(FormatPicture, FillsTheMaskFromTheRight) {
    struct Case {
        const char* Amount;
        const char* Mask;
        const char* Text;
    };
    for (const Case& one : std::to_array<Case>({
             {"1234.5", "##,###,###.", "     1,235."},  // a mask that ends in its point: halves away from zero
             {"-2.5", "###.", " -3."},
             {"33.5", "###", " 34"},  // every other mask: halves to even
             {"32.5", "###", " 32"},
             {"0.125", "##.##", " 0.12"},
             {"-45", "#######.", "    -45."},
             {"0.25", "###.##", "  0.25"},
             {"-0.25", "###.##", "  -.25"},
             {"-0.001", "###.##", "  0.00"},  // what rounds to nothing has no sign
             {"0.5", "##0.##", "  0.50"},
             {"123456", "###.", "%56."},
             {"-123", "###", "123"},  // no room for the sign
             {"-1234", "##,###.", "-1,234."},
             {"-123", "##,###.", "  -123."},  // the sign takes the comma's place
             {"12.345", "(##,###.##)", "(    12.34)"},
             {"7", "( ###,###.)", "(       7.)"},
             {"7", " ###,###.##", "       7.00"},
             {"0", "###.##", "  0.00"},
             {"0", "0000", "0000"},
             {"1.23456", "##.######", " 1.234600"},
             {"922337203685477.58", "##", "%8"},
             {"5", "", "*ERROR*"},
         })) {
        EXPECT_EQ(FormatPicture(CurrencyAmount::Parse(one.Amount).value_or(CurrencyAmount()), one.Mask), one.Text)
            << one.Amount << " through " << one.Mask;
    }
}

class FormFileTest : public testing::Test {
 protected:
    std::string Written() {
        page_.CloseFormFile();
        page_.PutInPlace();
        return ReadAll(page_.Path());
    }

    TempFolder folder_;
    FormFile page_{folder_ / "page.LDT"};
};

TEST_F(FormFileTest, PlacesFieldsAndRaisesTheColumn) {
    ASSERT_TRUE(page_.OpenFormFile());
    int column = 0;
    page_.WriteTextField(column, "\\\\code", 2);
    EXPECT_EQ(column, 0);
    column = 5;
    page_.WriteTextField(column, "abc", 0);
    EXPECT_EQ(column, 7);
    column = 8;  // where the text before has ended: the same line
    page_.WriteTextField(column, "", 0);
    std::string mask;
    column = 10;
    page_.WriteAmountField(column, Units(12), mask, 'N', 1);
    EXPECT_EQ(mask, "##########.##");
    EXPECT_EQ(column, 12);
    column = 20;
    page_.WriteAmountField(column, CurrencyAmount(), mask, 'N', 1);
    EXPECT_EQ(column, 22);
    page_.WriteAmountField(column, Units(3), mask, '?', 0);
    column = 3;
    page_.WriteTextField(column, "", 0);  // an empty text still moves
    page_.SkipFormLines(-1);
    page_.SkipFormLines(1);
    column = 3;
    page_.WriteTextField(column, "one", 0);
    column = 1;  // left of where the line stands: carried over
    page_.WriteTextField(column, "two", 1);
    page_.EndOfFile = true;
    EXPECT_EQ(Written(),
              "\\\\code \r\n \r\n"
              "      abc          12.00 \r\n"
              " \r\n"
              "     \r\n"
              "    one\r\n  two \r\n\x1A");
}

TEST_F(FormFileTest, APageThatCannotBeOpenedIsPassedOver) {
    EXPECT_FALSE(FormFile(folder_ / "missing" / "page.LDT").OpenFormFile());
}

TEST_F(FormFileTest, LeadingBlanksGiveWayAndTextIsCutBeforeTheNextField) {
    PageSheet sheet("code");
    sheet.AddText(2, 15, "05/12/1997");
    sheet.AddAmount(2, 24, {Units(50), "###.#"});
    sheet.AddText(3, 15, "05/12/1997");
    sheet.AddAmount(3, 24, {Units(100), "###.#"});
    ASSERT_TRUE(sheet.Write(page_));
    page_.PutInPlace();
    EXPECT_EQ(ReadAll(page_.Path()),
              "\\\\code \r\n"
              "                05/12/199750.0 \r\n"
              "                05/12/199100.0 \r\n\x1A");
}

TEST_F(FormFileTest, NothingMovesToAnotherLine) {
    PageSheet sheet("code");
    const CurrencyAmount loss = Units(12345);
    sheet.AddText(2, 4, "two\r\nlines\x1A");
    sheet.AddAmount(2, 48, {loss, "(##,###.##)"});  // ends where the next begins
    sheet.AddAmount(2, 58, {loss, "(##,###.##)"});
    sheet.AddAmount(2, 69, {Units(7), "###,###.##"});
    sheet.AddText(3, 4, "below");
    ASSERT_TRUE(sheet.Write(page_));
    page_.PutInPlace();
    EXPECT_EQ(ReadAll(page_.Path()), "\\\\code \r\n" + std::string(5, ' ') + "two  lines " + std::string(33, ' ') +
                                         "(12,345.00)(12,345.00)     7.00 \r\n" + std::string(5, ' ') + "below \r\n\x1A");
}

TEST(WorkFile, ReadsWhatItWroteAndNothingElse) {
    WorkFile out;
    std::string text = "12\" by 3, \"old\"";
    CurrencyAmount amount = CurrencyAmount::FromTenThousandths(-12345);
    out.Item(text);
    out.Line(amount);
    out.Line(text);
    const auto read = [](const std::string& contents) {
        WorkFile in(contents);
        std::string readText;
        CurrencyAmount readAmount;
        in.Item(readText);
        in.Line(readAmount);
        in.Line(readText);
        return readText + readAmount.ToText();
    };
    EXPECT_EQ(read(out.Written()), text + "-1.2345");
    for (std::size_t length = 0; length < out.Written().size(); ++length) {
        EXPECT_TRUE(FailureOf([&] { read(out.Written().substr(0, length)); })) << length;
    }
    EXPECT_EQ(FailureOf([&] { read("1,2\r\n\"\"\r\n"); }), Failure::TypeMismatch);
    EXPECT_EQ(FailureOf([&] { read("\"a\",\"b\"\r\n\"\"\r\n"); }), Failure::TypeMismatch);
}

}  // namespace
}  // namespace tallymar::test
