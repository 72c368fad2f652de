#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

#include "interchange/AssetImport.h"
#include "support/Files.h"
#include "support/TestCompany.h"

// One company for all inputs of a run: each is taken back, so that none changes what the next one meets, and nothing waits for
// the disk.
namespace tallymar::fuzz {

// How an import is asked for, by the first byte of an input.
struct ImportWish {
    static constexpr const char* kBooks[] = {"Company", "Federal", "State", "Book", "AMT"};
    static constexpr ImportEnding kEndings[] = {ImportEnding::KeepDone, ImportEnding::AllOrNothing, ImportEnding::CheckOnly};

    explicit ImportWish(std::uint8_t choice)
        : Book(kBooks[choice % 5]), AddNew(choice / 5 % 2 == 1), Ending(kEndings[choice / 10 % 3]) {}

    const char* Book;
    bool AddNew;
    ImportEnding Ending;
};

// An input of two files, divided by a zero byte.
struct TwoFiles {
    explicit TwoFiles(std::string_view bytes)
        : IsBoth(bytes.find('\0') != std::string_view::npos),
          First(bytes.substr(0, bytes.find('\0'))),
          Second(IsBoth ? bytes.substr(First.size() + 1) : std::string_view()) {}

    bool IsBoth;
    std::string_view First;
    std::string_view Second;
};

inline test::TestCompany& Company() {
    static test::TestCompany company;
    return company;
}

// Every stored value must come out again as one of its column's type, or as the failure that an unreadable one is.
inline void LookAtAssets(CompanySession& session) {
    AssetRecord record;
    recordset::Recordset& assets = session.AssetsRecordset();
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
        try {
            session.ReadAssetRecord(record);
        } catch (const PlatformError&) {
        }
    }
}

// `import` gives what it did, or fails as a damaged file should. A check must have written nothing.
template <typename Import>
void RunImportOnce(const ImportWish& wish, Import&& import) {
    test::TestCompany& company = Company();
    CompanySession& session = company.Session;
    recordset::RunBatch(session.Database(), recordset::OnFailure::AllOrNothing, [&](recordset::WriteBatch& batch) {
        const std::int64_t before = session.AssetCount();
        bool failed = false;
        try {
            import(session);
        } catch (const PlatformError&) {
            failed = true;
        }
        const bool keepsAll = wish.Ending == ImportEnding::CheckOnly || (failed && wish.Ending == ImportEnding::AllOrNothing);
        if (keepsAll && session.AssetCount() != before) std::abort();
        LookAtAssets(session);
        batch.Rollback();
    });
    company.Prompts.Messages.clear();
}

}  // namespace tallymar::fuzz
