#include <chrono>

#include <gtest/gtest.h>

#include "assets/AssetEditSession.h"
#include "support/Child.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

constexpr int kAssets = 5;
constexpr int kKills = 12;

std::string Round(int round) {
    return "round " + std::to_string(round);
}

// Goes through the assets and stores the same count in fields from the first column to the last, until it is killed.
[[noreturn]] void SaveForEver(const std::filesystem::path& file, const std::filesystem::path& folder, int first,
                              const test::Child::Ready& firstRoundDone) {
    UserProfile profile;
    test::ScriptedPrompts prompts;
    AssetEditState state;
    CompanySession session(AppPath::At(folder, folder / "no-program"), profile);
    session.OpenCompany(file, prompts);
    AssetEditSession edit(session, state, prompts);
    edit.Open();
    for (int round = first;; ++round) {
        edit.First();
        for (int i = 0; i < kAssets; ++i) {
            edit.Values.Description = Round(round);
            edit.Values.FairMktValue = Units(round);
            for (int book = kFirstBook; book <= kLastBook; ++book) edit.Values.Book[book].Salvage = Units(round);
            edit.Next();
        }
        if (round == first) firstRoundDone();
    }
}

TEST(SaveEditCrash, ARowIsTheOldOrTheNewOneNeverAMixture) {
    test::TestCompany company;
    for (int i = 0; i < kAssets; ++i) company.Session.AddAssetRecord(test::Machine("A" + std::to_string(i), Date(), 1));
    company.Session.FileClose();
    int latest = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        test::Child child([&](const test::Child::Ready& ready) {
            SaveForEver(company.File(), company.Folder.Path(), (kill + 1) * 100000, ready);
            return 0;
        });
        child.AwaitReady();
        ASSERT_EQ(child.KillAfter(std::chrono::milliseconds(kill * 7)), test::Child::kKilled);

        company.Session.OpenCompany(company.File(), company.Prompts);
        recordset::Recordset& assets = company.Session.AssetsRecordset();
        EXPECT_EQ(assets.RecordCount(), kAssets);
        AssetRecord record;
        for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
            company.Session.ReadAssetRecord(record);
            if (record.Description.empty()) continue;
            const auto round = static_cast<int>(record.FairMktValue.WholePart());
            EXPECT_EQ(record.Description, Round(round));
            for (int book = kFirstBook; book <= kLastBook; ++book) EXPECT_EQ(record.Salvage[book], Units(round));
            latest = std::max(latest, round);
        }
        company.Session.FileClose();
    }
    EXPECT_GE(latest, kKills * 100000) << "the last run had saved something when it was killed";
}

}  // namespace
}  // namespace tallymar
