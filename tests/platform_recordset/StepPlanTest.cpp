#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/recordset/Database.h"
#include "platform/recordset/Recordset.h"
#include "platform/recordset/Sql.h"
#include "support/OtherProgram.h"
#include "support/TempFolder.h"

namespace tallymar::recordset {
namespace {

TableDef Table() {
    return {.Name = "Things",
            .Fields = {{"Name", FieldType::Text, 6, false},
                       {"Group", FieldType::Text, 4, true},
                       {"When", FieldType::Date},
                       {"Amount", FieldType::Currency},
                       {"Flag", FieldType::Boolean}},
            .Indexes = {{"Name", {"Name"}, true, true},
                        {"GroupWhen", {"Group", "When"}, false, false},
                        {"Mixed", {"Amount", "Group", "Flag", "When"}, false, false}}};
}

// A move must never walk more of the table than its step: each query is one search of the index by everything that is given, and
// no rows are sorted.
void ExpectOneProbe(test::OtherProgram& program, const std::string& sql, int given) {
    std::string plan;
    for (const std::string& row : program.Run("EXPLAIN QUERY PLAN " + sql)) plan += row + "\n";
    EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << sql << "\n" << plan;
    EXPECT_EQ(std::count(plan.begin(), plan.end(), '?'), given) << sql << "\n" << plan;
    EXPECT_NE(plan.find(given > 0 ? "SEARCH" : "SCAN"), std::string::npos) << sql << "\n" << plan;
}

class StepPlan : public testing::TestWithParam<bool> {};

TEST_P(StepPlan, EveryStepIsOneSearchOfItsIndex) {
    const test::TempFolder folder;
    const TableDef table = Table();
    { Database::Create(folder / "plan.mdb").CreateTable(table); }
    test::OtherProgram program(folder / "plan.mdb");
    if (GetParam()) {
        // Statistics that speak for a scan in every case.
        program.Run("ANALYZE; DELETE FROM sqlite_stat1");
        for (const char* index : {"Things_Name", "Things_GroupWhen", "Things_Mixed"}) {
            program.Run("INSERT INTO sqlite_stat1 VALUES ('Things', '" + std::string(index) + "', '3 3 3 3 3')");
        }
    }
    std::vector<const Index*> orders = {nullptr};
    for (const Index& index : table.Indexes) orders.push_back(&index);
    int checked = 0;
    for (const Index* index : orders) {
        const int keys = index == nullptr ? 0 : static_cast<int>(index->Fields.size());
        for (int depth = 0; depth <= keys; ++depth) {
            for (const bool beyond : {false, true}) {
                const int given = depth + (beyond && depth < keys ? 1 : 0);
                for (std::uint32_t nulls = 0; nulls < 1U << given; ++nulls) {
                    for (const bool descending : {false, true}) {
                        // Nothing comes before Null: that step is never asked for.
                        if (descending && beyond && depth < keys && (nulls >> depth & 1U) != 0) continue;
                        ExpectOneProbe(program, sql::Step(table, index, {depth, beyond, descending, nulls}),
                                       depth + (beyond ? 1 : 0));
                        ++checked;
                    }
                }
            }
        }
    }
    EXPECT_GT(checked, 100);
}

INSTANTIATE_TEST_SUITE_P(Statistics, StepPlan, testing::Bool());

}  // namespace
}  // namespace tallymar::recordset
