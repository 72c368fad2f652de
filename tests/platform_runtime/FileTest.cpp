#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "platform/runtime/SequentialFile.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

namespace fs = std::filesystem;
using test::FailureOf;

std::vector<std::string> Items(const fs::path& path) {
    SequentialReader reader(path);
    std::vector<std::string> items;
    while (!reader.AtEnd()) items.push_back(reader.ReadText());
    return items;
}

int FilesIn(const fs::path& folder) {
    return static_cast<int>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(Reading, ItemsOfEveryShape) {
    const test::TempFolder folder;
    const std::pair<const char*, std::vector<std::string>> table[] = {{"", {}},
                                                                      {"a,b\r\nc", {"a", "b", "c"}},
                                                                      {"a\nb\rc\r\n\r\nd\r\n\r\n", {"a", "b", "c", "", "d"}},
                                                                      {"  a b , \"c, d\" ,\"\"\r\n", {"a b ", "c, d", ""}},
                                                                      {"\"two\r\nlines\",x", {"two\r\nlines", "x"}},
                                                                      {"\"3\" pipe\",next\r\n", {"3", "next"}},
                                                                      {"1,2,\r\n3", {"1", "2", "", "3"}},
                                                                      {",,", {"", "", ""}},
                                                                      {"5\" pipe,x", {"5\" pipe", "x"}},
                                                                      {"\"never closed, ", {"never closed, "}},
                                                                      {"a\r\n\x1A", {"a"}},
                                                                      {"\xEF\xBB\xBF"
                                                                       "Caf\xC3\xA9",
                                                                       {"Caf\xE9"}},
                                                                      {"Caf\xE9", {"Caf\xE9"}}};
    for (const auto& [contents, expected] : table) {
        test::WriteAll(folder / "items", contents);
        EXPECT_EQ(Items(folder / "items"), expected) << contents;
    }
}

TEST(Reading, NumbersAndLines) {
    const test::TempFolder folder;
    test::WriteAll(folder / "table", "4, 33.33 ,44.455555\r\n\"12\" 7 2.5,x\r\nthe, line\r\n\r\nlast");
    SequentialReader reader(folder / "table");
    EXPECT_EQ(reader.ReadInteger(), 4);
    EXPECT_EQ(reader.ReadNumber(), 33.33);
    EXPECT_EQ(reader.ReadCurrency().ToText(), "44.4556");
    EXPECT_EQ(reader.ReadNumber(), 12);  // what follows a closed quote belongs to it
    EXPECT_EQ(reader.ReadNumber(), 0);
    EXPECT_EQ(reader.ReadLine(), "the, line");
    EXPECT_EQ(reader.ReadLine(), "");
    EXPECT_EQ(reader.ReadLine(), "last");
    EXPECT_FALSE(reader.HasLine());
    EXPECT_EQ(FailureOf([&] { reader.ReadLine(); }), Failure::InputPastEnd);
    EXPECT_EQ(FailureOf([&] { reader.ReadText(); }), Failure::InputPastEnd);

    test::WriteAll(folder / "blanks", "1 2  3\r\n40000");
    SequentialReader blanks(folder / "blanks");
    for (int expected = 1; expected <= 3; ++expected) EXPECT_EQ(blanks.ReadInteger(), expected);
    EXPECT_EQ(FailureOf([&] { blanks.ReadInteger(); }), Failure::Overflow);
}

// The last record of an asset file may end in an empty item: the end comes only after it.
TEST(Reading, AnEmptyLastItemBelongsToItsRecord) {
    const test::TempFolder folder;
    test::WriteAll(folder / "record", "3,4,\r\n");
    SequentialReader reader(folder / "record");
    for (const char* item : {"3", "4", ""}) EXPECT_EQ(reader.AtEnd() ? "end" : reader.ReadText(), item);
    EXPECT_TRUE(reader.AtEnd());
}

TEST(Reading, FailuresSayWhatIsMissing) {
    const test::TempFolder folder;
    EXPECT_EQ(FailureOf([&] { SequentialReader(folder / "none"); }), Failure::FileNotFound);
    EXPECT_EQ(FailureOf([&] { SequentialReader(folder / "no" / "folder"); }), Failure::PathNotFound);
    EXPECT_EQ(FailureOf([&] { SequentialReader(folder.Path()); }), Failure::PathAccess);
    EXPECT_NE(test::TextOf([&] { SequentialReader(folder / "none.dat"); }).find("none.dat"), std::string::npos);
}

TEST(Writing, QuotedLinesComeBack) {
    const test::TempFolder folder;
    std::vector<std::string> lines;
    SequentialWriter writer(folder / "profile");
    for (int i = 0; i < 100; ++i) {
        lines.push_back(i == 50 ? std::string(1 << 20, 'x') : i % 3 == 0 ? "" : " a, b\r\n\xE9 " + std::to_string(i));
        writer.WriteQuotedLine(lines.back());
    }
    EXPECT_FALSE(fs::exists(folder / "profile"));
    writer.Close();
    writer.Close();
    EXPECT_EQ(Items(folder / "profile"), lines);
    EXPECT_EQ(FailureOf([&] { writer.WriteLine("late"); }), Failure::BadFileName);
}

TEST(Writing, WithoutCloseTheEarlierFileStays) {
    const test::TempFolder folder;
    test::WriteAll(folder / "profile", "old");
    { SequentialWriter(folder / "profile").WriteLine("new"); }
    EXPECT_EQ(test::ReadAll(folder / "profile"), "old");
    EXPECT_EQ(FilesIn(folder.Path()), 1);
}

TEST(Replacing, KeepsPermissionsAndFollowsLinks) {
    const test::TempFolder folder;
    fs::create_directory(folder / "real");
    test::WriteAll(folder / "real" / "file", "old");
    fs::permissions(folder / "real" / "file", fs::perms(0640));
    fs::create_symlink("real/file", folder / "link");
    fs::create_symlink("link", folder / "link2");
    ReplaceFile(folder / "link2", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(test::ReadAll(folder / "real" / "file"), "new");
    EXPECT_EQ(fs::status(folder / "real" / "file").permissions(), fs::perms(0640));
    EXPECT_EQ(FilesIn(folder / "real"), 1);

    fs::create_symlink("real/second", folder / "dangling");
    ReplaceFile(folder / "dangling", "there");
    EXPECT_EQ(test::ReadAll(folder / "real" / "second"), "there");

    const mode_t mask = umask(027);
    ReplaceFile(folder / "fresh", "");
    umask(mask);
    EXPECT_EQ(fs::status(folder / "fresh").permissions(), fs::perms(0640));
    ReplaceFile("/dev/null", "a device is not replaced");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(Replacing, FailuresLeaveNothingBehind) {
    const test::TempFolder folder;
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(FailureOf([&] { ReplaceFile(folder.Path(), "x"); }), Failure::PathAccess);
    EXPECT_EQ(FailureOf([&] { ReplaceFile(folder / "no" / "folder", "x"); }), Failure::PathNotFound);
    EXPECT_EQ(FailureOf([&] { ReplaceFile(folder / "loop", "x"); }), Failure::PathAccess);
    EXPECT_EQ(FailureOf([&] { ReplaceFile(folder / std::string(300, 'n'), "x"); }), Failure::BadFileName);
    EXPECT_EQ(FailureOf([] { ReplaceFile("", "x"); }), Failure::BadFileName);
    EXPECT_EQ(FilesIn(folder.Path()), 1);
}

// Gives up the superuser's rights for a while, if there are any, and the folder to whom they are given up to.
class AsOrdinaryUser {
 public:
    explicit AsOrdinaryUser(const fs::path& folder) {
        constexpr uid_t kNobody = 65534;
        if (geteuid() != 0) return;
        lowered_ = chown(folder.c_str(), kNobody, static_cast<gid_t>(-1)) == 0 && seteuid(kNobody) == 0;
    }
    ~AsOrdinaryUser() {
        if (lowered_ && seteuid(0) != 0) abort();
    }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

 private:
    bool lowered_ = false;
};

TEST(Replacing, ProtectedFileOrFolderIsLeftAlone) {
    const test::TempFolder folder;
    const AsOrdinaryUser ordinary(folder.Path());
    if (geteuid() == 0) GTEST_SKIP() << "the superuser is refused nothing";
    test::WriteAll(folder / "file", "old");
    fs::permissions(folder / "file", fs::perms(0444));
    EXPECT_EQ(FailureOf([&] { ReplaceFile(folder / "file", "new"); }), Failure::PermissionDenied);
    fs::permissions(folder / "file", fs::perms(0200));
    EXPECT_EQ(FailureOf([&] { SequentialReader(folder / "file"); }), Failure::PermissionDenied);
    fs::permissions(folder / "file", fs::perms(0644));
    fs::permissions(folder.Path(), fs::perms(0555));
    EXPECT_EQ(FailureOf([&] { ReplaceFile(folder / "file", "new"); }), Failure::PermissionDenied);
    fs::permissions(folder.Path(), fs::perms(0755));
    EXPECT_EQ(test::ReadAll(folder / "file"), "old");
}

// A file system of its own for one test, 64 KB large.
class SmallDisk {
 public:
    explicit SmallDisk(fs::path path, unsigned long flags = 0) : path_(std::move(path)) {
        fs::create_directory(path_);
        mounted_ = mount("tmpfs", path_.c_str(), "tmpfs", flags, "size=64k") == 0;
    }
    ~SmallDisk() {
        if (mounted_) umount(path_.c_str());
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsMounted() const { return mounted_; }

 private:
    fs::path path_;
    bool mounted_ = false;
};

TEST(Replacing, FullDiskLeavesTheEarlierFile) {
    const test::TempFolder folder;
    const SmallDisk disk(folder / "disk");
    if (!disk.IsMounted()) GTEST_SKIP() << "mounting needs the superuser";
    test::WriteAll(folder / "disk" / "file", "old");
    EXPECT_EQ(FailureOf([&] { ReplaceFile(folder / "disk" / "file", std::string(1 << 20, 'x')); }), Failure::DiskFull);
    EXPECT_EQ(test::ReadAll(folder / "disk" / "file"), "old");
    EXPECT_EQ(FilesIn(folder / "disk"), 1);
    ReplaceFile(folder / "disk" / "file", "new");  // what the failure took is given back
    EXPECT_EQ(test::ReadAll(folder / "disk" / "file"), "new");
}

TEST(Replacing, ReadOnlyDiskIsDenied) {
    const test::TempFolder folder;
    const SmallDisk disk(folder / "disk", MS_RDONLY);
    if (!disk.IsMounted()) GTEST_SKIP() << "mounting needs the superuser";
    EXPECT_EQ(FailureOf([&] { ReplaceFile(folder / "disk" / "file", "x"); }), Failure::PermissionDenied);
}

}  // namespace
}  // namespace tallymar
