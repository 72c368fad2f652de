#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <utility>

#include "formoutput/FormFields.h"
#include "formoutput/FormPages.h"
#include "forms/BlankForm.h"
#include "platform/pcl/PclReader.h"
#include "support/Files.h"

namespace tallymar::tools {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::string FaultsIn(const std::string& directives) {
    std::string all;
    for (const std::string& fault : FaultsOf(ReadBlankForm("p.form", "page P \"Test\"\n" + directives))) all += fault + "\n";
    return all;
}

BlankForm Delivered(std::string_view code) {
    const std::string name = std::string(code) + ".form";
    return ReadBlankForm(name, test::ReadAll(std::filesystem::path(TALLYMAR_SOURCE_DIR "/data/forms") / name));
}

TEST(BlankForm, EveryKindOfFaultIsToldWithItsLine) {
    const std::pair<std::string, std::string> faulty[] = {
        {"text 10 70 08m \"Depreciation and Amortization\"", "p.form:2: \"Amortization\" passes its limit"},
        {"text 10 5 08m \"Depreciation\" max 8", "passes its limit"},
        {"right 10 4 08m \"Depreciation\"", "leaves the page"},
        {"text 68 5 08m \"Below\"", "leaves the page"},
        {"text 10 5 08m \"One\"\ntext 10 6 08m \"Two\"", "p.form:3: \"Two\" lies on \"One\" of line 2"},
        {"field T 10 5 30\ntext 10 20 08m \"On it\"", "p.form:3: \"On\" lies on the field at line 10, column 5"},
        {"vrule 6 9 12\ntext 10 5 08m \"Struck\"", "p.form:3: \"Struck\" lies on what line 2 draws"},
        {"hrule 10.88 2 80\ntext 10 5 08m \"agree\"", "p.form:3: \"agree\" lies on what line 2 draws"},
        {"field $ 10 5 10\nvrule 8 10 11", "p.form:3: what is drawn goes through the field at line 10"},
        {"field $ 10 5 10\nhrule 10.5 2 80", "goes through the field"},
        {"field $ 10 5 10\nshade 9 2 11 80 10", "goes through the field"},
        {"field T 10 5 10\nfield $ 10 14 3", "p.form:3: the field at line 10, column 14 overlaps that of line 2"},
        {"field T 10 75 7", "does not end within column 80"},
        {"field T 68 5 7", "leaves the page"},
        {"text 10 5 24b \"4562A\"", "digits alone"},
        {"repeat 3\nfield $ 10 5 10\nend\nvrule 8 12 13", "p.form:5: what is drawn goes through the field at line 12"},
    };
    for (const auto& [directives, fault] : faulty) EXPECT_THAT(FaultsIn(directives), HasSubstr(fault)) << directives;
}

TEST(BlankForm, RulesOnTheEdgesOfFieldsAndACheckBoxAboutItsOwnAreNoFaults) {
    EXPECT_THAT(FaultsIn("field T 10 5 10\nfield $ 10 15 10\nvrule 15 9 12\nbox 10 5 11 25\ncheck 20 40\nfield T 20 40 1\n"
                         "text 10 3 08m \"1\" max 5\nhrule 30.88 2 80\ntext 30 5 08m \"are\"\npart 12 \"Part I\" \"Title\"\ntext "
                         "12 + 08m \"and *more* of it\""),
                IsEmpty());
}

TEST(BlankForm, WhatIsNoDirectiveIsRefusedWithItsLine) {
    const std::pair<std::string, std::string> refused[] = {
        {"line 10 5", "p.form:2: \"line\" is no directive"},
        {"text 10 5 09m \"x\"", "p.form:2: no font \"09m\""},
        {"text 10 5 08m \"no end", "no closing quote"},
        {"text 10 5 08m \"a *b\"", "no second one"},
        {"text 10 nan 08m \"x\"", "\"nan\" is no column"},
        {"text 10 5 08m \"\xE4\xB8\x80\"", "Windows-1252 does not have"},
        {"field X 10 5 3", "a field is $ or T"},
        {"field $ 10.5 5 3", "must be whole"},
        {"hrule 10 5 80 2 2", "\"2\" is too much"},
        {"repeat 2\nfield $ 10 5 3", "without \"end\""},
    };
    for (const auto& [directives, message] : refused) {
        try {
            ReadBlankForm("p.form", "page P \"Test\"\n" + directives);
            ADD_FAILURE() << directives;
        } catch (const FormFault& fault) {
            EXPECT_THAT(fault.what(), HasSubstr(message)) << directives;
        }
    }
    EXPECT_THROW(ReadBlankForm("p.form", "text 10 5 08m \"x\"\n"), FormFault);
}

// What the viewer edits is where the description puts it: on the page's own lines and columns.
TEST(BlankForm, ThePagesOfTheProgramHaveTheirFieldsInReadingOrder) {
    for (const FormPageInfo& page : FormPages()) {
        const BlankForm form = Delivered(page.Code);
        const std::vector<FormField> fields = ParseFormFields(FieldRecords(form), page.Code);
        ASSERT_EQ(fields.size(), form.Fields.size()) << page.Code;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            EXPECT_EQ(fields[i], (FormField{form.Fields[i].IsAmount, form.Fields[i].Line - 1, form.Fields[i].Column - 1,
                                            form.Fields[i].Width}));
            if (i == 0) continue;
            EXPECT_LT(std::pair(fields[i - 1].Line, fields[i - 1].Column), std::pair(fields[i].Line, fields[i].Column))
                << page.Code;
        }
    }
}

// The golden pages show what the forms write; a value outside the fields would lie on the lines of its blank.
TEST(BlankForm, EveryValueThatAFormWritesLiesInFields) {
    std::map<std::string, std::set<std::pair<int, int>>> cells;
    for (const FormPageInfo& page : FormPages()) {
        for (const BlankField& field : Delivered(page.Code).Fields) {
            for (int i = 0; i < field.Width; ++i) cells[std::string(page.Code)].insert({field.Line, field.Column + i});
        }
    }
    int values = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TALLYMAR_SOURCE_DIR "/tests/irsforms/golden")) {
        std::istringstream golden(test::ReadAll(entry.path()));
        const std::set<std::pair<int, int>>* page = nullptr;
        for (std::string line; std::getline(golden, line);) {
            if (line.starts_with("=====")) {
                std::string code = line.substr(6, line.find('.') - 6);
                if (code.starts_with("288241")) code = "288241";  // a file for each asset
                const auto found = cells.find(code);
                page = line.ends_with(".LDT") && found != cells.end() ? &found->second : nullptr;
                continue;
            }
            const std::size_t colon = line.find(':');
            if (!page || colon == std::string::npos || line.back() != '|') continue;
            const int number = std::stoi(line.substr(0, colon));
            if (number == 1) continue;
            constexpr int kDropped = 2;  // characters of a line that are not printed
            std::string text = line.substr(colon + 1 + kDropped, line.size() - colon - 2 - kDropped);
            if (const auto forWhom = text.find("FOR:"); forWhom != std::string::npos) text.replace(forWhom, 4, 4, ' ');
            for (std::size_t i = 0; i < text.size(); ++i) {
                if (text[i] == ' ') continue;
                ++values;
                EXPECT_TRUE(page->contains({number, static_cast<int>(i) + 1}))
                    << entry.path().filename() << " line " << number << " column " << i + 1 << ": " << text;
            }
        }
    }
    EXPECT_GT(values, 1000);
}

SoftFonts DeliveredFonts() {
    SoftFonts fonts;
    for (const auto& entry : std::filesystem::directory_iterator(TALLYMAR_BINARY_DIR "/share/tallymar/fonts")) {
        fonts.Download(test::ReadAll(entry.path()));
    }
    return fonts;
}

// One sheet that holds what the description says, in a printer that has the soft fonts and in one that has its own Arial alone.
TEST(BlankForm, APrinterDrawsWhatThePageSays) {
    const SoftFonts delivered = DeliveredFonts();
    ASSERT_EQ(delivered.All().size(), 8u);
    constexpr int kLeftOfPage = 75;  // dots that a printer leaves beside the logical page
    constexpr double kQuarterDot = kPclUnitsPerDot / 4.0;
    for (const SoftFonts* fonts : {&delivered, static_cast<const SoftFonts*>(nullptr)}) {
        for (const FormPageInfo& page : FormPages()) {
            const BlankForm form = Delivered(page.Code);
            const PclDrawing drawing = ReadPcl(LaserPage(form), fonts ? *fonts : SoftFonts());
            ASSERT_EQ(drawing.Pages.size(), 1u) << page.Code;
            EXPECT_EQ(drawing.SkippedCommands + drawing.SkippedCharacters, 0) << page.Code;
            EXPECT_FALSE(drawing.CutShort);
            EXPECT_EQ(drawing.MissingFonts == 0, fonts != nullptr);
            std::vector<PclOp> texts;
            std::multiset<std::array<int, 4>> drawn;  // the reader lays shades below what they share their place with
            for (const PclOp& op : drawing.Pages[0].Ops) {
                if (op.Op == PclOp::Kind::Text) {
                    texts.push_back(op);
                } else {
                    drawn.insert({op.X, op.Y, op.Width, op.Height});
                }
            }

            ASSERT_EQ(texts.size(), form.Words.size()) << page.Code;
            for (std::size_t i = 0; i < texts.size(); ++i) {
                const BlankWord& word = form.Words[i];
                const PclOp& op = texts[i];
                EXPECT_EQ(drawing.Text(op), word.Text);
                EXPECT_EQ(op.Grey, word.White ? 255 : 0) << word.Text;
                EXPECT_NEAR(op.X, (word.Left + kLeftOfPage) * kPclUnitsPerDot, kPclUnitsPerDecipoint) << word.Text;
                EXPECT_NEAR(op.Y, word.Baseline * kPclUnitsPerDot, kPclUnitsPerDecipoint) << word.Text;
                // A soft font rounds each advance to a quarter dot.
                EXPECT_NEAR(op.Width, word.Width * kPclUnitsPerDot, kQuarterDot / 2 * static_cast<double>(word.Text.size()) + 1)
                    << word.Text;
            }
            std::multiset<std::array<int, 4>> told;
            for (const BlankRect& rect : form.Rects) {
                told.insert({(rect.Box.Left + kLeftOfPage) * kPclUnitsPerDot, rect.Box.Top * kPclUnitsPerDot,
                             (rect.Box.Right - rect.Box.Left) * kPclUnitsPerDot,
                             (rect.Box.Bottom - rect.Box.Top) * kPclUnitsPerDot});
            }
            EXPECT_EQ(drawn, told) << page.Code;
        }
    }
}

TEST(BlankForm, AFieldRecordIs85BytesWithItsPlaceFromByte50On) {
    const std::string records = FieldRecords(ReadBlankForm("p.form", "page P \"Test\"\nfield $ 14 65 13\n"));
    ASSERT_EQ(records.size(), 2u * 85);
    EXPECT_EQ(records[85 + 2], '$');
    EXPECT_EQ(records.substr(85 + 49, 9), " 13 64 13");
}

TEST(BlankForm, APageBeginsWithItsSetUpAndEndsAtTheTopInAFixedPitch) {
    const std::string page = LaserPage(ReadBlankForm("p.form", "page P \"Test\"\npart 10 \"Part I\" \"Title\"\nhrule 9 2 81\n"));
    EXPECT_TRUE(page.starts_with("\x1B&l0O\x1B&l8c66p\x1B&l0e66f0L"));
    EXPECT_TRUE(page.ends_with("\x1B(19U\x1B(s0p10h12v0s0b3T\x1B&l6D\x1B&a0r0C"));
    EXPECT_EQ(page.find('\f'), std::string::npos);
    EXPECT_LT(page.rfind("*v0o0T"), page.find("Title")) << "white ink stays";
}

}  // namespace
}  // namespace tallymar::tools
