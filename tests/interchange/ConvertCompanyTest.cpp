#include "interchange/ConvertCompany.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "interchange/AssetDump.h"
#include "interchange/JetCopy.h"
#include "platform/recordset/Database.h"
#include "store/Schema.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::filesystem::path kLegacy = TALLYMAR_SOURCE_DIR "/tests/legacy";

class ConvertCompanyTest : public testing::Test {
 protected:
    std::filesystem::path CopyOf(const std::string& name) {
        std::filesystem::copy_file(kLegacy / name, folder_ / name);
        return folder_ / name;
    }
    ConvertedCompany Convert(const std::filesystem::path& old, bool replace = false) {
        return ConvertCompany({.Old = old, .New = folder_ / "new.mdb", .Replace = replace}, prompts_);
    }
    std::string Dump(const std::filesystem::path& path) {
        recordset::Database database = recordset::Database::Open(path);
        recordset::Recordset assets = database.OpenRecordset("Assets");
        std::string out;
        DumpAssets(assets, {}, [&out](std::string_view text) { out += text; });
        return out;
    }
    // Whatever stood in the folder before, and nothing else.
    void ExpectNothingMade() {
        EXPECT_FALSE(std::filesystem::exists(folder_ / "new.mdb"));
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            EXPECT_FALSE(entry.path().filename().string().starts_with(".")) << entry.path();
        }
    }

    test::TempFolder folder_;
    test::ScriptedPrompts prompts_;
};

TEST_F(ConvertCompanyTest, EveryOldFileGivesWhatItHolds) {
    const std::pair<const char*, const char*> files[] = {{"sample-jet3.mdb", "sample.expected.csv"},
                                                         {"sample.mdb", "sample.expected.csv"},
                                                         {"old-release.mdb", "old-release.expected.csv"},
                                                         {"odd-jet3.mdb", "odd.expected.csv"},
                                                         {"odd.mdb", "odd.expected.csv"}};
    for (const auto& [file, expected] : files) {
        SCOPED_TRACE(file);
        EXPECT_TRUE(Convert(kLegacy / file).Agrees);
        EXPECT_EQ(Dump(folder_ / "new.mdb"), test::ReadAll(kLegacy / expected));
        recordset::Database database = recordset::Database::Open(folder_ / "new.mdb");
        EXPECT_EQ(database.GetTableDef("Assets").Indexes, AssetsTable().Indexes);
        std::filesystem::remove(folder_ / "new.mdb");
    }
}

TEST_F(ConvertCompanyTest, AFileOfAnEarlierReleaseIsAsAnUpgradeMakesIt) {
    const ConvertedCompany converted = Convert(kLegacy / "old-release.mdb");
    EXPECT_THAT(converted.NotThere, ElementsAre("Company.State", "Assets.TaxGroup", "Assets.Notice4"));
    EXPECT_THAT(converted.NotTaken, IsEmpty());
    recordset::Database database = recordset::Database::Open(folder_ / "new.mdb");
    EXPECT_EQ(database.GetTableDef("Assets").FindField("TaxGroup")->Size, recordset::kDefaultTextSize);
}

TEST_F(ConvertCompanyTest, TextsThatACompanyCannotHoldAreNamedOrReplaced) {
    EXPECT_THAT(test::TextOf([&] { Convert(kLegacy / "beyond-1252.mdb"); }),
                AllOf(HasSubstr("3 texts hold characters"), HasSubstr("Asset 000101, Description: \"? Ohm ??\" has U+03A9"),
                      HasSubstr("Asset 000102, Division: \"?esk\xFD\" has U+010C"), HasSubstr("has U+1F600")));
    ExpectNothingMade();
    EXPECT_EQ(Convert(kLegacy / "beyond-1252.mdb", true).Replaced, 3);
    EXPECT_THAT(Dump(folder_ / "new.mdb"), HasSubstr("000101,Plant,,? Ohm ??,"));
}

TEST_F(ConvertCompanyTest, ARefusedFileLeavesNothingBehind) {
    const std::string sample = test::ReadAll(kLegacy / "sample-jet3.mdb");
    test::WriteAll(folder_ / "truncated.mdb", sample.substr(0, 77577));
    // The number of the second asset becomes the first's in other letters: Jet 3 keeps text as it is.
    std::string twice = test::ReadAll(kLegacy / "odd-jet3.mdb");
    const std::size_t at = twice.find("abc01x");
    ASSERT_NE(at, std::string::npos);
    twice.replace(at, 6, "empty ");
    test::WriteAll(folder_ / "twice.mdb", twice);
    const std::pair<std::filesystem::path, const char*> files[] = {
        {kLegacy / "password.mdb", "has a database password"},
        {kLegacy / "encrypted.mdb", "has encoded pages"},
        {kLegacy / "not-a-company.mdb", "has no table Company and no table Assets"},
        {folder_ / "truncated.mdb", "is cut short"},
        {folder_ / "twice.mdb", "AssetNum: The key of this record"},
        {folder_ / "none.mdb", "none.mdb"},
    };
    for (const auto& [file, complaint] : files) {
        SCOPED_TRACE(file);
        EXPECT_THAT(test::TextOf([&, path = file] { Convert(path); }), HasSubstr(complaint));
        ExpectNothingMade();
    }
    test::WriteAll(folder_ / "new.mdb", "somebody's");
    EXPECT_EQ(test::FailureOf([&] { Convert(kLegacy / "sample.mdb"); }), Failure::FileExists);
    EXPECT_EQ(test::ReadAll(folder_ / "new.mdb"), "somebody's");
}

// Puts another file in the old one's place while it is being read.
class Swapping : public test::ScriptedPrompts {
 public:
    std::filesystem::path File;
    std::filesystem::path With;

    void ProgressStep(std::int64_t) override {
        if (!With.empty()) std::filesystem::rename(std::exchange(With, {}), File);
    }
};

TEST_F(ConvertCompanyTest, TwoFilesThatDoNotAgreeAreAClearNo) {
    Convert(CopyOf("sample.mdb"));
    recordset::Database database = recordset::Database::Open(folder_ / "new.mdb");
    const CompanyTotals old = TotalsOfNew(database);
    const ConvertOptions options{.Old = folder_ / "sample.mdb", .New = folder_ / "new.mdb"};
    recordset::Recordset assets = database.OpenRecordset("Assets");
    const auto answer = [&] {
        ConvertedCompany converted;
        converted.Compare(old, TotalsOfNew(database));
        return std::string(converted.Agrees ? "yes" : converted.Summary(options));
    };
    EXPECT_EQ(answer(), "yes");
    assets.MoveLast();
    assets.Edit();
    assets.Set("Salvage(4)", CurrencyAmount::FromTenThousandths(assets.Get("Salvage(4)").Currency().TenThousandths() + 1));
    assets.Update();
    EXPECT_THAT(answer(), HasSubstr("new.mdb was NOT made: Salvage(4) is "));
    assets.Delete();
    EXPECT_EQ(answer(), "new.mdb was NOT made: Assets is 73 in sample.mdb and came out as 72");
}

TEST_F(ConvertCompanyTest, AFileThatChangesWhileItIsReadIsRefused) {
    Swapping swapping;
    swapping.File = CopyOf("sample.mdb");
    swapping.With = CopyOf("odd.mdb");
    const ConvertOptions options{.Old = swapping.File, .New = folder_ / "new.mdb"};
    const auto failure = test::ErrorOf([&] { ConvertCompany(options, swapping); });
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(std::string(failure->what()).substr(0, 41), "sample.mdb was changed while it was read;");
    ExpectNothingMade();
}

TEST_F(ConvertCompanyTest, AnOldFileIsOfferedAsACompanyBesideIt) {
    const std::filesystem::path old = CopyOf("beyond-1252.mdb");
    const std::filesystem::path made = folder_ / "beyond-1252 (converted).mdb";
    const std::string before = test::ReadAll(old);
    prompts_.YesNo = {false};
    EXPECT_EQ(OfferConversion(old, prompts_), std::nullopt);
    prompts_.YesNo = {true, false};
    EXPECT_EQ(OfferConversion(old, prompts_), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(made));
    prompts_.YesNo = {true, true};
    EXPECT_EQ(OfferConversion(old, prompts_), made);
    EXPECT_THAT(prompts_.Messages.at(0).Text, AllOf(HasSubstr("with 2 assets"), HasSubstr("\nAssets\t2\t2\n")));
    // Made once, it may have been worked in since.
    const std::string converted = test::ReadAll(made);
    prompts_.YesNo = {true};
    EXPECT_EQ(OfferConversion(old, prompts_), made);
    EXPECT_EQ(test::ReadAll(made), converted);
    EXPECT_EQ(test::ReadAll(old), before);
    // A company is no old file: nothing is asked.
    prompts_.YesNo.clear();
    EXPECT_EQ(OfferConversion(made, prompts_), made);
}

}  // namespace
}  // namespace tallymar
