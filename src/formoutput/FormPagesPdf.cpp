#include "formoutput/FormPagesPdf.h"

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "formoutput/FormBlanks.h"
#include "formoutput/PrintBuffer.h"
#include "platform/page/FormPdf.h"
#include "platform/pcl/PclReader.h"
#include "platform/runtime/FileFailure.h"
#include "platform/runtime/FileReplacement.h"
#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> FilesInFolder(const FormPageInfo& page, const fs::path& folder) {
    std::vector<std::string> files;
    for (int sequence = 0; sequence <= LastSequence(page); ++sequence) {
        const std::string name = ValuesFileName(page, sequence);
        std::error_code error;
        if (fs::exists(FindValues(folder, name), error)) files.push_back(name);
    }
    return files;
}

}  // namespace

std::vector<std::string> FormPageFiles(const fs::path& folder, const std::vector<std::string>& codes) {
    std::vector<std::string> files;
    if (codes.empty()) {
        for (const FormPageInfo& page : FormPages()) {
            const std::vector<std::string> found = FilesInFolder(page, folder);
            files.insert(files.end(), found.begin(), found.end());
        }
        if (files.empty()) throw PlatformError(Failure::FileNotFound, "There are no form pages in " + FromUtf8(folder.string()));
        return files;
    }
    for (const std::string& code : codes) {
        const FormPageFile file = FormPageFileOf(code);
        // A form of a page for each asset by its code alone: all of them.
        const bool isWhole = file.Page->PageForEachAsset && file.Page->Code == code;
        std::vector<std::string> found = isWhole ? FilesInFolder(*file.Page, folder) : std::vector{file.Name()};
        if (found.empty()) found = {file.Name()};
        for (const std::string& name : found) {
            std::error_code error;
            if (!fs::exists(FindValues(folder, name), error)) {
                throw PlatformError::About(Failure::FileNotFound, FromUtf8((folder / name).string()));
            }
            files.push_back(name);
        }
    }
    return files;
}

namespace {

// The PDF core writes files: this one is read back and goes at once.
std::string PdfOf(const std::vector<FormSheet>& sheets, std::string_view title) {
    std::string folder = (fs::temp_directory_path() / "tallymar-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) throw FileFailure(errno, folder);
    const auto remove = [](const std::string* path) {
        std::error_code ignored;
        fs::remove_all(*path, ignored);
    };
    const std::unique_ptr<const std::string, decltype(remove)> removing(&folder, remove);
    const fs::path path = fs::path(folder) / "pages.pdf";
    FileReplacement file(path);
    WriteFormPdf(sheets, title, file);
    file.Commit();
    return ReadWholeFile(path);
}

}  // namespace

std::string FormPagesPdf(const AppPath& paths, const fs::path& folder, const std::vector<std::string>& files) {
    const SoftFonts fonts = LoadSoftFonts(paths);
    std::vector<FormSheet> sheets;
    for (const std::string& name : files) {
        const std::string label = fs::path(name).stem().string();
        const std::string stream = BlankStream(paths, *FormPageFileOf(label).Page) + PrintedValues(FindValues(folder, name));
        sheets.push_back({label, ReadPcl(stream, fonts)});
    }
    const bool isOne = files.size() == 1;
    return PdfOf(sheets, isOne ? FormPageFileOf(sheets.front().Label).Page->Title : "Form pages");
}

void SendAsPdf(const PrintDestination& to, const AppPath& paths, const fs::path& folder, const PagePrint& print) {
    const std::string pdf = FormPagesPdf(paths, folder, {print.ValuesName});
    Spooler spooler(to);
    spooler.StartDocument(print.DocumentName(), Spooler::Format::Pdf);
    spooler.Write(pdf);
    spooler.EndDocument();
    spooler.Close();
}

void SendTestPage(const PrintTarget& target) {
    RequireTakesPages(target);
    const std::string_view title = "Tallymar test";
    const std::string page = TestPage(target.Says);
    Spooler spooler(target.To);
    spooler.StartDocument(std::string(title), target.TakesPcl ? Spooler::Format::Raw : Spooler::Format::Pdf);
    spooler.Write(target.TakesPcl ? page : PdfOf({{"test", ReadPcl(page, {})}}, title));
    spooler.EndDocument();
    spooler.Close();
}

}  // namespace tallymar
