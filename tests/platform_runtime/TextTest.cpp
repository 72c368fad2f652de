#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/runtime/Windows1252.h"

namespace tallymar {
namespace {

TEST(CodePage, EveryByteSurvivesThroughUtf8) {
    std::set<std::string> seen;
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        const std::string utf8 = ToUtf8(one);
        bool lossy = false;
        EXPECT_EQ(FromUtf8(utf8, &lossy), one) << byte;
        EXPECT_FALSE(lossy);
        EXPECT_TRUE(seen.insert(utf8).second) << byte;
        EXPECT_EQ(utf8 == one, byte < 128);
        all += one;
    }
    // After every length of plain text, so that the stretches looked at eight at a time end everywhere.
    for (std::size_t lead = 0; lead < 20; ++lead) {
        const std::string text = std::string(lead, 'x') + all;
        EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
    }
}

TEST(CodePage, KnownCharacters) {
    EXPECT_EQ(ToUtf8("\x80 \x92 \xE9 \xFF"), "\u20AC \u2019 \u00E9 \u00FF");
    EXPECT_EQ(FromUtf8("\u0160\u0161\u0178\u017D"), "\x8A\x9A\x9F\x8E");
    EXPECT_TRUE(IsInWindows1252(U'\u2122'));
    EXPECT_TRUE(IsInWindows1252(0x81));
    EXPECT_FALSE(IsInWindows1252(0x80));  // a control that the code page uses the place of
    EXPECT_FALSE(IsInWindows1252(U'\u0141'));
}

TEST(CodePage, WhatCannotBeHeldIsAQuestionMark) {
    const std::pair<const char*, const char*> table[] = {
        {"a\u0141b", "a?b"},     {"\U0001F600!", "?!"},        {"a\xC3", "a?"},     {"\xE9t\xE9", "?t?"},  {"\xC0\xAF", "??"},
        {"\xED\xA0\x80", "???"}, {"\xF4\x90\x80\x80", "????"}, {"\xE2\x82x", "?x"}, {"\xF0\x9F\x98", "?"}, {"\x80", "?"}};
    for (const auto& [utf8, expected] : table) {
        bool lossy = false;
        EXPECT_EQ(FromUtf8(utf8, &lossy), expected);
        EXPECT_TRUE(lossy);
    }
}

TEST(CodePage, CaseAndTrimming) {
    EXPECT_EQ(UCase("stra\xDF"
                    "e \xE9\xFF\x9A\x9C\x9E\xF7 1z"),
              "STRA\xDF"
              "E \xC9\x9F\x8A\x8C\x8E\xF7 1Z");
    EXPECT_EQ(LCase("\xC0\xDE\xD7\x9F A"), "\xE0\xFE\xD7\xFF a");
    int pairs = 0;
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        EXPECT_EQ(ToUpper(ToUpper(c)), ToUpper(c));
        EXPECT_EQ(ToLower(ToUpper(c)), ToLower(c));
        pairs += ToUpper(c) != c;
    }
    EXPECT_EQ(pairs, 26 + 30 + 4);
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(RTrim("  a\t "), "  a\t");
    EXPECT_EQ(LTrim("   "), "");
}

}  // namespace
}  // namespace tallymar
