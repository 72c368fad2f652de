#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/AppPath.h"

namespace tallymar {

// One page of a form, found by its code: CODE.LDT holds its values, Laser/CODE.HP its blank and Laser/CODE.FPF its fields.
struct FormPageInfo {
    std::string_view Code;   // "245621"
    std::string_view Title;  // "Form 4562, page 1"
    std::string_view Next;   // code of the page that follows; the last one's is its own
    bool PageForEachAsset = false;
};

// In the order in which a return has them.
std::span<const FormPageInfo> FormPages();
// Failure::InvalidCall for a code that no page has.
const FormPageInfo& FormPageOf(std::string_view code);

// A page's values file, by its code and the sequence of the exchanged asset; the sequence goes for nothing with other forms. A
// sequence shows its last two digits.
std::string ValuesFileName(const FormPageInfo& page, int sequence);
// The sequences that its files may have are 0 to this one.
int LastSequence(const FormPageInfo& page);
// COMPAT: a form of one page for each asset is printed, and saved, as its first asset's file, whichever one is shown.
inline std::string PrintedFileName(const FormPageInfo& page) {
    return ValuesFileName(page, 1);
}

// A values file as a user names it: the page's code, of a form of one page for each asset with or without its two digits.
struct FormPageFile {
    const FormPageInfo* Page;
    int Sequence = 1;
    std::string Name() const { return ValuesFileName(*Page, Sequence); }
};
// Failure::InvalidCall for a code that no page has.
FormPageFile FormPageFileOf(std::string_view code);

// How many values files of the page lie in the folder.
int CountValuesFiles(const FormPageInfo& page, const std::filesystem::path& folder);

// A file of that name in the folder, in any case of its letters; where there is none, the place at which it would be.
std::filesystem::path FindValues(const std::filesystem::path& folder, const std::string& name);
// The page's files that are delivered or the firm's own: "HP" and "FPF". FileNotFound, naming it, when there is none.
std::filesystem::path FindLaserFile(const AppPath& paths, std::string_view code, std::string_view extension);

// Where the viewer stands among the pages of a form, and which of the two page commands are on.
class FormPlace {
 public:
    // At a page as a form's window opens it. `files` is the count of the page's values files.
    FormPlace(const FormPageInfo& page, int files);

    const FormPageInfo& Page() const { return *page_; }
    int PageSequence() const { return pageSequence_; }
    std::string FileName() const { return ValuesFileName(*page_, pageSequence_); }
    bool NextEnabled() const { return nextEnabled_; }
    bool PreviousEnabled() const { return previousEnabled_; }

    void Next();
    void Previous();

 private:
    const FormPageInfo* page_;
    int pageSequence_ = 1;
    int files_;
    bool nextEnabled_;
    bool previousEnabled_ = false;
};

}  // namespace tallymar
