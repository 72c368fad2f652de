#include "formoutput/PrintPCL.h"

#include "formoutput/FormBlanks.h"
#include "platform/pcl/PclWriter.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSoftFontDocument = "Tax Font Download";

}  // namespace

std::string SendRawFile(Spooler& spooler, const fs::path& file, const std::string& documentName, std::string_view extra) {
    try {
        const std::string contents = ReadPrinterFile(file);
        spooler.StartDocument(documentName);
        spooler.Write(contents);
        if (!extra.empty()) spooler.Write(extra);
        spooler.EndDocument();
        return {};
    } catch (const PlatformError& failure) {  // COMPAT: the command goes on
        return failure.what();
    }
}

std::string PagePrint::Warning() const {
    if (!Unreadable.empty()) return Unreadable;
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
    try {
        print.Length = PrintedValues(print.Values).size();
    } catch (const PlatformError& failure) {
        print.Unreadable = failure.what();
    }
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
    PclWriter blank;
    blank.BeginPage();
    blank.EndPage();
    std::string page = blank.Bytes() + "\r\n\r\n\r\n\r\n\r\n\r\n        ";
    page.append("Tallymar prints form pages here.\r\n\r\n        ").append(destination).append("\r\n\f");
    return page;
}

}  // namespace tallymar
