#include "formoutput/FormBlanks.h"

#include "formoutput/PrintPCL.h"
#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

std::string ReadPrinterFile(const std::filesystem::path& path) {
    if (InputFile(path).Size() > kLongestBlank) {
        throw PlatformError(Failure::PathAccess, FromUtf8(path.string()) + " is no file of a printer's commands: it is too long");
    }
    return ReadWholeFile(path);
}

SoftFonts LoadSoftFonts(const AppPath& paths) {
    SoftFonts fonts;
    for (const std::string_view name : kSoftFonts) {
        try {
            if (const auto file = paths.Find(name); !file.empty()) fonts.Download(ReadPrinterFile(file));
        } catch (const PlatformError&) {
            continue;  // shown in a page font
        }
    }
    return fonts;
}

std::string BlankStream(const AppPath& paths, const FormPageInfo& page) {
    return ReadPrinterFile(FindLaserFile(paths, page.Code, "HP"));
}

}  // namespace tallymar
