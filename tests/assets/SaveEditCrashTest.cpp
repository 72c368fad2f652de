#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include <gtest/gtest.h>

#include "assets/AssetEditSession.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

constexpr int kAssets = 5;
constexpr int kKills = 12;

std::string Round(int round) {
    return "round " + std::to_string(round);
}

// Goes through the assets and stores the same count in fields from the first column to the last, until it is killed.
// Writes a byte to `started` after the first round.
[[noreturn]] void SaveForEver(const std::filesystem::path& file, const std::filesystem::path& folder, int first, int started) {
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
        if (round == first && write(started, "", 1) != 1) std::abort();
    }
}

TEST(SaveEditCrash, ARowIsTheOldOrTheNewOneNeverAMixture) {
    test::TestCompany company;
    for (int i = 0; i < kAssets; ++i) company.Session.AddAssetRecord(test::Machine("A" + std::to_string(i), Date(), 1));
    company.Session.FileClose();
    int latest = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        int started[2];
        ASSERT_EQ(pipe(started), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) SaveForEver(company.File(), company.Folder.Path(), (kill + 1) * 100000, started[1]);
        close(started[1]);
        char byte = 0;
        ASSERT_EQ(read(started[0], &byte, 1), 1);
        close(started[0]);
        std::this_thread::sleep_for(std::chrono::milliseconds(kill * 7));
        ::kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself";

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
