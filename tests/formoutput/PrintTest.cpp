#include <gtest/gtest.h>

#include "formoutput/PrintPCL.h"
#include "formoutput/PrinterSettings.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/PortListener.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

class Prints : public testing::Test {
 protected:
    Prints() {
        std::filesystem::create_directories(folder_ / "Laser");
        std::filesystem::create_directories(folder_ / "fonts");
        test::WriteAll(folder_ / "Laser/245621.HP", kBlank);
    }

    // What a print of the page has sent, and what became of it.
    std::string Print(std::string_view code, std::string* problem = nullptr) {
        Spooler spooler(PrintDestination::File(folder_ / "out.prn"));
        const std::string told = PrintPage(spooler, PreparePrint(paths_, folder_.Path(), FormPageOf(code)), buffer_, prompts_);
        if (problem) *problem = told;
        if (told.empty()) spooler.Close();
        return test::ReadAll(folder_ / "out.prn");
    }

    const std::string kBlank = std::string("\x1B&l0O\x1B&l8c66p\0\xFF", 14) + "blank";
    const test::TempFolder folder_;
    const AppPath paths_ = AppPath::At(folder_.Path(), folder_ / "no-program");
    test::ScriptedPrompts prompts_;
    PrintBuffer buffer_;
};

TEST_F(Prints, TheBlankAndThenTheValuesWithoutFirstLineAndFirstTwoCharacters) {
    test::WriteAll(folder_ / "245621.LDT", "\\\\245621 \r\n \r\n  \r\n   x \r\nabcde\r\n\x1Alost");
    EXPECT_EQ(Print("245621"), kBlank + " \r\n  \r\n x \r\ncde\r\n\f");
    EXPECT_EQ(buffer_.Bytes(), "");
    test::WriteAll(folder_ / "245621.LDT", "");
    EXPECT_EQ(Print("245621"), kBlank + "\f");
    std::filesystem::remove(folder_ / "245621.LDT");
    EXPECT_EQ(Print("245621"), kBlank);
    EXPECT_TRUE(prompts_.Messages.empty());
}

TEST_F(Prints, APageOf4096BytesFitsAndOneMoreIsToldAndPrintedAsFarAsItWent) {
    const std::string fits = std::string(4093, 'v');
    test::WriteAll(folder_ / "245621.LDT", "\\\\245621 \r\n  " + fits + "\r\n\x1A");
    EXPECT_EQ(Print("245621"), kBlank + fits + "\r\n\f");
    EXPECT_FALSE(PreparePrint(paths_, folder_.Path(), FormPageOf("245621")).Overflows());
    test::WriteAll(folder_ / "245621.LDT", "\\\\245621 \r\n  " + fits + "v\r\n\x1A");
    EXPECT_EQ(PreparePrint(paths_, folder_.Path(), FormPageOf("245621")).Warning(),
              "The page needs 4097 bytes and a print takes 4096: its last lines would be missing. Print it as PDF");
    EXPECT_TRUE(prompts_.Messages.empty());
    EXPECT_EQ(Print("245621"), kBlank + fits + "v\r\n");
    ASSERT_EQ(prompts_.Messages.size(), 1U);
    EXPECT_EQ(prompts_.Messages[0].Text, "ERROR 9 Reading 245621.LDT");
    EXPECT_EQ(prompts_.Messages[0].Title, "Print Form 245621");
}

TEST_F(Prints, Form8824IsItsFirstFile) {
    test::WriteAll(folder_ / "Laser/288241.HP", "8824");
    test::WriteAll(folder_ / "28824101.LDT", "x\r\n  first\r\n");
    test::WriteAll(folder_ / "28824102.LDT", "x\r\n  second\r\n");
    EXPECT_EQ(Print("288241"), "8824first\r\n\f");
}

TEST_F(Prints, AFailureOfASendIsSilentAndToldToWhoAsks) {
    std::string problem;
    Print("245622", &problem);
    EXPECT_EQ(problem, "File not found: Laser\\245622.HP");
    EXPECT_TRUE(prompts_.Messages.empty());
    EXPECT_FALSE(std::filesystem::exists(folder_ / "out.prn"));
}

TEST_F(Prints, EightFontsAreEightDocumentsAndAMissingOneStopsNoOther) {
    std::vector<std::string> sent;
    for (const std::string_view font : kSoftFonts) {
        test::WriteAll(folder_ / font, sent.emplace_back("\x1B)s " + std::string(font)));
    }
    test::PortListener printer;
    {
        Spooler spooler(PrintDestination::Port("127.0.0.1", printer.Port()));
        EXPECT_EQ(DownloadSoftFonts(spooler, paths_), "");
        std::filesystem::remove(folder_ / kSoftFonts[2]);
        EXPECT_EQ(DownloadSoftFonts(spooler, paths_), "File not found: fonts/neltx08m.fnt");
    }
    std::vector<std::string> twice = sent;
    sent.erase(sent.begin() + 2);
    twice.insert(twice.end(), sent.begin(), sent.end());
    EXPECT_EQ(printer.Stop(), twice);
}

TEST_F(Prints, ABlankWithoutEndIsNotRead) {
    std::filesystem::resize_file(folder_ / "Laser/245621.HP", std::uintmax_t{1} << 40);
    std::string problem;
    Print("245621", &problem);
    EXPECT_NE(problem.find("245621.HP is no file of a printer's commands: it is too long"), std::string::npos) << problem;
}

TEST_F(Prints, NoFileThatFormsAreMadeOfIsPrintedInto) {
    test::WriteAll(folder_ / "Laser/245621.FPF", "");
    test::WriteAll(folder_ / kSoftFonts[3], "");
    test::WriteAll(folder_ / "28824107.LDT", "");
    std::filesystem::create_hard_link(folder_ / "Laser/245621.HP", folder_ / "other.prn");
    for (const std::string name : {"245622.ldt", "28824107.LDT", "Laser/245621.HP", "Laser/245621.FPF", "other.prn",
                                   "fonts/neltx10b.fnt", "Printer.dat"}) {
        if (name == "245622.ldt") test::WriteAll(folder_ / name, "");
        EXPECT_EQ(test::FailureOf([&] { LookAt(PrintDestination::File(folder_ / name), paths_, folder_.Path()); }),
                  Failure::PathAccess)
            << name;
    }
    EXPECT_TRUE(LookAt(PrintDestination::File(folder_ / "out.prn"), paths_, folder_.Path()).TakesPcl);
}

TEST_F(Prints, WhereTheyGoIsRememberedBesideTheProfile) {
    const auto raw = {PrintDestination(), PrintDestination::Port("prt1", 9101), PrintDestination::File("/tmp/caf\xC3\xA9 1.prn")};
    for (const PrintDestination& to : raw) {
        const PrinterSettings settings{"HP4", to};
        SavePrinterSettings(folder_.Path(), settings);
        EXPECT_EQ(LoadPrinterSettings(folder_.Path()), settings);
    }
    EXPECT_EQ((PrinterSettings{"HP4", {}}).RawTo(), PrintDestination::Queue("HP4"));
    const PrinterSettings quoted{"HP4", PrintDestination::File("/tmp/a\"b")};
    EXPECT_EQ(test::FailureOf([&] { SavePrinterSettings(folder_.Path(), quoted); }), Failure::InvalidCall);
    setenv("CUPS_SERVER", "127.0.0.1:1", 1);  // where no print service is
    test::WriteAll(folder_ / "Printer.dat", "\"HP4\"\r\n\"port\"\r\n\"not a port\"\r\n");
    EXPECT_EQ(LoadPrinterSettings(folder_.Path()), PrinterSettings());
    unsetenv("CUPS_SERVER");
}

}  // namespace
}  // namespace tallymar
