#include <sstream>

#include <gtest/gtest.h>

#include "batch/ComputeCurrent.h"
#include "interchange/AssetLoad.h"
#include "interchange/FieldText.h"
#include "samples/TextTable.h"
#include "store/Books.h"
#include "store/Vocabularies.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

const std::filesystem::path kSamples = TALLYMAR_SOURCE_DIR "/samples";
constexpr int kYear = 2003;

class SampleCompanyTest : public testing::Test {
 protected:
    SampleCompanyTest() {
        SetProfile();
        LoadAssets(company_.Session.Database(), company_.Session.AssetsRecordset(), kSamples / "assets.csv");
    }

    void SetProfile() {
        recordset::Recordset& profile = company_.Session.CompanyRecordset();
        std::istringstream lines(test::ReadText(kSamples / "company.txt"));
        std::string buffer;
        profile.Edit();
        for (std::string line; std::getline(lines, line);) {
            const std::size_t equals = line.find('=');
            const recordset::Field* field = profile.Definition().FindField(line.substr(0, equals));
            ASSERT_NE(field, nullptr) << line;
            profile.Set(field->Name, ParseFieldText(*field, line.substr(equals + 1), buffer));
        }
        profile.Update();
    }

    // What the run tells of every asset and book, and the totals below, as the checked-in text has them.
    std::string Compute(PerBook<bool> books, PerBook<bool> midQuarter) {
        std::ostringstream text;
        text << "AssetNum,Description,Book,CurrDepr,StatusText\n";
        const auto tell = [&](const ComputedAsset& asset) {
            const std::string_view description = company_.Session.AssetsRecordset().Get("Description").Text();
            text << asset.AssetNum << ",\"" << description << "\"," << BookName(asset.Book) << ',' << asset.CurrDepr.ToText()
                 << ',' << asset.StatusText << '\n';
        };
        ComputeCurrentResult result;
        ComputeCurrent(company_.Session, engine_, {.Compute = books, .UseMidQuarter = midQuarter}, company_.Prompts, result,
                       tell);
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            if (!books[book]) continue;
            text << "In service,," << BookName(book) << ",\"" << result[book].Totals.InServiceText() << "\",\n";
            text << "4th quarter,," << BookName(book) << ",\"" << result[book].Totals.FourthQuarterText() << "\","
                 << result[book].Totals.PercentText() << "%\n";
        }
        return text.str();
    }

    static std::string_view BookName(int book) { return BookOf(book).Name; }

    test::TestCompany company_;
    ADepre engine_{test::kTableFolder};
};

PerBook<bool> Books(std::initializer_list<int> books) {
    PerBook<bool> chosen;
    for (const int book : books) chosen[book] = true;
    return chosen;
}

// A line that differs is named by its asset, not by its place in a text of three hundred lines.
void ExpectSameLines(const std::string& computed, const std::string& expectedFile) {
    std::istringstream computedLines(computed);
    std::istringstream expectedLines(test::ReadText(std::filesystem::path(TALLYMAR_SOURCE_DIR "/tests/samples") / expectedFile));
    std::string line;
    std::string expected;
    while (std::getline(expectedLines, expected)) {
        std::getline(computedLines, line);
        EXPECT_EQ(line, expected);
    }
    EXPECT_FALSE(std::getline(computedLines, line)) << line;
}

TEST_F(SampleCompanyTest, TheYearComputesToTheReviewedFigures) {
    ExpectSameLines(Compute(Books({1, 2, 3, 4}), {}), "computed-2003.csv");
}

TEST_F(SampleCompanyTest, UnderTheMidQuarterConventionTheYearsAdditionsChange) {
    Compute(Books({1}), {});
    ExpectSameLines(Compute(Books({1}), Books({1})), "computed-2003-mid-quarter.csv");
}

// The amounts of earlier years are what the engine took in those years, so that the sample goes on from a true history.
TEST_F(SampleCompanyTest, EarlierDepreciationIsTheSumOfTheYearsBefore) {
    recordset::Recordset& assets = company_.Session.AssetsRecordset();
    AssetRecord stored;
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
        company_.Session.ReadAssetRecord(stored);
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            AssetRecord record = stored;
            record.PrevDepr[book] = CurrencyAmount();
            for (int year = record.InService.Year(); year < kYear; ++year) {
                engine_.ComputeDepreciation(record, Date::FromYmd(year, 12, 31), record.IRSConvUsed[book] == "Q", book);
                record.PrevDepr[book] += record.CurrDepr[book];
            }
            EXPECT_EQ(record.PrevDepr[book].ToText(), stored.PrevDepr[book].ToText())
                << stored.AssetNum.View() << " " << BookName(book);
        }
    }
}

}  // namespace
}  // namespace tallymar
