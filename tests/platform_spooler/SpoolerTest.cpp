#include <signal.h>
#include <sys/resource.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/spooler/PrintQueues.h"
#include "platform/spooler/Spooler.h"
#include "support/Failures.h"
#include "support/PrivateCupsd.h"

namespace tallymar {
namespace {

// Every byte there is, more of them than a socket or a pipe takes at once.
std::string EveryByte() {
    std::string bytes;
    while (bytes.size() < 600000) {
        for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    }
    return bytes;
}

void Send(const PrintDestination& to, const std::vector<std::string>& documents) {
    Spooler spooler(to);
    for (const std::string& document : documents) {
        spooler.StartDocument("245621.JOB");
        spooler.Write(document.substr(0, document.size() / 2));
        spooler.Write(document.substr(document.size() / 2));
        spooler.EndDocument();
    }
    spooler.Close();
}

TEST(Spooler, APortGetsEachDocumentAsAConnectionOfItsOwnByteForByte) {
    test::PortListener printer;
    Send(PrintDestination::Port("127.0.0.1", printer.Port()), {EveryByte(), "second"});
    EXPECT_EQ(printer.Stop(), (std::vector<std::string>{EveryByte(), "second"}));
}

TEST(Spooler, AFileGetsThemOneBehindTheOtherAndOnlyWhenAllAreThere) {
    const test::TempFolder folder;
    test::WriteAll(folder / "page.prn", "earlier");
    {
        Spooler givenUp(PrintDestination::File(folder / "page.prn"));
        givenUp.StartDocument("a");
        givenUp.Write("half");
    }
    EXPECT_EQ(test::ReadAll(folder / "page.prn"), "earlier");
    Send(PrintDestination::File(folder / "page.prn"), {EveryByte(), "second"});
    EXPECT_EQ(test::ReadAll(folder / "page.prn"), EveryByte() + "second");
}

TEST(Spooler, AFileThatAWriteHasFailedForIsNotPutInPlace) {
    const test::TempFolder folder;
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = signal(SIGXFSZ, SIG_IGN);
    const rlimit full{100000, before.rlim_max};
    Spooler spooler(PrintDestination::File(folder / "page.prn"));
    spooler.StartDocument("first");
    setrlimit(RLIMIT_FSIZE, &full);
    EXPECT_NE(test::TextOf([&] { spooler.Write(EveryByte()); }), "");
    setrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, handler);
    spooler.StartDocument("second");
    spooler.Write("second");
    spooler.EndDocument();
    EXPECT_NE(test::TextOf([&] { spooler.Close(); }), "");
    EXPECT_FALSE(std::filesystem::exists(folder / "page.prn"));
}

TEST(Spooler, ADestinationThatTookNoDocumentIsNotTriedAgain) {
    const test::TempFolder folder;
    Spooler spooler(PrintDestination::File(folder / "none/page.prn"));
    const auto start = [&] { spooler.StartDocument("font"); };
    const std::string first = test::TextOf(start);
    std::filesystem::create_directory(folder / "none");
    EXPECT_EQ(test::TextOf(start), first);
    EXPECT_NE(first, "");
}

TEST(Spooler, APrinterThatCannotBeReachedIsToldInOneLine) {
    int port = 0;
    {
        const test::PortListener gone;
        port = gone.Port();
    }
    const auto failure = test::ErrorOf([&] { Send(PrintDestination::Port("127.0.0.1", port), {"page"}); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->what(),
              "The printer at 127.0.0.1, port " + std::to_string(port) + ", cannot be reached: Connection refused");
    EXPECT_EQ(test::TextOf([] { const Spooler none{PrintDestination()}; }),
              "No printer has been chosen: choose one in Printer Setup");
}

TEST(Spooler, AQueueOfThePrintServiceGetsJobsByteForByte) {
    const test::PrivateCupsd service;
    if (!service.Missing().empty()) GTEST_SKIP() << service.Missing();
    Send(PrintDestination::Queue("raw"), {EveryByte(), "\x1B&l0O\f"});
    {
        Spooler givenUp(PrintDestination::Queue("raw"));
        givenUp.StartDocument("half");
        givenUp.Write("half a page");
    }
    Spooler pdf(PrintDestination::Queue("pdf"));
    pdf.StartDocument("page", Spooler::Format::Pdf);
    pdf.Write("%PDF-1.4\n%%EOF\n");
    pdf.EndDocument();
    EXPECT_EQ(service.Jobs(3), (std::vector<std::string>{EveryByte(), "\x1B&l0O\f", "%PDF-1.4\n%%EOF\n"}));

    EXPECT_TRUE(IsPrintQueue("raw"));
    EXPECT_FALSE(IsPrintQueue("none"));
    EXPECT_TRUE(TakesPcl(AbilitiesOf("raw")));
    EXPECT_FALSE(TakesPcl(AbilitiesOf("pdf")));
    EXPECT_THAT(test::TextOf([] { Send(PrintDestination::Queue("none"), {"page"}); }),
                testing::StartsWith("The printer \"none\" did not take the print: "));
    EXPECT_THAT(test::TextOf([] { AbilitiesOf("none"); }), testing::HasSubstr("does not exist"));
}

TEST(PrintQueues, APclPrinterIsKnownByItsLanguages) {
    const auto takes = [](const char* id, const char* name, const char* format = "application/octet-stream") {
        return TakesPcl({id, name, {format}});
    };
    EXPECT_TRUE(takes("MFG:HP;CMD:PJL,PCL,POSTSCRIPT;MDL:4;", ""));
    EXPECT_TRUE(takes("MFG:Some;COMMAND SET: PCL5e ;", "PDF"));
    EXPECT_FALSE(takes("MFG:Some;CMD:PJL,PCLXL,URF;", "Laser PCL"));
    EXPECT_FALSE(takes("MFG:Some;CMD:PCL3GUI;", ""));
    EXPECT_TRUE(takes("", "Local Raw Printer"));
    EXPECT_TRUE(takes("", "Generic PCL 5e Printer"));
    EXPECT_TRUE(takes("", "Laser", "application/vnd.hp-PCL"));
    EXPECT_FALSE(takes("", "Everywhere Drawing Printer", "application/pdf"));
    EXPECT_FALSE(takes(";;;CMD", ""));
}

TEST(PrintDestination, IsReadAsItIsTyped) {
    const auto read = [](const char* text) {
        return PrintDestination::Parse(text, [](const auto& name) { return name == "HP.4"; });
    };
    EXPECT_EQ(read("socket://prt1"), PrintDestination::Port("prt1", 9100));
    EXPECT_EQ(read("socket://10.0.0.7:9101/").Text(), "socket://10.0.0.7:9101");
    EXPECT_EQ(read("socket://[::1]:9102").Text(), "socket://[::1]:9102");
    EXPECT_EQ(read("HP.4"), PrintDestination::Queue("HP.4"));
    EXPECT_EQ(read("page.prn"), PrintDestination::File("page.prn"));
    EXPECT_EQ(read("./HP.4").To(), PrintDestination::Kind::File);
    for (const char* wrong :
         {"", "HP5", "socket://", "socket://a b", "socket://a:0", "socket://a:65536", "socket://a:x", "socket://[::1"}) {
        EXPECT_EQ(test::FailureOf([&] { read(wrong); }), Failure::InvalidCall) << wrong;
    }
}

}  // namespace
}  // namespace tallymar
