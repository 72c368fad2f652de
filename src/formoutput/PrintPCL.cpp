#include "formoutput/PrintPCL.h"

#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSoftFontDocument = "Tax Font Download";

}  // namespace

std::string SendRawFile(Spooler& spooler, const fs::path& file, const std::string& documentName, std::string_view extra) {
    try {
        const std::string contents = ReadWholeFile(file);
        spooler.StartDocument(documentName);
        spooler.Write(contents);
        if (!extra.empty()) spooler.Write(extra);
        spooler.EndDocument();
        return {};
    } catch (const PlatformError& failure) {  // COMPAT: the command goes on
        return failure.what();
    }
}

std::string PagePrint::OverflowText() const {
    if (!Overflows()) return {};
    return "The page needs " + std::to_string(Length) + " bytes and a print takes " + std::to_string(PrintBuffer::kSize) +
           ": its last lines would be missing. Print it as PDF";
}

PagePrint PreparePrint(const AppPath& paths, const fs::path& folder, const FormPageInfo& page) {
    PagePrint print;
    print.Code = page.Code;
    print.ValuesName = PrintedFileName(page);
    print.Values = FindValues(folder, print.ValuesName);
    print.Blank = paths.Find("Laser/" + print.Code + ".HP");
    print.Length = PrintedValues(print.Values).size();
    return print;
}

std::string PrintPage(Spooler& spooler, const PagePrint& print, PrintBuffer& buffer, Prompts& prompts) {
    try {
        buffer.Fill(print.Values);
    } catch (const PlatformError& failure) {
        prompts.Message("ERROR " + std::to_string(failure.Number()) + " Reading " + print.ValuesName, print.Title(),
                        MessageKind::Error);
    }
    const std::string problem = print.Blank.empty() ? PlatformError::About(Failure::FileNotFound, print.BlankName()).what()
                                                    : SendRawFile(spooler, print.Blank, print.DocumentName(), buffer.Bytes());
    buffer.Clear();
    return problem;
}

std::string DownloadSoftFonts(Spooler& spooler, const AppPath& paths) {
    std::string first;
    for (const std::string_view font : kSoftFonts) {
        const fs::path file = paths.Find(font);
        const std::string problem = file.empty() ? PlatformError::About(Failure::FileNotFound, font).what()
                                                 : SendRawFile(spooler, file, std::string(kSoftFontDocument), {});
        if (first.empty()) first = problem;
    }
    return first;
}

std::string TestPage(std::string_view destination) {
    // Letter upright, 66 lines of 6 to the inch, Courier of 10 characters to the inch: as the blanks leave the printer.
    std::string page = "\x1B&l0O\x1B&l8c66p\x1B&l0e66f0L\x1B&a0L\x1B(s0p10h12v0s0b3T\x1B&a6r8C";
    page.append("Tallymar prints form pages here.\r\n\r\n        ").append(destination).append("\r\n\f");
    return page;
}

}  // namespace tallymar
