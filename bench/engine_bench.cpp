// Nanoseconds of one ComputeDepreciation by kind of computation. The figure to hold: two million modified ACRS calls a second on
// one core. A table file is read at its first use.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string_view>

#include "engine/ADepre.h"
#include "store/Vocabularies.h"

namespace {

using namespace tallymar;

const Date kInService = Date::FromYmd(2001, 4, 20);

AssetRecord Asset(std::string_view kind, int type, int method, int period, std::string_view convention) {
    AssetRecord record;
    record.Description = "A description of twenty and more characters";
    record.AssetType = kind;
    record.NewUsed = "N";
    record.BusinessUse = Units(100);
    record.InService = kInService;
    record.DeprType[1] = static_cast<std::int16_t>(type);
    record.DeprMethod[1] = static_cast<std::int16_t>(method);
    record.DBPercent[1] = 200;
    record.Period[1] = Units(period);
    record.Basis[1] = CurrencyAmount::FromTenThousandths(123'456'700);
    record.IRSConvUsed[1] = convention;
    return record;
}

AssetRecord Sold(AssetRecord record) {
    record.Sold = true;
    record.DateSold = Date::FromYmd(2003, 8, 15);
    return record;
}

AssetRecord Automobile(AssetRecord record) {
    record.Auto[1] = true;
    return record;
}

// Over the first six fiscal years in turn, so that no call repeats the one before.
void Compute(benchmark::State& state, AssetRecord record, bool midQuarter) {
    ADepre engine(TALLYMAR_TABLES);
    engine.BeginRun("False");
    Date yearEnds[6];
    for (int year = 0; year < 6; ++year) yearEnds[year] = Date::FromYmd(2001 + year, 12, 31);
    std::size_t call = 0;
    for (auto _ : state) {
        engine.ComputeDepreciation(record, yearEnds[call++ % 6], midQuarter, 1);
        benchmark::DoNotOptimize(record.CurrDepr[1]);
    }
    state.SetItemsProcessed(state.iterations());
}

// A sale within the year computed, with its status text.
void ComputeSale(benchmark::State& state, AssetRecord record) {
    ADepre engine(TALLYMAR_TABLES);
    const Date yearEnd = Date::FromYmd(2003, 12, 31);
    for (auto _ : state) {
        engine.ComputeDepreciation(record, yearEnd, false, 1);
        benchmark::DoNotOptimize(record.CurrDepr[1]);
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK_CAPTURE(Compute, mcrs_straight_line, Asset("PP", kMcrs, kSl, 7, "Y"), false);
BENCHMARK_CAPTURE(Compute, mcrs_declining, Asset("PP", kMcrs, kDb, 7, "Y"), false);
BENCHMARK_CAPTURE(Compute, mcrs_mid_quarter, Asset("PP", kMcrs, kDb, 7, "Q"), true);
BENCHMARK_CAPTURE(Compute, mcrs_real_property, Asset("RL", kMcrs, kSl, 39, "M"), false);
BENCHMARK_CAPTURE(Compute, mcrs_automobile, Automobile(Asset("PP", kMcrs, kDb, 5, "Y")), false);
BENCHMARK_CAPTURE(ComputeSale, mcrs_disposal, Sold(Asset("PP", kMcrs, kDb, 7, "Y")));
BENCHMARK_CAPTURE(Compute, acrs, Asset("PP", kAcrs, kAc, 10, "Y"), false);
BENCHMARK_CAPTURE(Compute, general_straight_line, Asset("PP", kGenl, kSl, 7, "N"), false);
BENCHMARK_CAPTURE(Compute, general_declining, Asset("PP", kGenl, kDb, 7, "N"), false);
BENCHMARK_CAPTURE(Compute, general_sum_of_years, Asset("PP", kGenl, kSy, 7, "N"), false);
BENCHMARK_CAPTURE(Compute, table_file_personal, Asset("PP", kMacs, kDb, 7, "Y"), false);
BENCHMARK_CAPTURE(Compute, table_file_39_years, Asset("RL", kMacs, kSl, 39, "M"), false);
BENCHMARK_CAPTURE(Compute, table_file_missing, Asset("PP", kMacs, kMi, 7, "Y"), false);

}  // namespace

BENCHMARK_MAIN();
