#include "interchange/AssetLoad.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zip.h>

#include "interchange/AssetDump.h"
#include "interchange/HeadingPairs.h"
#include "platform/runtime/PlatformError.h"
#include "support/Files.h"
#include "support/TestCompany.h"
#include "support/Workbooks.h"

namespace tallymar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class AssetLoadTest : public testing::Test {
 protected:
    static std::string Text(const std::string& text) {
        return "<table:table-cell office:value-type='string'><text:p>" + text + "</text:p></table:table-cell>";
    }
    static std::string Number(const std::string& number) {
        return "<table:table-cell office:value-type='float' office:value='" + number + "'/>";
    }
    static std::string Day(const std::string& day) {
        return "<table:table-cell office:value-type='date' office:date-value='" + day + "'/>";
    }
    static std::string Row(const std::string& cells) { return "<table:table-row>" + cells + "</table:table-row>"; }

    std::filesystem::path Sheet(const std::string& rows) {
        const std::filesystem::path path = company_.Folder / "in.ods";
        const std::string content = test::OdsContent(rows);
        zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
        zip_file_add(zip, "content.xml", zip_source_buffer(zip, content.data(), content.size(), 0), 0);
        EXPECT_EQ(zip_close(zip), 0);
        return path;
    }
    ImportCounts Load(const std::filesystem::path& path, const LoadOptions& options = {}) {
        return LoadAssets(company_.Session.Database(), company_.Session.AssetsRecordset(), path, options);
    }
    std::string Complaint(const std::filesystem::path& path, const LoadOptions& options = {}) {
        try {
            Load(path, options);
        } catch (const PlatformError& failure) {
            return failure.what();
        }
        return "taken";
    }
    std::string Dump(const std::vector<std::string>& columns) {
        std::string out;
        DumpAssets(company_.Session.AssetsRecordset(), columns, [&out](std::string_view text) { out += text; });
        return out;
    }

    test::TestCompany company_;
};

TEST_F(AssetLoadTest, ASheetNamesColumnsByTheScreenAndHoldsWhatItShows) {
    const auto path = Sheet(Row(Text("Asset Number") + Text("in service") + Text("Federal Asset Cost") + Text("AMT Type") +
                                Text("New/Used") + Text("Sale Amount") + Text("Federal Tax Credit Year") + Text("Description")) +
                            Row(Number("1001") + Day("2003-05-01") + Number("0.30000000000000004") + Text("macs") + Text("Used") +
                                Number("1250.5") + Number("2003") + Text("1/2\" drill")) +
                            Row(Text("A2")));
    EXPECT_EQ(Load(path).Added, 2);
    EXPECT_EQ(
        Dump({"AssetNum", "InService", "Basis(1)", "DeprType(4)", "NewUsed", "SoldAmount", "TaxCreditYear(1)", "Description"}),
        "AssetNum,InService,Basis(1),DeprType(4),NewUsed,SoldAmount,TaxCreditYear(1),Description\r\n"
        "1001,2003-05-01,0.3,8,U,1250.5,2003,\"1/2\"\" drill\"\r\n"
        "A2,,,,,,,\r\n");
}

TEST_F(AssetLoadTest, ACellThatItsColumnDoesNotTakeIsToldByRowAndColumn) {
    const auto one = [&](const char* heading, const std::string& cell) {
        return Complaint(Sheet(Row(Text("AssetNum") + Text(heading)) + Row(Text("A1")) + Row(Text("A2") + cell)));
    };
    EXPECT_EQ(one("Federal Asset Cost", Number("33.33333")),
              "in.ods, row 3, column Basis(1): \"33.33333\" is no amount (digits, a point, at most four decimals)");
    EXPECT_EQ(one("InService", Number("37986")),
              "in.ods, row 3, column InService: \"37986\" is no date of the form YYYY-MM-DD or m/d/yyyy");
    EXPECT_EQ(one("SerialNum", Day("2003-01-02")),
              "in.ods, row 3, column SerialNum: \"2003-01-02\" is a date; the column holds none");
    EXPECT_EQ(one("SoldAmount",
                  "<table:table-cell calcext:value-type='error' office:value-type='string'><text:p>#REF!</text:p>"
                  "</table:table-cell>"),
              "in.ods, row 3, column SoldAmount: the cell holds the error #REF!");
    EXPECT_EQ(
        one("State Basis", Number("1")),
        "in.ods, row 1, column 2: \"State Basis\" does not say which: write \"State Asset Cost\" or \"State Switchover Basis\"");
    EXPECT_EQ(one("Asset Cost", Number("1")),
              "in.ods, row 1, column 2: \"Asset Cost\" does not say which: write \"Federal Asset Cost\"");
    EXPECT_EQ(one("Amount", Number("1")),
              "in.ods, row 1, column 2: \"Amount\" does not say which: write \"Federal Tax Credit Amount\" or \"Sale Amount\"");
    EXPECT_EQ(one("Division", Text("x") + Text("y")), "in.ods, row 3, column 3: the row has 3 fields where the header has 2");
    test::WriteAll(company_.Folder / "no.xlsx", "AssetNum\nA1\n");
    EXPECT_EQ(Complaint(company_.Folder / "no.xlsx"), "no.xlsx is no workbook");
    EXPECT_EQ(company_.Session.AssetCount(), 0);
}

TEST_F(AssetLoadTest, FormulasThatGiveNothingAndRowsOfThemAreEmpty) {
    const auto path = Sheet(Row(Text("AssetNum") + Text("InService") + Text("Basis(1)") + Text("Descrip2")) +
                            Row(Text("A1") + Text("") + Text("") + Text("x")) + Row(Text("") + Text("")) + Row(Text("A2")));
    EXPECT_EQ(Load(path).Added, 2);
    test::WriteAll(company_.Folder / "in.csv", "\"AssetNum\",\"InService\"\n\"A3\",\"\"\n\"\",\"\"\n,\n");
    EXPECT_EQ(Load(company_.Folder / "in.csv").Added, 1);
    EXPECT_EQ(Dump({"AssetNum", "InService", "Basis(1)", "Descrip2"}),
              "AssetNum,InService,Basis(1),Descrip2\r\nA1,,,x\r\nA2,,,\r\nA3,,,\r\n");
}

TEST_F(AssetLoadTest, PairsSayWhatAHeadingMeansAndACheckListsAllThatFails) {
    const auto path = company_.Folder / "in.csv";
    test::WriteAll(path, "Number,Cost,Cost,Remark\r\nA1,100,7,x\r\nA2,1.00001,oops,y\r\nA1,300,9,z\r\nA3,400,8,\r\n");
    const LoadOptions options{.Pairs = {{"Cost", "Basis(1)"}, {"cost", "State Asset Cost"}, {"Remark", ""}}, .CheckOnly = true};
    const ImportCounts counts = Load(path, options);
    std::vector<std::string> remarks;
    for (const ImportRemark& remark : counts.Remarks) remarks.push_back(ImportRemarkText(remark));
    EXPECT_THAT(remarks, ElementsAre(HasSubstr("line 3, column Basis(1): \"1.00001\" is no amount"),
                                     HasSubstr("line 3, column Basis(2): \"oops\" is no amount"),
                                     "line 4, column AssetNum: asset A1 is in the file already"));
    EXPECT_EQ(ImportCheckText(counts),
              "Records to add: 2    to update: 0    to add as duplicates: 0\n"
              "Nothing of the file would be taken: 3 values fail");
    EXPECT_EQ(company_.Session.AssetCount(), 0);
    EXPECT_EQ(Complaint(path, {.Pairs = options.Pairs}),
              "in.csv, line 3, column Basis(1): \"1.00001\" is no amount (digits, a point, at most four decimals)");

    test::WriteAll(path, "Number,Cost\r\nA1,100\r\n");
    LoadOptions add{.Pairs = {{"Cost", "Basis(1)"}}, .AddNew = true};
    EXPECT_EQ(Load(path, add).Added, 1);
    EXPECT_EQ(Load(path, add).Duplicates, 1);
    EXPECT_EQ(Load(path, add).Duplicates, 1);
    EXPECT_EQ(Dump({"AssetNum", "Basis(1)"}), "AssetNum,Basis(1)\r\nA1,100\r\nDUP001,100\r\nDUP002,100\r\n");
}

TEST_F(AssetLoadTest, AFileThatIsSavedMeanwhileIsNotTaken) {
    const auto path = company_.Folder / "in.csv";
    test::WriteAll(path, "AssetNum\r\nA1\r\nA2\r\n");
    const auto load = [&](double when, bool check) {
        bool saved = false;
        const auto save = [&](const ImportCounts&, double share) {
            if (share >= when && !saved) std::filesystem::resize_file(path, 14);
            saved = saved || share >= when;
        };
        LoadAssets(company_.Session.Database(), company_.Session.AssetsRecordset(), path, {.Pairs = {}, .CheckOnly = check},
                   save);
    };
    try {
        load(0.6, false);
        ADD_FAILURE() << "was taken";
    } catch (const PlatformError& failure) {
        EXPECT_STREQ(failure.what(), "in.csv was changed while it was read; it must be closed in every other program");
    }
    EXPECT_EQ(company_.Session.AssetCount(), 0);
    test::WriteAll(path, "AssetNum\r\nA1\r\nA2\r\n");
    EXPECT_THROW(load(0, true), PlatformError);
}

TEST_F(AssetLoadTest, HeadingsAreGuessedOnceAndThenRemembered) {
    const Headings known(company_.Session.AssetsRecordset().Definition());
    const std::vector<std::string> headings = {
        "Asset No.", "Cost", "Federal Asset Cost", "State Life", "Prior Depreciation - AMT", "Colour"};
    const std::filesystem::path folder = company_.Session.Paths().Folder();
    auto pairs = HeadingPairs(folder).For(headings, known);
    std::vector<std::string> columns;
    for (const HeadingPair& pair : pairs) columns.push_back(pair.Column);
    EXPECT_THAT(columns, ElementsAre("AssetNum", "", "Basis(1)", "Period(2)", "PrevDepr(4)", ""));

    pairs[5].Column = "Division";
    HeadingPairs(folder).Remember(pairs);
    HeadingPairs(folder).Remember({{"Other, \"one\"", ""}});
    EXPECT_EQ(HeadingPairs(folder).For(headings, known), pairs);
    EXPECT_EQ(HeadingPairs(folder).For({"Colour"}, known).front().Column, "");
    test::WriteAll(folder / "HeadingPairs.csv", "1,Colour,\"NoColumn\"\r\n\"");
    EXPECT_EQ(HeadingPairs(folder).For({"Colour"}, known).front().Column, "");
}

TEST_F(AssetLoadTest, EachColumnHasALabelThatLeadsBackToIt) {
    const Headings known(company_.Session.AssetsRecordset().Definition());
    EXPECT_EQ(known.Columns().size(), company_.Session.AssetsRecordset().Definition().Fields.size());
    for (const std::string& column : known.Columns()) EXPECT_THAT(known.Named(known.LabelOf(column)), ElementsAre(column));
    EXPECT_EQ(known.LabelOf("SwitchBasis(2)"), "State Switchover Basis");
    EXPECT_THAT(known.Named("Nothing"), IsEmpty());
}

}  // namespace
}  // namespace tallymar
