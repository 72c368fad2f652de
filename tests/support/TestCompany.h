#pragma once

#include <filesystem>

#include "store/CompanySession.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace tallymar::test {

// A session in a folder of its own, with a new company open. Link `store` to use it.
struct TestCompany {
    TestCompany() : Session(AppPath::At(Folder.Path(), Folder / "no-program"), Profile) { Session.NewCompany(File()); }

    std::filesystem::path File() const { return Folder / "company.mdb"; }

    void SetYearEnds(Date yearEnd) {
        recordset::Recordset& company = Session.CompanyRecordset();
        company.Edit();
        for (const char* column : {"FYEFederal", "FYEState", "FYEBook", "FYEAMT"}) company.Set(column, yearEnd);
        company.Update();
    }

    TempFolder Folder;
    UserProfile Profile;
    ScriptedPrompts Prompts;
    CompanySession Session;
};

// A modified ACRS machine of five years, new, in every book alike.
inline AssetRecord Machine(std::string_view number, Date inService, int cost) {
    AssetRecord record;
    record.AssetNum = number;
    record.AssetType = "PP";
    record.NewUsed = "N";
    record.ClassLife = Units(5);
    record.BusinessUse = Units(100);
    record.InService = inService;
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        record.Basis[book] = Units(cost);
        record.Period[book] = Units(5);
        record.DBPercent[book] = 200;
        record.IRSConvUsed[book] = "Y";
    }
    return record;
}

}  // namespace tallymar::test
