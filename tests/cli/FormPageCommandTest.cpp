#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "CliRunner.h"
#include "support/PortListener.h"
#include "support/PrivateCupsd.h"

namespace tallymar::test {
namespace {

const std::string kDelivered = TALLYMAR_BINARY_DIR "/share/tallymar/";
constexpr const char* kFonts[] = {"06m", "08b", "08m", "10b", "12b", "14b", "lin", "ocr"};

// The page as a print sends it, by the rules of the page file alone.
std::string Printed(const std::string& page) {
    std::istringstream lines(page.substr(0, page.find('\x1A')));
    std::string printed;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        line.pop_back();  // CR
        printed += (line.size() > 2 ? line.substr(2) : line) + "\r\n";
    }
    return printed + "\f";
}

struct FormPageCommands : testing::Test {
    FormPageCommands() {
        cli.Good("new c.mdb --name Boatyard");
        cli.Good("company c.mdb --set FYEFederal=2002-12-31");
        cli.Good("load c.mdb '" TALLYMAR_SOURCE_DIR "/tests/irsforms/assets.csv'");
        cli.Good("form 4562 c.mdb --book 1 --type 1065 --division SMALL --out pages");
        print = ReadText(kDelivered + "Laser/245621.HP") + Printed(cli.Read("pages/245621.LDT"));
    }

    CliRunner cli;
    std::string print;
};

TEST_F(FormPageCommands, APrintIsTheBlankAndTheValuesByteForByteWhereverItGoes) {
    ASSERT_GT(print.size(), 5000U);
    cli.Good("form-print pages 245621 --to ./page.prn");
    EXPECT_EQ(cli.Read("page.prn"), print);
    PortListener printer;
    cli.Good("form-print pages 245621 --to " + printer.Address());
    cli.Good("soft-fonts --to " + printer.Address());
    cli.Good("soft-fonts --to fonts.prn");
    std::vector<std::string> jobs = {print};
    std::string all;
    for (const char* font : kFonts) all += jobs.emplace_back(ReadText(kDelivered + "fonts/neltx" + font + ".fnt"));
    EXPECT_EQ(printer.Stop(), jobs);
    EXPECT_EQ(cli.Read("fonts.prn"), all);
    EXPECT_GT(all.size(), 50000U);
    EXPECT_EQ(cli.Bad("form-print pages 245621 --to " + printer.Address()), "tallymar-cli: The printer at 127.0.0.1, port " +
                                                                                std::to_string(printer.Port()) +
                                                                                ", cannot be reached: Connection refused\n");
}

TEST_F(FormPageCommands, AQueueGetsThePrintAndOneWithoutPclThePageAsPdf) {
    const PrivateCupsd service;
    if (!service.Missing().empty()) GTEST_SKIP() << service.Missing();
    cli.Good("form-print pages 245621 --to raw");
    EXPECT_THAT(cli.Good("form-print pages 245621 --to pdf"), testing::HasSubstr("is no PCL printer"));
    EXPECT_THAT(cli.Bad("soft-fonts --to pdf"), testing::HasSubstr("no use for soft fonts"));
    EXPECT_THAT(cli.Bad("form-print pages 245621 --to other"), testing::HasSubstr("There is no printer \"other\""));
    const std::vector<std::string> jobs = service.Jobs(2);
    ASSERT_EQ(jobs.size(), 2U);
    EXPECT_EQ(jobs[0], print);
    EXPECT_EQ(jobs[1].substr(0, 8), "%PDF-1.4");
}

TEST_F(FormPageCommands, AQueueThatHandsOnWhatItGetsGetsNoPdf) {
    const PrivateCupsd service;
    if (!service.Missing().empty()) GTEST_SKIP() << service.Missing();
    for (const char* command : {"form-print pages 245621 --to postscript", "printer --use postscript --raw-to printer --test"}) {
        EXPECT_THAT(cli.Bad(command), testing::HasSubstr("prints neither PCL nor PDF")) << command;
    }
    cli.Good("printer --use raw --test");
    const std::vector<std::string> jobs = service.Jobs(1);
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_THAT(jobs[0], testing::HasSubstr("Tallymar prints form pages here."));
    EXPECT_THAT(cli.Good("printer"), testing::HasSubstr("Form pages and soft fonts go to: raw\n"));
    EXPECT_THAT(cli.Bad("printer --use other"), testing::HasSubstr("This computer has no printer \"other\""));
}

TEST_F(FormPageCommands, APrinterThatIsChosenIsKept) {
    PortListener printer;
    const std::string address = printer.Address();
    EXPECT_THAT(cli.Good("printer --raw-to " + address + " --test"), testing::HasSubstr("A test page was sent to " + address));
    EXPECT_EQ(printer.Stop().size(), 1U);
    cli.Bad("printer --raw-to nothing");
    EXPECT_THAT(cli.Good("printer"), testing::HasSubstr("go to: " + address + "\n"));
    cli.Good("printer --raw-to out.prn");
    EXPECT_THAT(cli.Good("printer"), testing::HasSubstr("go to: " + (cli.Folder() / "out.prn").string() + "\n"));
    EXPECT_THAT(cli.Bad("form-print pages 245621 --to pages/245622.LDT"), testing::HasSubstr("name another file"));
    EXPECT_THAT(cli.Bad("soft-fonts --to '" + kDelivered + "fonts/neltx06m.fnt'"), testing::HasSubstr("name another file"));
}

TEST_F(FormPageCommands, TheTextOfThePdfIsThatOfThePages) {
    cli.Good("form-pdf pages --out all.pdf");
    cli.Good("form-pdf pages --page 245622 --out - ");
    ASSERT_EQ(
        std::system(("pdftotext -raw '" + (cli.Folder() / "all.pdf").string() + "' '" + (cli.Folder() / "all.txt").string() + "'")
                        .c_str()),
        0);
    const std::string text = cli.Read("all.txt");
    int values = 0;
    for (const auto& page : std::filesystem::directory_iterator(cli.Folder() / "pages")) {
        if (page.path().extension() != ".LDT") continue;
        std::istringstream words(Printed(ReadText(page.path())));
        for (std::string word; words >> word; ++values) EXPECT_THAT(text, testing::HasSubstr(word)) << page.path();
    }
    EXPECT_GT(values, 50);
    EXPECT_THAT(cli.Bad("form-pdf pages --page 245626 --out x.pdf"), testing::HasSubstr("File not found: pages/245626.LDT"));
    EXPECT_THAT(cli.Bad("form-pdf pages --out pages/245621.LDT"),
                testing::HasSubstr("is one of the files that forms are made of"));
    EXPECT_THAT(cli.Bad("form-pdf . --out x.pdf"), testing::HasSubstr("There are no form pages in ."));
}

TEST_F(FormPageCommands, AFieldIsSetInThePageAndNothingElseChanges) {
    const std::string before = cli.Read("pages/245621.LDT");
    EXPECT_THAT(cli.Good("form-fields pages 245621"), testing::HasSubstr("Boatyard"));
    cli.Bad("form-set pages 245621 5=1x");
    cli.Bad("form-set pages 245621 5=12345678901234567890");
    cli.Bad("form-set pages 245621 4=9 99999=1");
    EXPECT_EQ(cli.Read("pages/245621.LDT"), before);
    cli.Good("form-set pages 245621 4=1120S 5=77.50");
    EXPECT_THAT(cli.Good("form-fields pages 245621"), testing::HasSubstr("  77.50\n"));
    const std::string after = cli.Read("pages/245621.LDT");
    EXPECT_EQ(std::count(after.begin(), after.end(), '\n'), std::count(before.begin(), before.end(), '\n'));
    cli.Good("form-set pages 245623 1=New");  // a page that no form has written
    EXPECT_EQ(cli.Read("pages/245623.LDT").substr(0, 11), "\\\\245623 \r\n");
}

TEST_F(FormPageCommands, APageThatIsTooLongIsToldBeforeAnythingIsSent) {
    std::string page = "\\\\245623 \r\n";
    for (int line = 0; line < 60; ++line) page += "  " + std::string(78, 'v') + "\r\n";
    cli.Write("pages/245623.LDT", page + "\x1A");
    EXPECT_THAT(cli.Bad("form-print pages 245623 --to ./page.prn"), testing::HasSubstr("245623.LDT: The page needs 4801 bytes"));
    EXPECT_FALSE(std::filesystem::exists(cli.Folder() / "page.prn"));
    const CliResult cut = cli("form-print pages 245623 --to ./page.prn --cut-off");
    EXPECT_EQ(cut.Error, "ERROR 9 Reading 245623.LDT\n");
    EXPECT_EQ(cli.Read("page.prn"), ReadText(kDelivered + "Laser/245623.HP") + Printed(page).substr(0, 4096));
}

}  // namespace
}  // namespace tallymar::test
