#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "formoutput/FormFields.h"
#include "formoutput/PageEdits.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

std::string Record(char type, std::string_view numbers) {
    std::string record(85, '?');
    record[2] = type;
    record.replace(49, numbers.size(), numbers);
    return record;
}

TEST(FormFields, AreTheRecordsBehindTheHeader) {
    const std::string file = std::string(85, '\xFF') + Record('$', " 12 66 10") + Record('T', "004  0 80");
    const std::vector<FormField> fields = ParseFormFields(file, "x.FPF");
    EXPECT_EQ(fields, (std::vector<FormField>{{true, 12, 66, 10}, {false, 4, 0, 80}}));
    EXPECT_EQ(ParseFormFields(file + '\x1A', "x.FPF"), fields);
    EXPECT_TRUE(ParseFormFields(std::string(85, ' '), "x.FPF").empty());
}

TEST(FormFields, WhatIsNoFieldOfThePageIsRefusedInOneLine) {
    const std::string header(85, ' ');
    const auto says = [&](const std::string& contents) {
        const auto failure = test::ErrorOf([&] { ParseFormFields(contents, "x.FPF"); });
        return failure ? std::string(failure->what()) : "read";
    };
    EXPECT_EQ(says(""), "x.FPF is no file of form fields: its header is missing");
    EXPECT_EQ(says(header + Record('T', "  1  0  1").substr(0, 58)),
              "x.FPF is no file of form fields: it is cut short, with 58 of 85 bytes of record 2");
    EXPECT_THAT(says(header + std::string(std::size_t{85} * 6000, ' ')), testing::HasSubstr("6000 fields"));
    for (const char* outside :
         {"  0  0  1", " 67  0  1", "  1 -1  1", "  1 80  6", "  1  0  0", "  1  x  1", "         ", "1 1  0  1"}) {
        EXPECT_EQ(says(header + Record('T', "  1  0  1") + Record('T', outside)),
                  "x.FPF is no file of form fields: field 2 does not lie on the page")
            << outside;
    }
    const test::TempFolder folder;
    test::WriteAll(folder / "long.FPF", std::string(3000000, '0'));
    EXPECT_THAT(test::TextOf([&] { ReadFormFields(folder / "long.FPF"); }), testing::EndsWith("it is too long"));
    EXPECT_EQ(test::FailureOf([&] { ReadFormFields(folder / "none.FPF"); }), Failure::FileNotFound);
}

TEST(FormFields, AClickHitsTheLastFieldThereAndTheCellBehindOne) {
    const std::vector<FormField> fields = {{false, 4, 10, 5}, {false, 4, 12, 2}, {true, 5, 10, 5}};
    EXPECT_EQ(FieldAt(fields, 9, 4), -1);
    EXPECT_EQ(FieldAt(fields, 10, 4), 0);
    EXPECT_EQ(FieldAt(fields, 12, 4), 1);
    EXPECT_EQ(FieldAt(fields, 14, 4), 1);
    EXPECT_EQ(FieldAt(fields, 15, 4), 0);
    EXPECT_EQ(FieldAt(fields, 16, 4), -1);
    EXPECT_EQ(FieldAt(fields, 11, 5), 2);
}

const FormPageInfo& kPage = FormPageOf("245621");

constexpr std::string_view kFile =
    "\\\\245621 \r\n"
    " \r\n"
    "  Elm Street        12-345   \r\n"
    "X           1,234. \r\n"
    " \r\n"
    "\x1A";

TEST(FormPageText, IsTheFileWithoutItsFirstLineAndFirstTwoColumns) {
    const FormPageText page = FormPageText::Parse(std::string(kFile) + "behind the end", "x.LDT");
    EXPECT_EQ(page.LineCount(), 4);
    EXPECT_EQ(page.GetFieldText(1, 2, 10), "Elm Street");
    EXPECT_EQ(page.GetFieldText(17, 2, 20), "  12-345");
    EXPECT_EQ(page.GetFieldText(9, 3, 10), "  1,234.");
    EXPECT_EQ(page.GetFieldText(1, 1, 80) + page.GetFieldText(1, 4, 80) + page.GetFieldText(1, 66, 80), "");
    EXPECT_EQ(page.ToFile(), kFile);
}

TEST(FormPageText, AChangeTouchesItsOwnLineAlone) {
    FormPageText page = FormPageText::Parse(kFile, "x.LDT");
    page.SetFieldText(1, 2, "Oak", 10);
    page.SetFieldText(9, 3, "5", 10);
    page.SetFieldText(3, 6, "new", 8);
    page.SetFieldText(84, 1, "off", 3);  // beyond the page
    page.SetFieldText(30, 1, "\r\n\x1A", 3);
    EXPECT_EQ(page.ToFile(), "\\\\245621 \r\n \r\n  Oak               12-345 \r\nX         5 \r\n \r\n \r\n    new \r\n\x1A");
    page.SetFieldText(1, 2, "Elm Street", 10);
    page.SetFieldText(9, 3, "  1,234.", 10);
    page.SetFieldText(3, 6, "", 8);
    EXPECT_EQ(page.ToFile(), std::string(kFile.substr(0, kFile.size() - 1)) + " \r\n \r\n\x1A");
}

TEST(FormPageText, ControlCharactersAreBlanksToTheEye) {
    const FormPageText page = FormPageText::Parse("x\r\n  a\x01 b\x7F \r\n\x1A", "x");
    EXPECT_EQ(page.Line(1), "a  b");
    EXPECT_EQ(page.ToFile(), "x\r\n  a\x01 b\x7F \r\n\x1A");
}

TEST(FormPageText, WithoutAFileIsAnEmptyPageOfItsCode) {
    const test::TempFolder folder;
    FormPageText page = FormPageText::Read(FormPageOf("245622"), folder / "245622.LDT");
    EXPECT_EQ(page.ToFile(), "\\\\145622 \r\n\x1A");
    page.SetFieldText(80, 66, "x", 1);
    EXPECT_EQ(FormPageText::Parse(page.ToFile(), "x").GetFieldText(80, 66, 1), "x");
    test::WriteAll(folder / "245622.LDT", "");
    EXPECT_EQ(FormPageText::Read(FormPageOf("245622"), folder / "245622.LDT").ToFile(), "\\\\145622 \r\n\x1A");
    test::WriteAll(folder / "huge.LDT", std::string(70000, ' '));
    EXPECT_THAT(test::TextOf([&] { FormPageText::Read(kPage, folder / "huge.LDT"); }),
                testing::EndsWith("no form page: it is too long"));
    EXPECT_THAT(test::TextOf([] { FormPageText::Parse("a\n" + std::string(600, 'b'), "x"); }), testing::HasSubstr("line"));
}

TEST(FormPages, AreGoneThroughAlongTheirChain) {
    const auto walk = [](std::string_view code, int files) {
        FormPlace place(FormPageOf(code), files);
        std::string seen;
        const auto note = [&] {
            seen += place.FileName() + (place.PreviousEnabled() ? "<" : "") + (place.NextEnabled() ? "> " : " ");
        };
        note();
        for (bool more = true; more;) {
            more = place.NextEnabled();
            place.Next();
            note();
        }
        for (bool more = true; more;) {
            more = place.PreviousEnabled();
            place.Previous();
            note();
        }
        return seen;
    };
    EXPECT_EQ(walk("2D1", 0), "2D1.LDT> 2D2.LDT<> 2D1C1.LDT<> 2D1C2.LDT< 2D1C2.LDT< 2D1C1.LDT<> 2D2.LDT<> 2D1.LDT> 2D1.LDT> ");
    EXPECT_EQ(walk("242551", 0), "242551.LDT 242551.LDT 242551.LDT ");
    EXPECT_EQ(walk("288241", 1), "28824101.LDT 28824101.LDT 28824101.LDT ");
    EXPECT_EQ(walk("288241", 3),
              "28824101.LDT> 28824102.LDT<> 28824103.LDT< 28824103.LDT< 28824102.LDT<> 28824101.LDT> 28824101.LDT> ");
    EXPECT_EQ(ValuesFileName(FormPageOf("288241"), 100), "28824100.LDT");
    EXPECT_EQ(test::FailureOf([] { FormPageOf("../x"); }), Failure::InvalidCall);
}

TEST(PageEdits, AnAmountHasADigitAndItsCommasInPlace) {
    const auto fits = [](const char* text) { return !test::FailureOf([&] { RequireFits({true, 1, 0, 20}, text); }); };
    for (const char* amount : {"", " ", "0", "1,235.", "-1,234,567.89", "(   0.00)", ".5", "1234.5"})
        EXPECT_TRUE(fits(amount)) << amount;
    for (const char* none :
         {"-", "()", ".", ",", "1,2,,3.", "1,23", ",123", "1234,567", "1.2.3", "1,234.5,6", "1x", "(1", "1 2"}) {
        EXPECT_FALSE(fits(none)) << none;
    }
}

TEST(PageEdits, WhatAPageMoveLosesComesBackWhenThePageIsShownAgain) {
    const std::vector<FormField> fields = {{false, 2, 0, 10}, {true, 3, 8, 10}, {true, 4, 8, 10}};
    FormPageText text = FormPageText::Parse(kFile, "x");
    PageEdits edits(text);
    const auto show = [&](const char* file) {
        text = FormPageText::Parse(kFile, "x");
        edits.Show(file, fields);
    };
    show("245621.LDT");
    edits.Store(0, "Elm Street");
    EXPECT_FALSE(edits.IsDirty());
    edits.Store(2, "7");
    EXPECT_EQ(edits.Undo(), 2);
    EXPECT_EQ(edits.FieldText(0), "Elm Street");
    edits.Store(0, "Oak");
    edits.Store(1, "5.00");
    EXPECT_EQ(edits.FieldText(1), "5.00      ");
    EXPECT_FALSE(edits.FieldText(2));
    EXPECT_EQ(edits.Get(0), "Oak");
    show("245622.LDT");
    EXPECT_EQ(edits.Undo(), -1);
    show("245621.LDT");
    EXPECT_EQ(edits.Get(0), "Elm Street");
    EXPECT_FALSE(edits.FieldText(0));
    EXPECT_TRUE(edits.HasLost());
    EXPECT_EQ(edits.Undo(), 1);
    EXPECT_EQ(edits.Get(0), "Oak");
    EXPECT_EQ(edits.Get(1), "5.00");
    EXPECT_EQ(edits.Undo(), 1);
    EXPECT_EQ(edits.Undo(), 0);
    EXPECT_FALSE(edits.IsDirty());
    EXPECT_EQ(text.ToFile(), kFile);
    EXPECT_EQ(edits.Undo(), -1);
    edits.Store(0, "Ash");
    edits.Saved();
    show("245621.LDT");
    EXPECT_FALSE(edits.HasLost());
}

}  // namespace
}  // namespace tallymar
