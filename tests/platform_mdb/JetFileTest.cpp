#include "platform/mdb/JetFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "platform/mdb/JetText.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/TempFolder.h"

namespace tallymar::mdb {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

const std::filesystem::path kLegacy = TALLYMAR_SOURCE_DIR "/tests/legacy";

class CollectedRows : public JetRows {
 public:
    void Table(const JetTable& table) override { Tables.push_back(table); }
    void Row(std::span<const JetValue> values) override {
        ++Count;
        if (OnRow) OnRow(values);
    }

    std::vector<JetTable> Tables;
    int Count = 0;
    std::function<void(std::span<const JetValue>)> OnRow;
};

std::string ReadFailure(const std::filesystem::path& path, std::string_view table) {
    return test::TextOf([&] {
        CollectedRows rows;
        ReadJetTables(path, std::array{table}, rows);
    });
}

TEST(JetFileTest, EveryTypeOfAFileByAnotherProgramIsRead) {
    std::ostringstream text;
    CollectedRows rows;
    rows.OnRow = [&](std::span<const JetValue> values) {
        for (const JetValue& value : values) text << value.Text << '|' << value.Whole << '|' << value.Real << ',';
        text << '\n';
    };
    ReadJetTables(kLegacy / "access97.mdb", std::array<std::string_view, 1>{"table1"}, rows);
    // The date of the first row is 1981-12-12; I is a Boolean.
    EXPECT_EQ(text.str(),
              "a|0|0,b|0|0,|0|0,|0|0,|0|0,|0|0,|0|29932,|0|0,|0|0,\n"
              "abcdefg|0|0,hijklmnop|0|0,|2|0,|222|0,|333333333|0,|0|444.555,|0|27293,|35000|0,|1|0,\n");
}

TEST(JetFileTest, ABrokenFileIsAFailureAndNeverASilentEnd) {
    const test::TempFolder folder;
    const std::filesystem::path path = folder / "c.mdb";
    const std::string odd = test::ReadAll(kLegacy / "odd-jet3.mdb");
    const std::string sample = test::ReadAll(kLegacy / "sample-jet3.mdb");
    struct Case {
        std::string Bytes;
        const char* Complaint;
    };
    const Case cases[] = {
        {"", "c.mdb is no Jet database"},
        {std::string(4096, '\0'), "c.mdb is no Jet database"},
        {odd.substr(0, 104405), "c.mdb is cut short: its last page is not whole"},
        {odd.substr(0, 51 * 2048), "c.mdb is damaged or cut short: table Assets should have 504 rows and gives "},
        {sample.substr(0, 37 * 2048), "c.mdb is damaged or cut short: the columns of table Assets cannot be read"},
        {sample.substr(0, 2048), "c.mdb is damaged or cut short: the definition of table MSysObjects cannot be read"},
    };
    for (const Case& bad : cases) {
        test::WriteAll(path, bad.Bytes);
        EXPECT_THAT(ReadFailure(path, "Assets"), StartsWith(bad.Complaint));
    }
    EXPECT_THAT(ReadFailure(kLegacy / "password.mdb", "Assets"), HasSubstr("has a database password;"));
    EXPECT_THAT(ReadFailure(kLegacy / "encrypted.mdb", "Assets"), HasSubstr("has encoded pages;"));
    EXPECT_EQ(ReadFailure(kLegacy / "not-a-company.mdb", "Assets"), "not-a-company.mdb has no table Assets");
    EXPECT_NE(ReadFailure(folder / "none.mdb", "Assets"), "");
    EXPECT_NE(ReadFailure(folder.Path(), "Assets"), "");
    EXPECT_FALSE(IsJetFile(folder.Path()));
    EXPECT_TRUE(IsJetFile(kLegacy / "encrypted.mdb"));
}

// The list of pages of the table begins at a number so great that it starts from 0 again: libmdb goes round for ever.
TEST(JetFileTest, APageMapThatGoesRoundIsRefused) {
    const test::TempFolder folder;
    std::string bytes = test::ReadAll(kLegacy / "sample-jet3.mdb");
    const auto number = [&](std::size_t at, int width) {
        std::size_t value = 0;
        for (int i = width; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
        return value;
    };
    constexpr std::size_t kPage = 2048;
    const std::size_t definition = number(bytes.find("000101") / kPage * kPage + 4, 4) * kPage;
    const std::size_t row = number(definition + 35, 1);
    const std::size_t page = number(definition + 36, 3) * kPage;
    const std::size_t map = page + (number(page + 10 + 2 * row, 2) & 0x1FFF);
    // A bitmap that begins eight pages before the end, and its tenth bit.
    bytes.replace(map, 7, std::string("\0\xF8\xFF\xFF\xFF\0\2", 7));
    test::WriteAll(folder / "c.mdb", bytes);
    EXPECT_EQ(ReadFailure(folder / "c.mdb", "Assets"), "c.mdb is damaged: the page map of table Assets cannot be right");
}

TEST(JetFileTest, WhatTheReceiverThrowsEndsTheReading) {
    CollectedRows rows;
    rows.OnRow = [](auto) { throw PlatformError(Failure::DiskFull); };
    EXPECT_EQ(test::FailureOf([&] { ReadJetTables(kLegacy / "odd.mdb", std::array<std::string_view, 1>{"Assets"}, rows); }),
              Failure::DiskFull);
    EXPECT_EQ(rows.Count, 1);
}

TEST(JetTextTest, PlainAndCompressedTextBecomesWindows1252) {
    struct Case {
        std::string_view Stored;
        std::string_view Text;
        char32_t NotInText;
    };
    using namespace std::string_view_literals;
    const Case cases[] = {
        {""sv, ""sv, 0},
        {"\xFF\xFE"sv, ""sv, 0},
        {"A\0\xAC\x20"sv, "A\x80"sv, 0},
        // One byte a character is the character's number: 80 is no Euro sign.
        {"\xFF\xFE"
         "A\xE9\x80"sv,
         "A\xE9?"sv, 0x80},
        {"\xFF\xFE"
         "ab\0\xAC\x20\x13\x20\0c"sv,
         "ab\x80\x96"
         "c"sv,
         0},
        {"\x3D\xD8\x00\xDE!\0"sv, "?!"sv, 0x1F600},
        {"\x00\xDE"sv, "?"sv, 0xFFFD},
        {"A\0B"sv, "A?"sv, 0xFFFD},
    };
    for (const Case& one : cases) {
        std::string text = "left over";
        EXPECT_EQ(DecodeJet4Text(one.Stored, text), one.NotInText);
        EXPECT_EQ(text, one.Text);
    }
}

}  // namespace
}  // namespace tallymar::mdb
