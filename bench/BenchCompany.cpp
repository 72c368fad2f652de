#include "BenchCompany.h"

#include <cstdio>
#include <string>

namespace tallymar::bench {

void BuildCompany(CompanySession& session, const std::filesystem::path& path, int rows,
                  const std::function<AssetRecord(int row)>& asset) {
    std::filesystem::create_directories(path.parent_path());
    session.NewCompany(path);
    recordset::RunBatch(session.Database(), recordset::OnFailure::AllOrNothing, [&] {
        recordset::Recordset& company = session.CompanyRecordset();
        company.Edit();
        for (const char* column : {"FYEFederal", "FYEState", "FYEBook", "FYEAMT"})
            company.Set(column, Date::FromYmd(2003, 12, 31));
        company.Update();
        for (int row = 0; row < rows; ++row) session.AddAssetRecord(asset(row));
    });
}

AssetRecord RegisterAsset(int row) {
    char number[16];
    std::snprintf(number, sizeof number, "%06d", row);
    AssetRecord asset;
    asset.AssetNum = number;
    asset.Division = "Plant";
    asset.Description = "Drill press, floor " + std::to_string(row % 97);
    asset.AccountNum = "1500-" + std::to_string(row % 41);
    asset.AssetType = "PP";
    asset.NewUsed = "N";
    asset.ClassLife = Units(12);
    asset.BusinessUse = Units(100);
    asset.InService = Date::FromYmd(1990 + row * 7 % 14, 1 + row % 12, 1 + row % 28);
    asset.Sold = row % 50 == 0;
    if (asset.Sold) asset.DateSold = Date::FromYmd(2003, 6, 30);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        asset.Basis[book] = CurrencyAmount::FromTenThousandths(std::int64_t{row} * 7919 % 900'000'000);
        asset.PrevDepr[book] = CurrencyAmount::FromTenThousandths(std::int64_t{row} * 104729 % 500'000'000);
        asset.CurrDepr[book] = CurrencyAmount::FromTenThousandths(std::int64_t{row} * 1299709 % 90'000'000);
        asset.Period[book] = Units(7);
        asset.DBPercent[book] = 200;
        asset.IRSConvUsed[book] = "Y";
    }
    return asset;
}

}  // namespace tallymar::bench
