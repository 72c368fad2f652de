#include <sys/mount.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRunner.h"
#include "platform/recordset/Database.h"
#include "support/OtherProgram.h"

namespace tallymar {
namespace {

using test::CliResult;
using testing::HasSubstr;

class FaultsTest : public testing::Test {
 protected:
    void MakeCompany(const std::string& name, int assets) {
        std::string csv =
            "AssetNum,AssetType,NewUsed,InService,BusinessUse,ClassLife,Basis(1),Period(1),DBPercent(1),IRSConvUsed(1)\n";
        for (int i = 0; i < assets; ++i) csv += std::to_string(100000 + i) + ",PP,N,2003-02-01,100,5,1000,5,200,Y\n";
        cli_.Write("assets.csv", csv);
        ASSERT_EQ(cli_("new " + name).ExitStatus, 0);
        ASSERT_EQ(cli_("company " + name + " --set FYEFederal=2003-12-31").ExitStatus, 0);
        ASSERT_EQ(cli_("load " + name + " assets.csv").ExitStatus, 0);
    }

    std::string Message(const std::string& arguments) {
        const CliResult result = cli_(arguments);
        EXPECT_EQ(result.ExitStatus, 1) << arguments << result.Out;
        return result.Error;
    }

    test::CliRunner cli_;
};

TEST_F(FaultsTest, ATruncatedCompanyIsRefusedAndLeftAlone) {
    MakeCompany("c.mdb", 50);
    const std::string whole = cli_.Read("c.mdb");
    const std::string half = whole.substr(0, whole.size() / 2);
    cli_.Write("c.mdb", half);
    EXPECT_THAT(Message("compute c.mdb --books 1"), HasSubstr("c.mdb"));
    EXPECT_EQ(cli_.Read("c.mdb"), half);
}

// The file lacks a column, so that opening it writes every row; its trigger would delete them all.
TEST_F(FaultsTest, ATriggerInACompanyFileDeletesNothing) {
    MakeCompany("c.mdb", 3);
    const std::string whole = cli_("dump c.mdb").Out;
    test::OtherProgram(cli_.Folder() / "c.mdb")
        .Run("ALTER TABLE Assets DROP COLUMN Notice4; CREATE TRIGGER t AFTER UPDATE ON Assets BEGIN DELETE FROM Assets; END");
    EXPECT_EQ(cli_("dump c.mdb --columns AssetNum").Out, "AssetNum\r\n100000\r\n100001\r\n100002\r\n");
    EXPECT_EQ(cli_("dump c.mdb").Out.size(), whole.size());
}

// Under whatever name: another spelling, a link of either kind, the journal that is not there yet, a redirection.
TEST_F(FaultsTest, NoOutputMayBeTheCompanyItself) {
    MakeCompany("c.mdb", 3);
    const std::filesystem::path folder = cli_.Folder();
    std::filesystem::create_symlink("c.mdb", folder / "soft.csv");
    std::filesystem::create_hard_link(folder / "c.mdb", folder / "hard.txt");
    std::filesystem::create_symlink("c.mdb-journal", folder / "journal.csv");
    mkfifo((folder / "pipe.csv").c_str(), 0600);
    const std::string before = cli_.Read("c.mdb");
    for (const char* refused : {
             "compute c.mdb --books 1 --list soft.csv",
             "compute c.mdb --books 1 --list ./hard.txt",
             "compute c.mdb --books 1 --list journal.csv",
             "compute c.mdb --books 1 --list pipe.csv",
             "compute c.mdb --books 1 --list .",
             "compute c.mdb --books 1 --list /dev/null",
             "report c.mdb fixed-assets --out hard.txt",
             "report c.mdb fixed-assets --out a.pdf --items soft.csv",
             "report c.mdb fixed-assets --out a.csv --items a.csv",
             "labels c.mdb --sheet 5160-12 --out soft.csv",
             "load c.mdb soft.csv",
             "load c.mdb pipe.csv",
         }) {
        const std::string message = Message(refused);
        EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1) << refused;
        EXPECT_EQ(cli_.Read("c.mdb"), before) << refused;
    }
    EXPECT_THAT(cli_("dump c.mdb", ">hard.txt").Error, HasSubstr("company's own file"));
    EXPECT_EQ(cli_.Read("c.mdb"), before);
    EXPECT_EQ(cli_("dump c.mdb", "/dev/full").Error, "tallymar-cli: Disk full: standard output\n");
    EXPECT_EQ(cli_("company c.mdb", "/dev/full").Error, "tallymar-cli: Disk full: standard output\n");
    EXPECT_THAT(cli_("report c.mdb fixed-assets --out -").Out, HasSubstr("Fixed Asset"));
    EXPECT_THAT(cli_("compute c.mdb --books 1 --list -").Out, HasSubstr("100002,1,200,"));
}

TEST_F(FaultsTest, ACompanyThatAnotherProgramWritesIsNotWaitedForForever) {
    MakeCompany("c.mdb", 1);
    recordset::Database other = recordset::Database::Open(cli_.Folder() / "c.mdb");
    const auto start = std::chrono::steady_clock::now();
    recordset::RunBatch(other, recordset::OnFailure::AllOrNothing,
                        [&] { EXPECT_THAT(Message("compute c.mdb --books 1"), HasSubstr("locked")); });
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
}

TEST_F(FaultsTest, AReadOnlyFolderCanBeReadAndNotWritten) {
    MakeCompany("c.mdb", 3);
    const std::string before = cli_("dump c.mdb").Out;
    // The superuser may write anywhere but where the file system itself is read-only.
    std::filesystem::create_directory(cli_.Folder() / "ro");
    std::filesystem::copy_file(cli_.Folder() / "c.mdb", cli_.Folder() / "ro/c.mdb");
    const std::string folder = (cli_.Folder() / "ro").string();
    if (mount(folder.c_str(), folder.c_str(), nullptr, MS_BIND, nullptr) != 0) GTEST_SKIP() << "mounting is not allowed here";
    mount(nullptr, folder.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr);
    EXPECT_EQ(cli_("dump ro/c.mdb").Out, before);
    EXPECT_THAT(Message("compute ro/c.mdb --books 1"), HasSubstr("read-only"));
    EXPECT_NE(Message("new ro/d.mdb"), "");
    umount(folder.c_str());
}

TEST_F(FaultsTest, AFullDiskTakesTheWholeCommandBack) {
    MakeCompany("c.mdb", 2000);
    const std::string before = cli_("dump c.mdb").Out;
    const auto size = std::filesystem::file_size(cli_.Folder() / "c.mdb");
    const std::filesystem::path disk = cli_.Folder() / "disk";
    std::filesystem::create_directory(disk);
    // Room for the file and for a part of the journal.
    const std::string options = "size=" + std::to_string(size + size / 3);
    if (mount("tmpfs", disk.c_str(), "tmpfs", 0, options.c_str()) != 0) GTEST_SKIP() << "mounting is not allowed here";
    std::filesystem::copy_file(cli_.Folder() / "c.mdb", disk / "c.mdb");
    EXPECT_THAT(Message("compute disk/c.mdb --books 1"), HasSubstr("full"));
    EXPECT_EQ(cli_("dump disk/c.mdb").Out, before);
    umount(disk.c_str());
}

TEST_F(FaultsTest, ACompanyThatCannotBeFinishedLeavesNoFile) {
    const std::filesystem::path disk = cli_.Folder() / "disk";
    std::filesystem::create_directory(disk);
    if (mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=40k") != 0) GTEST_SKIP() << "mounting is not allowed here";
    EXPECT_THAT(Message("new disk/c.mdb"), HasSubstr("full"));
    EXPECT_TRUE(std::filesystem::is_empty(disk));
    umount(disk.c_str());
}

}  // namespace
}  // namespace tallymar
