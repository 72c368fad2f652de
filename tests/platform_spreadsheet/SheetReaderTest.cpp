#include "platform/spreadsheet/SheetReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zip.h>

#include <fstream>

#include "platform/runtime/PlatformError.h"
#include "support/Files.h"
#include "support/TempFolder.h"
#include "support/Workbooks.h"

namespace tallymar::sheets {
namespace {

using testing::HasSubstr;

// The rows as "2:text|#12.5|@37986|!true": a number, a date, a Boolean; what is none of them in parentheses.
std::string Rows(SheetReader& reader) {
    std::string all;
    SheetRow row;
    while (reader.ReadRow(row)) {
        all += std::to_string(row.Number) + ":";
        for (const SheetCell& cell : row.Cells) {
            std::array<char, 64> number;
            std::snprintf(number.data(), number.size(), "%.15g", cell.Number);
            if (cell.Kind == CellKind::Text) all += cell.Text;
            if (cell.Kind == CellKind::Number) all += "#" + std::string(number.data());
            if (cell.Kind == CellKind::Date) all += "@" + std::string(number.data());
            if (cell.Kind == CellKind::Boolean) all += "!" + std::string(number.data());
            if (cell.Kind == CellKind::Other) all += "(" + cell.Text + ")";
            all += "|";
        }
        all += "\n";
    }
    return all;
}

std::string Rows(std::map<std::string, std::string> parts) {
    SheetReader reader(std::make_unique<test::MemoryParts>(std::move(parts)), "in");
    const std::string rows = Rows(reader);
    reader.Rewind();
    EXPECT_EQ(Rows(reader), rows);
    return rows;
}

std::string Ods(const std::string& rows) {
    return Rows({{"content.xml", test::OdsContent(rows)}});
}

TEST(SheetReaderTest, CellsOfAnXlsxAreWhatTheirFormatsMakeOfThem) {
    const std::string cells =
        "<row r=\"2\"><c r=\"A2\" t=\"s\"><v>0</v></c><c r=\"C2\" t=\"s\"><v>1</v></c></row>"
        "<row r=\"3\"><c r=\"A3\" s=\"1\"/></row>"
        "<row><c><v>1234.5599999999999</v></c><c s=\"1\"><v>37986</v></c><c s=\"3\"><v>37986.5</v></c><c s=\"2\"><v>0.35</v></c>"
        "<c s=\"4\"><v>-5</v></c><c t=\"b\"><v>1</v></c><c t=\"e\"><v>#REF!</v></c><c t=\"str\"><f>A1</f><v></v></c>"
        "<c t=\"inlineStr\"><is><t>x_x000D_\ny _x005F_x0041_</t></is></c></row>"
        "<row r=\"9\"><c s=\"1\"><v>59</v></c><c s=\"1\"><v>60</v></c><c s=\"1\"><v>61</v></c>"
        "<c s=\"3\"><v>0.5</v></c><c><f>A1</f><v></v></c></row>";
    const std::string texts = "<si><t>Basis(1)</t></si><si><r><t>Caf</t></r><r><t>\xC3\xA9</t></r><rPh><t>no</t></rPh></si>";
    EXPECT_EQ(Rows(test::XlsxParts(cells, texts)),
              "2:Basis(1)||Caf\xC3\xA9|\n"
              "4:#1234.56|@37986|@37986.5|#35|#-5|!1|(the error #REF!)||x\r\ny _x0041_|\n"
              "9:@60|(a date that is none)|@61|(a time of day)|(a formula that has not been computed)|\n");
    EXPECT_EQ(Rows(test::XlsxParts("<row><c s=\"1\"><v>1</v></c></row>", "", "<workbookPr date1904=\"1\"/>")), "1:@1463|\n");
}

TEST(SheetReaderTest, CellsOfAnOdsAreTheirValuesAndTheirRepeatsCount) {
    EXPECT_EQ(Ods("<table:table-header-rows><table:table-row><table:table-cell office:value-type=\"string\"><office:annotation>"
                  "<text:p>note</text:p></office:annotation><text:p> Asset \n <text:span>Num</text:span><text:s "
                  "text:c=\"2\"/>x</text:p>"
                  "<text:p>2</text:p></table:table-cell></table:table-row></table:table-header-rows>"
                  "<table:table-row table:number-rows-repeated=\"2\"><table:table-cell table:number-columns-repeated=\"2\"/>"
                  "<table:table-cell office:value-type=\"float\" office:value=\"7\" "
                  "table:number-columns-repeated=\"2\"/></table:table-row>"
                  "<table:table-row table:number-rows-repeated=\"3\"/>"
                  "<table:table-row><table:table-cell office:value-type=\"date\" office:date-value=\"2003-12-31T12:00:00\"/>"
                  "<table:table-cell office:value-type=\"percentage\" office:value=\"0.07\"/>"
                  "<table:table-cell office:value-type=\"boolean\" office:boolean-value=\"true\"/>"
                  "<table:table-cell office:value-type=\"currency\" office:value=\"-1.25\"/>"
                  "<table:table-cell office:value-type=\"string\" "
                  "calcext:value-type=\"error\"><text:p>#DIV/0!</text:p></table:table-cell>"
                  "</table:table-row><table:table-row table:number-rows-repeated=\"1048000\">"
                  "<table:table-cell table:number-columns-repeated=\"16384\"/></table:table-row>"),
              "1:Asset Num  x\n2|\n2:||#7|#7|\n3:||#7|#7|\n7:@37986.5|#7|!1|#-1.25|(the error #DIV/0!)|\n");
}

TEST(SheetReaderTest, WhatAnOdsSaysInItsStylesOrNotAtAllIsWhatItShows) {
    const std::string space =
        " xmlns:style='urn:oasis:names:tc:opendocument:xmlns:style:1.0'"
        " xmlns:number='urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0'>";
    const std::string format = "<number:percentage-style style:name='P'/>";
    const std::string cells =
        "<style:style style:name='whole' style:family='table-cell' style:data-style-name='General'/>"
        "<style:style style:name='share' style:family='table-cell' style:data-style-name='P'/>";
    std::string content = test::OdsContent(
        "<table:table-row><table:table-cell><text:p>untyped</text:p></table:table-cell>"
        "<table:table-cell table:style-name='share' office:value-type='float' office:value='0.85'/>"
        "<table:table-cell table:style-name='share' office:value-type='percentage' office:value='0.85'/>"
        "<table:table-cell table:style-name='whole' office:value-type='float' office:value='0.85'/><table:table-cell "
        "table:formula='of:=1+1'/><table:table-cell>"
        "<text:p></text:p></table:table-cell></table:table-row>");
    content.insert(content.find("<office:body>"), "<a" + space + cells + "</a>");
    const std::string rows = "1:untyped|#85|#85|#0.85|(a formula that has not been computed)|\n";
    EXPECT_EQ(Rows({{"content.xml", content}, {"styles.xml", "<a" + space + format + "</a>"}}), rows);
    content.insert(content.find("<style:style"), format);
    EXPECT_EQ(Rows({{"content.xml", content}}), rows);
}

TEST(SheetReaderTest, WhatNoWorkbookHasIsRefusedInOneLine) {
    const std::string nine(4097, 'x');
    const std::pair<std::map<std::string, std::string>, const char*> cases[] = {
        {{{"a", ""}}, "in is no workbook that can be read"},
        {{{"content.xml", "<a"}}, "in is damaged: a part of it is no XML"},
        {{{"content.xml", "<!DOCTYPE a [<!ENTITY a \"aaaa\">]><a>&a;</a>"}}, "declares a document type"},
        {{{"content.xml", "<a b='" + std::string(3 << 20, 'x') + "'/>"}}, "a tag of it never ends"},
        {{{"content.xml",
           [] {
               std::string deep;
               for (int i = 0; i < 1000; ++i) deep += "<a>";
               return deep;
           }()}},
         "nested too deeply"},
        {{{"content.xml", "<a/>"},
          {"META-INF/manifest.xml",
           "<m:e xmlns:m='urn:oasis:names:tc:opendocument:xmlns:manifest:1.0'><m:encryption-data/></m:e>"}},
         "in is protected by a password"},
        {{{"content.xml", test::OdsContent("<table:table-row><table:table-cell office:value-type='float' office:value='1'"
                                           " table:number-columns-repeated='1025'/></table:table-row>")}},
         "has more columns than belong in a company, in row 1"},
        {{{"content.xml", test::OdsContent("<table:table-row table:number-rows-repeated='18446744073709551615'><table:table-cell "
                                           "office:value-type='float' office:value='1'/></table:table-row>")}},
         "has more rows than a sheet may have"},
        {{{"content.xml", test::OdsContent("<table:table-row><table:table-cell office:value-type='string'><text:p>" + nine +
                                           "</text:p></table:table-cell></table:table-row>")}},
         "has a text longer than any that belongs in a company, in row 1"},
        {test::XlsxParts("<row r='2'/><row r='2'/>"), "its rows are not in order"},
        {test::XlsxParts("<row r='99999999999'><c><v>1</v></c></row>"), "has more rows than a sheet may have"},
        {test::XlsxParts("<row><c r='B1'><v>1</v></c><c r='A1'><v>1</v></c></row>"), "its cells are not in order"},
        {test::XlsxParts("<row><c r='XFD1'><v>1</v></c></row>"), "has more columns than belong in a company, in row 1"},
        {test::XlsxParts("<row><c t='s'><v>7</v></c></row>"), "a cell names a text that is not there"},
        {test::XlsxParts("<row><c><v>1e999</v></c></row>"), "a cell's number is none"},
        {test::XlsxParts("<row>"), "a part of it is no XML"},
    };
    for (const auto& [parts, complaint] : cases) {
        try {
            Rows(parts);
            ADD_FAILURE() << "was taken: " << complaint;
        } catch (const PlatformError& failure) {
            EXPECT_THAT(failure.what(), HasSubstr(complaint));
            EXPECT_EQ(std::string(failure.what()).substr(0, 3), "in ");
        }
    }
}

class ZipTest : public testing::Test {
 protected:
    std::filesystem::path Zip(const std::string& content) {
        const std::filesystem::path path = folder_ / "in.ods";
        zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
        zip_file_add(zip, "content.xml", zip_source_buffer(zip, content.data(), content.size(), 0), 0);
        EXPECT_EQ(zip_close(zip), 0);
        return path;
    }
    std::string Complaint(const std::filesystem::path& path) {
        try {
            SheetReader reader(path);
            Rows(reader);
        } catch (const PlatformError& failure) {
            return failure.what();
        }
        return "taken";
    }

    test::TempFolder folder_;
};

TEST_F(ZipTest, AZipWhoseDirectoryOrSizesLieIsRefused) {
    std::string rows;
    for (int i = 0; i < 5000; ++i) {
        rows += "<table:table-row><table:table-cell office:value-type='float' office:value='" + std::to_string(i) +
                "'/></table:table-row>";
    }
    const auto path = Zip(test::OdsContent(rows));
    EXPECT_EQ(Complaint(path), "taken");
    EXPECT_TRUE(SheetReader::Recognizes(path));
    const std::string whole = test::ReadAll(path);

    const auto changed = [&](std::size_t at, char to) {
        std::string bytes = whole;
        bytes[at] = to;
        test::WriteAll(path, bytes);
        return Complaint(path);
    };
    const std::size_t end = whole.rfind("PK\x05\x06");
    const std::size_t entry = whole.rfind("PK\x01\x02");
    EXPECT_EQ(changed(end + 15, 1), "in.ods has more parts than any workbook");
    EXPECT_EQ(changed(end, 'x'), "in.ods is damaged: its end is missing");
    EXPECT_THAT(changed(entry + 24, static_cast<char>(whole[entry + 24] + 1)), HasSubstr("in.ods is damaged"));
    EXPECT_THAT(changed(whole.size() / 2, static_cast<char>(~whole[whole.size() / 2])), HasSubstr("in.ods is damaged"));
    test::WriteAll(path, whole.substr(0, whole.size() / 2));
    EXPECT_EQ(Complaint(path), "in.ods is damaged: its end is missing");
    test::WriteAll(path, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 more");
    EXPECT_THAT(Complaint(path), HasSubstr("save it as an .xlsx or .ods without a password"));
}

}  // namespace
}  // namespace tallymar::sheets
