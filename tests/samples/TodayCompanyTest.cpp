#include <gtest/gtest.h>

#include <sstream>

#include "batch/ComputeCurrent.h"
#include "interchange/AssetLoad.h"
#include "samples/TextTable.h"
#include "store/CompanyLimits.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

const std::filesystem::path kToday = TALLYMAR_SOURCE_DIR "/samples/today";
constexpr int kYear = 2025;

// The company of samples/today: its page tells every amount, as delivered and by law.
class TodayCompanyTest : public testing::Test {
 protected:
    TodayCompanyTest() {
        std::filesystem::copy(TALLYMAR_SOURCE_DIR "/data/law", company_.Folder / "law");
        recordset::Recordset& profile = company_.Session.CompanyRecordset();
        profile.Edit();
        profile.Set("FYEFederal", Date::FromYmd(kYear, 12, 31));
        profile.Update();
        LoadAssets(company_.Session.Database(), company_.Session.AssetsRecordset(), kToday / "assets.csv");
    }

    // Allowance and amount of each asset.
    std::map<std::string, std::pair<std::string, std::string>> Compute(Limits limits) {
        SetLimits(company_.Session.Database(), limits);
        PerBook<bool> federal;
        federal[kFirstBook] = true;
        ComputeCurrentResult result;
        std::map<std::string, std::pair<std::string, std::string>> amounts;
        AssetRecord record;
        ComputeCurrent(company_.Session, engine_, {.Compute = federal, .UseMidQuarter = {}}, company_.Prompts, result);
        recordset::Recordset& assets = company_.Session.AssetsRecordset();
        for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
            company_.Session.ReadAssetRecord(record);
            amounts[std::string(record.AssetNum.Trimmed())] = {record.AddlDepr[1].ToText(), record.CurrDepr[1].ToText()};
        }
        return amounts;
    }

    test::TestCompany company_;
    ADepre engine_{test::kTableFolder};
};

std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream text(line);
    for (std::string cell; std::getline(text, cell, '|');) {
        const std::size_t first = cell.find_first_not_of(' ');
        cells.push_back(first == cell.npos ? "" : cell.substr(first, cell.find_last_not_of(' ') - first + 1));
    }
    return cells;
}

TEST_F(TodayCompanyTest, ItsPageTellsWhatBothWaysCompute) {
    auto delivered = Compute(Limits::AsDelivered);
    auto byLaw = Compute(Limits::ByLaw);
    std::istringstream page(test::ReadText(kToday / "README.md"));
    int assets = 0;
    for (std::string line; std::getline(page, line);) {
        if (!line.starts_with("| T000")) continue;
        const auto cells = CellsOf(line);
        ASSERT_EQ(cells.size(), 7U) << line;
        EXPECT_EQ(delivered[cells[1]], std::pair(cells[3], cells[5])) << line;
        EXPECT_EQ(byLaw[cells[1]], std::pair(cells[4], cells[6])) << line;
        ++assets;
    }
    EXPECT_EQ(assets, 20);
    EXPECT_EQ(Compute(Limits::AsDelivered), delivered) << "the choice is in the computing alone: it goes back and forth";
}

TEST_F(TodayCompanyTest, ItsHistoryIsWhatTheLawGaveYearByYear) {
    SetLimits(company_.Session.Database(), Limits::ByLaw);
    engine_.BeginRun("False", company_.Session.LimitsByLaw());
    recordset::Recordset& assets = company_.Session.AssetsRecordset();
    AssetRecord stored;
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
        company_.Session.ReadAssetRecord(stored);
        AssetRecord record = stored;
        record.PrevDepr[1] = record.AddlDepr[1] = CurrencyAmount();
        for (int year = record.InService.Year(); year < kYear; ++year) {
            engine_.ComputeDepreciation(record, Date::FromYmd(year, 12, 31), false, 1);
            record.PrevDepr[1] += record.CurrDepr[1];
        }
        EXPECT_EQ(record.PrevDepr[1].ToText(), stored.PrevDepr[1].ToText()) << stored.AssetNum.View();
        EXPECT_EQ(record.AddlDepr[1].ToText(), stored.AddlDepr[1].ToText()) << stored.AssetNum.View();
    }
}

}  // namespace
}  // namespace tallymar
