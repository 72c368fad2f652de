#include "formoutput/FormFiles.h"

#include "formoutput/FormPages.h"
#include "formoutput/PrintPCL.h"
#include "formoutput/PrinterSettings.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

void RequireNoFormFile(const fs::path& output, const AppPath& paths, const fs::path& folder) {
    const auto require = [&](const fs::path& file) {
        if (!IsSameFile(output, file)) return;
        throw PlatformError(Failure::PathAccess,
                            FromUtf8(output.string()) + " is one of the files that forms are made of; name another file");
    };
    for (const FormPageInfo& page : FormPages()) {
        for (int sequence = 0; sequence <= LastSequence(page); ++sequence) {
            require(FindValues(folder, ValuesFileName(page, sequence)));
        }
        for (const char* extension : {".HP", ".FPF"}) require(paths.Find("Laser/" + std::string(page.Code) + extension));
    }
    for (const std::string_view font : kSoftFonts) require(paths.Find(font));
    require(PrinterSettingsFile(paths.Folder()));
}

}  // namespace tallymar
