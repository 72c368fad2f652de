#include <gmock/gmock.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "SampleReport.h"
#include "platform/page/DetailFiles.h"
#include "platform/page/PageItems.h"
#include "platform/page/PageText.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace tallymar::test {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(PageText, KeepsColumnsFlushAndRulesUnderTheirHeadings) {
    PageDocument v;
    PrintCentered(v, 1, 20, "Caf\xE9 Inc");
    PrintCentered(v, 2.5, 20, "Half a row lower");
    PrintLeft(v, 4, 1, "Asset");
    PrintRight(v, 4, 40, "Cost");
    PrintRule(v, 5, 1, 12);
    PrintRule(v, 5, 30, 40);
    const std::pair<const char*, const char*> rows[] = {
        {"000123", "1,234,567.89 "}, {"000124", "(11,111.11)"}, {"000125", "0.00 "}, {"iiiiil", " "}};
    double row = 5;
    for (const auto& [asset, cost] : rows) {
        PrintLeft(v, row, 1, asset);
        PrintRight(v, row++, 40, cost);
    }
    EXPECT_EQ(PageText(v, 1),
              "\n"
              "                 Caf\xC3\xA9 Inc\n"
              "\n"
              "             Half a row lower\n"
              " Asset                               Cost\n"
              " ------------                 -----------\n"
              " 000123                     1,234,567.89\n"
              " 000124                       (11,111.11)\n"
              " 000125                             0.00\n"
              " iiiiil\n");
}

TEST(PageText, LosesNoFigureWhereThingsAreDrawnOverEachOther) {
    PageDocument v;
    PrintLeft(v, 1, 1, "A description with narrow letters: illicit filling");
    PrintRight(v, 1, 45, "123.45 ");
    PrintRight(v, 2, 20, "1,111,111.11 ");
    PrintRight(v, 2, 24, "2,222,222.22 ");
    const std::string text = PageText(v, 1);
    EXPECT_THAT(text, HasSubstr(" A description with narrow letters: il 123.45\n"));
    EXPECT_THAT(text, HasSubstr("1,111,111.11\n"));
    EXPECT_THAT(text, HasSubstr("2,222,222.22\n"));
}

TEST(PageItems, AreTheModelAsJson) {
    PageDocument v;
    v.CurrentX = 85;
    v.CurrentY = 180;
    v.PrintText("Report date:");
    v.DrawLine(85, 1260, 764, 1260);
    v.FontSize = 12;
    v.CurrentX = -5;
    v.PrintText("\"\\\t\x80\xE9\x81");
    EXPECT_EQ(PageItems(v, 1),
              "{\"page\":1,\"op\":\"text\",\"x\":85,\"y\":180,\"w\":826,\"size\":7.5,\"text\":\"Report date:\"}\n"
              "{\"page\":1,\"op\":\"line\",\"x1\":85,\"x2\":764,\"y\":1260}\n"
              "{\"page\":1,\"op\":\"text\",\"x\":-5,\"y\":1260,\"w\":" +
                  std::to_string(v.TextWidth("\"\\\t\x80\xE9\x81")) +
                  ",\"size\":12,\"text\":\"\\\"\\\\\\u0009\xE2\x82\xAC\xC3\xA9\xC2\x81\"}\n");
    // Every byte comes back through a JSON reader.
    std::string all;
    for (int byte = 1; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
    PageDocument bytes;
    bytes.PrintText(all);
    const QJsonDocument read = QJsonDocument::fromJson(QByteArray::fromStdString(PageItems(bytes, 1)));
    ASSERT_TRUE(read.isObject());
    EXPECT_EQ(read.object()["text"].toString().size(), 255);
}

DetailTable TypedRows() {
    DetailTable table;
    table.Title = "Assets: placed/sold";
    table.Subtitle = "R&D, year end 12/31/2003";
    table.AddColumn("Asset", DetailKind::Text);
    table.AddColumn("In Service", DetailKind::Date);
    table.AddColumn("Percent", DetailKind::Integer);
    table.AddColumn("Cost", DetailKind::Money, {}, true);
    table.AddColumn("Life", DetailKind::Money, "0.0");
    table.AddRow();
    table.Add("000123    ");
    table.Add(Date::FromYmd(2003, 8, 15));
    table.Add(100);
    table.Add(*CurrencyAmount::Parse("-1234567.5"));
    table.Add(*CurrencyAmount::Parse("27.5"));
    table.AddRow();
    table.Add("Caf\xE9, \"big\" & <new>");
    table.Add(Date());
    table.AddEmpty();
    table.Add(*CurrencyAmount::Parse("0.1250"));
    table.AddRow();
    table.Add("=1+1");
    table.Add(Date::FromYmd(1899, 5, 1));
    return table;
}

TEST(DetailTable, RefusesCellsOfAnotherKind) {
    DetailTable table = TypedRows();
    EXPECT_THROW(table.Add("text in a column of integers"), PlatformError);
    table.Add(1);
    table.Add(7);  // money, in whole units
    EXPECT_EQ(std::get<CurrencyAmount>(table.Cell(2, 3)), Units(7));
    table.AddEmpty();
    EXPECT_THROW(table.Add("a sixth"), PlatformError);
    EXPECT_THROW(table.AddColumn("late", DetailKind::Text), PlatformError);
}

TEST(DetailFiles, CsvQuotesWhatNeedsIt) {
    EXPECT_EQ(DetailCsv(TypedRows()),
              "\xEF\xBB\xBF"
              "Asset,In Service,Percent,Cost,Life\r\n"
              "000123,2003-08-15,100,-1234567.50,27.5\r\n"
              "\"Caf\xC3\xA9, \"\"big\"\" & <new>\",,,0.125,\r\n"
              "'=1+1,1899-05-01,,,\r\n");
    DetailTable plain;
    plain.AddColumn("A", DetailKind::Text);
    EXPECT_EQ(DetailCsv(plain), "A\r\n");
}

TEST(DetailFiles, WorkbookHasTypedCells) {
    if (OutputOf("command -v unzip").empty()) GTEST_SKIP() << "unzip is not installed";
    const TempFolder folder;
    const std::filesystem::path path = folder / "rows.xlsx";
    const DetailTable table = TypedRows();
    ASSERT_EQ(DeliverToFile(PageDocument(), table, path), path);
    const auto part = [&](const char* name) { return OutputOf("unzip -p " + path.string() + " xl/" + name); };
    const std::string sheet = part("worksheets/sheet1.xml");
    for (const char* cell : {"<t>000123</t>",    // text: no zero is lost
                             "<t>'=1+1</t>",     // no formula
                             "<t>5/1/1899</t>",  // before the spreadsheet's calendar
                             "&amp; &lt;new&gt;</t>", "state=\"frozen\""}) {
        EXPECT_THAT(sheet, HasSubstr(cell));
    }
    for (const auto& [cell, value] : {std::pair{"B2", "37848"}, {"C2", "100"}, {"D2", "-1234567.5"}, {"D3", "0.125"}}) {
        EXPECT_THAT(sheet, testing::ContainsRegex(std::string("<c r=\"") + cell + "\" s=\"[0-9]+\"><v>" + value + "</v>"));
    }
    EXPECT_THAT(sheet, HasSubstr("<f>SUBTOTAL(109,D2:D4)</f><v>-1234567.375</v>"));
    EXPECT_THAT(sheet, HasSubstr("ref=\"A1:E4\""));  // the filter hides no total
    EXPECT_THAT(sheet, HasSubstr("&amp;LAssets: placed/sold&amp;RR&amp;&amp;D, year end 12/31/2003"));
    EXPECT_THAT(sheet, Not(HasSubstr("r=\"B3\"")));  // date 0 is no date
    EXPECT_THAT(part("workbook.xml"), HasSubstr("name=\"Assets  placed sold\""));
    EXPECT_THAT(part("styles.xml"), testing::AllOf(HasSubstr("mm/dd/yyyy"), HasSubstr("formatCode=\"#,##0.00_);(#,##0.00)\"")));
}

TEST(Delivery, ChoosesByExtension) {
    EXPECT_EQ(DeliveryPath("a/Report.PDF"), "a/Report.PDF");
    EXPECT_EQ(FormatOfFile("x.Csv"), FileFormat::Csv);
    EXPECT_EQ(FormatOfFile("x.xlsx"), FileFormat::Workbook);
    const TempFolder folder;
    const auto report = SampleReport(3);
    DeliverToFile(report->Pages, report->Details, folder / "r.txt");
    const std::string text = ReadAll(folder / "r.txt");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\f'), 2);
    EXPECT_EQ(text, PageText(report->Pages, 1) + "\f" + PageText(report->Pages, 2) + "\f" + PageText(report->Pages, 3));
    EXPECT_EQ(DeliverToFile(report->Pages, report->Details, folder / "Report 12.31"), folder / "Report 12.31.pdf");
    EXPECT_EQ(ReadAll(folder / "Report 12.31.pdf").substr(0, 5), "%PDF-");
}

TEST(Delivery, AFailureLeavesTheEarlierFile) {
    const TempFolder folder;
    const auto report = SampleReport(1);
    WriteAll(folder / "r.csv", "earlier");
    EXPECT_THROW(DeliverToFile(report->Pages, DetailTable(), folder / "r.csv"), PlatformError);
    EXPECT_EQ(ReadAll(folder / "r.csv"), "earlier");
    // A device that is always full stands for a full disk.
    for (const char* name : {"full.pdf", "full.txt"}) std::filesystem::create_symlink("/dev/full", folder / name);
    const std::tuple<const char*, Failure, const char*> cases[] = {{"none/r.pdf", Failure::PathNotFound, "none/r.pdf"},
                                                                   {"none/r.txt", Failure::PathNotFound, "none/r.txt"},
                                                                   {"full.pdf", Failure::DiskFull, ""},
                                                                   {"full.txt", Failure::DiskFull, ""}};
    for (const auto& [name, expected, named] : cases) {
        const auto deliver = [&, to = folder / name] { DeliverToFile(report->Pages, report->Details, to); };
        EXPECT_EQ(FailureOf(deliver), expected) << name;
        EXPECT_THAT(TextOf(deliver), HasSubstr(named));
    }
}

}  // namespace
}  // namespace tallymar::test
