#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "PageGrid.h"
#include "ReportCompany.h"
#include "reports/ReportTable.h"

namespace tallymar::test {
namespace {

std::string ReadGolden(const std::string& name) {
    std::ifstream in(TALLYMAR_SOURCE_DIR "/tests/reports/golden/" + name + ".txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// A page that has changed stands in full below the build folder, ready to be compared and, if it is right, to become the golden
// file.
void ExpectGolden(const std::string& name, const PageDocument& canvas) {
    const std::string pages = PageGrid(canvas).Document();
    if (pages == ReadGolden(name)) return;
    const std::filesystem::path folder = TALLYMAR_BINARY_DIR "/golden";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / (name + ".txt"), std::ios::binary) << pages;
    FAIL() << "The pages of " << name << " are not as in tests/reports/golden; they stand in " << folder.string() << "\n"
           << pages;
}

class GoldenReports : public testing::TestWithParam<int> {};

// Every asset kind under every report, by account, with what the form opens with.
TEST_P(GoldenReports, EveryKindByAccount) {
    ReportCompany company;
    FillWithEveryKind(company);
    ReportOptions options = ReportCompany::Options(GetParam());
    options.Sequence = ReportSequence::GLAccount;
    options.PrintInvestments = true;
    PageDocument canvas;
    ASSERT_TRUE(company.Print(options, canvas).Printed);
    ExpectGolden(std::string(InfoOfReport(GetParam()).Name), canvas);
}

std::string NameOf(const testing::TestParamInfo<int>& info) {
    std::string name(InfoOfReport(info.param).Name);
    std::erase(name, '-');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Reports, GoldenReports, testing::Range(0, kReports), NameOf);

TEST(GoldenReport, FilteredWithSecondLines) {
    ReportCompany company;
    FillWithEveryKind(company);
    AssetRecord asset = Ledger("D1", "1500", "Lathe of the north", Date::FromYmd(2001, 1, 1), "10000", "5200", "1920");
    asset.Division = "NORTH";
    asset.Descrip2 = "bought at auction";
    company.Add(asset);
    ReportOptions options = ReportCompany::Options(kFixedAssetReport);
    options.Division = "NORTH";
    options.Department = "NORTH";
    options.YStart = Date::FromYmd(2001, 1, 1);
    options.YEnd = Date::FromYmd(2001, 12, 31);
    options.PrintDescrip2 = true;
    options.Include179 = false;
    PageDocument canvas;
    ASSERT_TRUE(company.Print(options, canvas).Printed);
    ExpectGolden("fixed-assets-filtered", canvas);
}

}  // namespace
}  // namespace tallymar::test
