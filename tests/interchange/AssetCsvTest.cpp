
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <random>

#include "interchange/AssetDump.h"
#include "interchange/AssetLoad.h"
#include "platform/runtime/PlatformError.h"
#include "store/Schema.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

using recordset::FieldType;
using recordset::Value;
using testing::HasSubstr;

struct Company {
    explicit Company(const std::filesystem::path& path) : File(recordset::Database::Create(path)), Assets(Build()) {}

    recordset::Recordset Build() {
        CreateSchema(File);
        return File.OpenRecordset("Assets");
    }
    std::string Dump(const std::vector<std::string>& columns = {}) {
        std::string out;
        DumpAssets(Assets, columns, [&out](std::string_view text) { out += text; });
        return out;
    }
    ImportCounts Load(const std::filesystem::path& path) { return LoadAssets(File, Assets, path); }

    recordset::Database File;
    recordset::Recordset Assets;
};

class AssetCsvTest : public testing::Test {
 protected:
    std::filesystem::path Write(const std::string& text) {
        const std::filesystem::path path = folder_ / "in.csv";
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    test::TempFolder folder_;
    Company company_{folder_ / "a.mdb"};
};

// Lines and fields that lie across the pieces in which the file is read.
TEST_F(AssetCsvTest, AFileOfManyPiecesLoadsLikeOneOfFew) {
    std::string text = "AssetNum,Description,Descrip2\r\n";
    for (int row = 0; row < 9000; ++row) {
        const std::string width(static_cast<std::size_t>(row % 30), 'w');
        text += std::to_string(row) + ",\"" + width + "\r\n\",\"\"\"" + width + "\"\r\n";
    }
    EXPECT_EQ(company_.Load(Write(text)).Added, 9000);
    const std::string dumped = company_.Dump({"AssetNum", "Description", "Descrip2"});
    EXPECT_EQ(dumped.size(), text.size());
    EXPECT_EQ(company_.Load(Write(dumped)).Updated, 9000);
    EXPECT_EQ(company_.Dump({"AssetNum", "Description", "Descrip2"}), dumped);
}

// Values that a spreadsheet, a parser or a conversion is most likely to spoil.
class OddValues {
 public:
    Value For(const recordset::Field& field) {
        if (field.Type == FieldType::Boolean) return Value(Pick(2) == 1);
        if (Pick(6) == 0) return Value();
        switch (field.Type) {
            case FieldType::Text:
                text_ = Text(static_cast<std::size_t>(field.Size));
                return Value(text_);
            case FieldType::Date:
                return Value(Date::FromSerial(Serial()));
            case FieldType::Currency: {
                if (field.Name == "ClassLife") return Value(CurrencyAmount::FromTenThousandths(Pick(1000000) * 327));
                constexpr std::int64_t kMost = 9'000'000'000'000'000'001;
                const std::int64_t counts[] = {0, 1, -1, 9999, -5000, 123456789, kMost, -kMost, Pick(1000000) * 100};
                return Value(CurrencyAmount::FromTenThousandths(counts[Pick(9)]));
            }
            default: {
                const std::int16_t numbers[] = {0, -1, 7, 200, 32767, -32768};
                return Value(numbers[Pick(6)]);
            }
        }
    }

 private:
    int Pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    std::string Text(std::size_t size) {
        const std::string samples[] = {"",   " ",     "      ",  "a\"b", "\"",           "x,y",  "one\r\ntwo", "\n",
                                       "\r", " lead", "trail  ", "'=1",  "caf\xE9 \x80", "\x81", "1E5",        "007"};
        std::string text = samples[Pick(16)];
        if (Pick(3) == 0) {
            for (char& c : text = std::string(size, ' ')) c = static_cast<char>(1 + Pick(255));
        }
        return text.substr(0, size);
    }

    double Serial() {
        const double serials[] = {
            0, 37986, 37986.5, 37986 + 53100.0 / 86400, 37986.123456789, -1, -1.25, -657434, 2958465.75, 60, 0.1, 1e-9, 1};
        return serials[Pick(13)];
    }

    std::mt19937 random_{20031231};
    std::string text_;
};

TEST_F(AssetCsvTest, DumpAndLoadIntoANewFileReproduceEveryValue) {
    constexpr int kRows = 300;
    OddValues odd;
    const std::vector<recordset::Field>& fields = company_.Assets.Definition().Fields;
    // Numbers that only the table's own rule tells apart: accented letters differ by case, A to Z do not.
    std::vector<std::string> numbers = {"\xE9", "\xC9", " 1", "a-", "_"};
    for (int row = 0; static_cast<int>(numbers.size()) < kRows; ++row) {
        numbers.push_back("A" + std::to_string(row) + (row % 3 == 0 ? " " : ""));
    }
    recordset::RunBatch(company_.File, recordset::OnFailure::AllOrNothing, [&] {
        for (const std::string& number : numbers) {
            company_.Assets.AddNew();
            for (const recordset::Field& field : fields) {
                if (field.Name != "AssetNum") company_.Assets.Set(field.Name, odd.For(field));
            }
            company_.Assets.Set("AssetNum", number);
            company_.Assets.Update();
        }
    });
    const std::string dumped = company_.Dump();

    Company copy(folder_ / "b.mdb");
    const ImportCounts counts = copy.Load(Write(dumped));
    EXPECT_EQ(counts.Added, kRows);
    EXPECT_EQ(counts.Updated, 0);
    ASSERT_EQ(copy.Assets.RecordCount(), kRows);
    company_.Assets.SetIndex("AssetNum");
    for (copy.Assets.MoveFirst(); !copy.Assets.Eof(); copy.Assets.MoveNext(), company_.Assets.MoveNext()) {
        for (const recordset::Field& field : fields) {
            ASSERT_EQ(copy.Assets.Get(field.Name), company_.Assets.Get(field.Name))
                << copy.Assets.Get("AssetNum").Text() << " " << field.Name;
        }
    }
    EXPECT_EQ(copy.Dump(), dumped);
    EXPECT_EQ(copy.Load(Write(dumped)).Updated, kRows);
    EXPECT_EQ(copy.Dump(), dumped);

    // The same by a workbook.
    std::ofstream book(folder_ / "book.xlsx", std::ios::binary);
    DumpWorkbook(company_.Assets, {}, [&book](std::string_view piece) { book << piece; });
    book.close();
    Company third(folder_ / "c.mdb");
    EXPECT_EQ(third.Load(folder_ / "book.xlsx").Added, kRows);
    EXPECT_EQ(third.Dump(), dumped);
}

TEST_F(AssetCsvTest, DatesAndAmountsAreReadAsAUnitedStatesDeskWritesThem) {
    company_.Load(
        Write("AssetNum,InService,Basis(1),SoldAmount,Sold\n"
              "A1,6/30/2003,\"$1,234,567.89\",\"(1,250.5)\",Yes\nA2,12/01/1999,-$5,\" $ 1,000 \",no\n"));
    EXPECT_EQ(company_.Dump({"AssetNum", "InService", "Basis(1)", "SoldAmount", "Sold"}),
              "AssetNum,InService,Basis(1),SoldAmount,Sold\r\n"
              "A1,2003-06-30,1234567.89,-1250.5,True\r\nA2,1999-12-01,-5,1000,False\r\n");
}

TEST_F(AssetCsvTest, AKnownNumberRewritesItsRowAndLeavesOtherColumnsAlone) {
    company_.Load(
        Write("AssetNum,Description,Basis(1),Sold\r\nA1    ,Lathe,1250.5,True\r\nB2,\"Drill, \"\"big\"\"\",,False\r\n"));
    // The other line end, a byte order mark, another order of columns, other letter case, an empty line, no end of the last line.
    const ImportCounts counts =
        company_.Load(Write("\xEF\xBB\xBF"
                            "basis(1),ASSETNUM,Purchased\n-.25,a1,2003-02-28\n\n7,C3,1899-12-30"));
    EXPECT_EQ(counts.Added, 1);
    EXPECT_EQ(counts.Updated, 1);
    EXPECT_EQ(company_.Dump({"AssetNum", "Description", "BASIS(1)", "Sold", "Purchased"}),
              "AssetNum,Description,Basis(1),Sold,Purchased\r\n"
              "a1,Lathe,-0.25,True,2003-02-28\r\n"
              "B2,\"Drill, \"\"big\"\"\",,False,\r\n"
              "C3,,7,False,1899-12-30\r\n");
    EXPECT_THROW(company_.Dump({"AssetNum", "Cost"}), PlatformError);
}

TEST_F(AssetCsvTest, ABadFileIsRefusedWholeWithItsLineAndColumn) {
    struct Case {
        std::string Text;
        Failure Code;
        const char* Complaint;
    };
    const Case cases[] = {
        {"", Failure::ItemNotFound, "in.csv: the file is empty"},
        {"Description\nx\n", Failure::ItemNotFound, "line 1: the header does not name AssetNum"},
        {"AssetNum,Cost\nA1,5\n", Failure::ItemNotFound, "line 1, column 2: the table has no column \"Cost\""},
        {"AssetNum,Sold,sold\nA1,True,True\n", Failure::DuplicateKey, "line 1, column 3: the header names Sold twice"},
        {"AssetNum,Sold\nA1,True\nA2\n", Failure::TypeMismatch,
         "line 3, column Sold: the row has 1 fields where the header has 2"},
        {"AssetNum,Sold\nA1,True,\n", Failure::TypeMismatch, "line 2, column 3: the row has 3 fields where the header has 2"},
        {"AssetNum,Purchased\nA1,2003-02-28\nA2,2003-02-29\n", Failure::TypeMismatch,
         "line 3, column Purchased: \"2003-02-29\" is no date"},
        {"AssetNum,Purchased\nA1,2003/02/28\n", Failure::TypeMismatch, "column Purchased: \"2003/02/28\" is no date"},
        {"AssetNum,Basis(2)\nA1,\"12,50.00\"\n", Failure::TypeMismatch, "column Basis(2): \"12,50.00\" is no amount"},
        {"AssetNum,Basis(2)\nA1,$-5\n", Failure::TypeMismatch, "column Basis(2): \"$-5\" is no amount"},
        {"AssetNum,InService\nA1,6/30/03\n", Failure::TypeMismatch, "column InService: \"6/30/03\" is no date"},
        {"AssetNum,InService\nA1,2/30/2003\n", Failure::TypeMismatch, "column InService: \"2/30/2003\" is no date"},
        {"AssetNum,Basis(2)\nA1,1.23456\n", Failure::TypeMismatch, "column Basis(2): \"1.23456\" is no amount"},
        {"AssetNum,Basis(2)\nA1,1e5\n", Failure::TypeMismatch, "column Basis(2): \"1e5\" is no amount"},
        {"AssetNum,FedLife\nA1,5.0\n", Failure::TypeMismatch, "column FedLife: \"5.0\" is no whole number"},
        {"AssetNum,FedLife\nA1,32768\n", Failure::Overflow, "column FedLife: \"32768\" is not within"},
        {"AssetNum,Sold\nA1,-1\n", Failure::TypeMismatch, "column Sold: \"-1\" is neither True nor False"},
        {"AssetNum,Sold\nA1,\n", Failure::InvalidUseOfNull, "column Sold: True or False is wanted"},
        {"AssetNum,NewUsed\nA1,NEWER\n", Failure::FieldTooSmall,
         "column NewUsed: \"NEWER\" has 5 characters; the column holds 1"},
        {"AssetNum,Description\nA1,\"one\ntwo\"\nA2,\xE4\xB8\xAD\n", Failure::TypeMismatch,
         "line 4, column Description: \"?\" has a character"},
        {"AssetNum,Description\nA1,\xFF\n", Failure::TypeMismatch, "line 2, column Description: \"?\" has a character"},
        {"AssetNum,Sold\n,True\n", Failure::NullKey, "line 2, column AssetNum: every asset needs a number"},
        {"AssetNum,Sold\n\"\",True\n", Failure::ZeroLengthNotAllowed, "line 2, column AssetNum"},
        {"AssetNum\nA1\nB1\n\"a1  \"\n", Failure::DuplicateKey, "line 4, column AssetNum: asset a1 is in line 2 already"},
        {"AssetNum,Sold\n\"   \",True\n", Failure::NullKey, "line 2, column AssetNum: every asset needs a number"},
        {"AssetNum\n\"A\t1\"\n", Failure::InvalidCall, "line 2, column AssetNum: a number may not hold a control character"},
        // What no later command could read.
        {"AssetNum,ClassLife\nA1,32767\nA2,32768\n", Failure::Overflow,
         "line 3, column ClassLife: \"32768\" is beyond what an asset can hold"},
        {"AssetNum,Basis(4)\nA1,922337203685477.5807\n", Failure::Overflow,
         "column Basis(4): \"922337203685477.5807\" is beyond"},
        {"AssetNum,Purchased\nA1,@2958466\n", Failure::Overflow, "column Purchased: \"@2958466\" is not within the years"},
        // Never repeated at length, never kept whole.
        {"AssetNum,Description\nA1," + std::string(500, 'x') + "\n", Failure::FieldTooSmall,
         "column Description: A text of 500 bytes has 500 characters"},
        {"AssetNum,Description\nA1,\"" + std::string(200'000, 'x') + "\"\n", Failure::FieldTooSmall, "line 2: a field"},
        {"AssetNum\nA1" + std::string(5000, ',') + "\n", Failure::FieldTooSmall, "line 2: a field or a row is longer"},
        {std::string("SQLite format 3\0", 16) + std::string(100, '\0'), Failure::InvalidCall, "in.csv is a company file"},
        {"AssetNum,Description\nA1,5\" pipe\n", Failure::InvalidCall, "in.csv, line 2: a quotation mark"},
        {"AssetNum,Description\nA1,\"5\" pipe\n", Failure::InvalidCall, "in.csv, line 2: a quotation mark"},
        {"AssetNum,Description\nA1,x\nA2,\"5 pipe\nA3,y\n", Failure::InvalidCall, "in.csv, line 3: the field in quotation marks"},
    };
    for (const Case& bad : cases) {
        SCOPED_TRACE(bad.Text);
        try {
            company_.Load(Write(bad.Text));
            ADD_FAILURE() << "was taken";
        } catch (const PlatformError& failure) {
            EXPECT_EQ(failure.Code(), bad.Code);
            EXPECT_THAT(failure.what(), HasSubstr(bad.Complaint));
        }
        EXPECT_EQ(company_.Assets.RecordCount(), 0);
    }
    mkfifo((folder_ / "pipe").c_str(), 0600);
    for (const std::filesystem::path& path : {folder_ / "none.csv", folder_.Path(), folder_ / "pipe", {"/dev/zero"}}) {
        EXPECT_THROW(company_.Load(path), PlatformError) << path << " is no file to be read";
    }
}

TEST_F(AssetCsvTest, AFailureOfTheDatabaseTakesBackTheRowsBeforeIt) {
    company_.Load(Write("AssetNum,Division\nA2,Mill\n"));
    company_.File.CreateIndex("Assets", {.Name = "Division", .Fields = {"Division"}, .Primary = false, .Required = true});
    company_.Assets = company_.File.OpenRecordset("Assets");
    const std::string before = company_.Dump();
    EXPECT_THROW(company_.Load(Write("AssetNum,Division\nA1,Lathe\nA2,Press\nA3,\nA4,Saw\n")), PlatformError);
    EXPECT_EQ(company_.Dump(), before);
    EXPECT_EQ(company_.Load(Write("AssetNum,Division\nA3,Saw\n")).Added, 1);
}

}  // namespace
}  // namespace tallymar
