#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "formoutput/FormPages.h"
#include "formoutput/PrintBuffer.h"
#include "platform/prompts/Prompts.h"
#include "platform/spooler/Spooler.h"
#include "store/AppPath.h"

namespace tallymar {

// Sends the file as a document of its own, the extra bytes behind it, byte for byte. A failure ends the document and is no
// failure of the command: what went wrong comes back as one line, empty when all was sent.
std::string SendRawFile(Spooler& spooler, const std::filesystem::path& file, const std::string& documentName,
                        std::string_view extra);

// What a print of a page takes: the blank, as it is delivered or the firm's own, and the values on the disk.
struct PagePrint {
    std::string Code;
    std::string ValuesName;        // COMPAT: of a form of one page for each asset always the first one's
    std::filesystem::path Values;  // may not be there: the blank prints without values
    std::filesystem::path Blank;   // empty when there is none
    std::size_t Length = 0;        // what the values need of PrintBuffer::kSize
    std::string Unreadable;        // why the values cannot be read, in one line; empty when they can or are not there

    std::string Title() const { return "Print Form " + Code; }
    std::string DocumentName() const { return Code + ".JOB"; }
    bool Overflows() const { return Length > PrintBuffer::kSize; }
    // One line for whoever is about to print a page that would lack values; empty when it has them all.
    std::string Warning() const;
    // "Laser\CODE.HP", as users know the blank.
    std::string BlankName() const { return "Laser\\" + Code + ".HP"; }
};
// folder: of the values.
PagePrint PreparePrint(const AppPath& paths, const std::filesystem::path& folder, const FormPageInfo& page);

// Prints the page raw: its blank, then what the buffer holds of its values, which is empty again afterwards. Values that
// cannot be read whole are told by a message, and what was filled is printed. Gives what SendRawFile gives.
std::string PrintPage(Spooler& spooler, const PagePrint& print, PrintBuffer& buffer, Prompts& prompts);

// The eight soft fonts of the blanks, in the order of their download.
inline constexpr std::array<std::string_view, 8> kSoftFonts = {"fonts/neltx06m.fnt", "fonts/neltx08b.fnt", "fonts/neltx08m.fnt",
                                                               "fonts/neltx10b.fnt", "fonts/neltx12b.fnt", "fonts/neltx14b.fnt",
                                                               "fonts/neltxlin.fnt", "fonts/neltxocr.fnt"};
inline constexpr std::string_view kSoftFontsDone = "8 Soft Fonts were downloaded to your laser printer";
inline constexpr std::string_view kSoftFontsCanceled = "Soft Fonts download was canceled";

// Sends the soft fonts, each as a document of its own. Gives what went wrong first, empty when all eight were sent; the others
// are sent all the same.
std::string DownloadSoftFonts(Spooler& spooler, const AppPath& paths);

// A page of a few lines that says where it came from, to see whether a printer prints what it is sent.
std::string TestPage(std::string_view destination);

}  // namespace tallymar
