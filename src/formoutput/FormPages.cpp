#include "formoutput/FormPages.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/runtime/FindFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/FormPageFile.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kValuesExtension = ".LDT";

constexpr auto kPages = std::to_array<FormPageInfo>({
    {"245621", "Form 4562, page 1", "245622"},
    {"245622", "Form 4562, page 2", "245623"},
    {"245623", "Form 4562, statement: Section 179 property", "245624"},
    {"245624", "Form 4562, statement: listed property over 50%", "245625"},
    {"245625", "Form 4562, statement: listed property at 50% or less", "245626"},
    {"245626", "Form 4562, statement: amortization", "245626"},
    {"247971", "Form 4797, page 1", "247972"},
    {"247972", "Form 4797, page 2", "247973"},
    {"247973", "Form 4797, continuation", "247974"},
    {"247974", "Form 4797, continuation", "247974"},
    {"2D1", "Schedule D, page 1", "2D2"},
    {"2D2", "Schedule D, page 2", "2D1C1"},
    {"2D1C1", "Schedule D-1, short term", "2D1C2"},
    {"2D1C2", "Schedule D-1, long term", "2D1C2"},
    {"242551", "Form 4255", "242551"},
    {"288241", "Form 8824", "288241", true},
});

bool IsLast(const FormPageInfo& page) {
    return page.Next == page.Code;
}

const FormPageInfo* PageBefore(const FormPageInfo& page) {
    const auto before = std::find_if(kPages.begin(), kPages.end(),
                                     [&](const FormPageInfo& other) { return other.Next == page.Code && !IsLast(other); });
    return before == kPages.end() ? nullptr : &*before;
}

}  // namespace

std::span<const FormPageInfo> FormPages() {
    return kPages;
}

const FormPageInfo& FormPageOf(std::string_view code) {
    const auto page = std::find_if(kPages.begin(), kPages.end(),
                                   [wanted = UCase(code)](const FormPageInfo& one) { return one.Code == wanted; });
    if (page == kPages.end()) {
        throw PlatformError(Failure::InvalidCall, "There is no form page \"" + std::string(code) + "\"");
    }
    return *page;
}

std::string ValuesFileName(const FormPageInfo& page, int sequence) {
    std::string name(page.Code);
    if (page.PageForEachAsset) name += PageSequenceText(sequence);
    return name.append(kValuesExtension);
}

int LastSequence(const FormPageInfo& page) {
    constexpr int kLastOfTwoDigits = 99;
    return page.PageForEachAsset ? kLastOfTwoDigits : 0;
}

FormPageFile FormPageFileOf(std::string_view code) {
    constexpr std::size_t kDigits = 2;
    for (const FormPageInfo& page : kPages) {
        const std::string_view digits = code.substr(std::min(page.Code.size(), code.size()));
        if (!page.PageForEachAsset || !code.starts_with(page.Code) || digits.size() != kDigits) continue;
        int sequence = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + kDigits, sequence);
        if (error == std::errc() && end == digits.data() + kDigits) return {&page, sequence};
    }
    return {&FormPageOf(code), 1};
}

int CountValuesFiles(const FormPageInfo& page, const fs::path& folder) {
    // COMPAT: they are counted, not named: with one of them gone the last is not come to, and the gap shows a blank form.
    int count = 0;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = UCase(entry->path().filename().string());
        std::error_code noFile;
        if (name.starts_with(page.Code) && name.ends_with(kValuesExtension) && entry->is_regular_file(noFile)) ++count;
    }
    return count;
}

fs::path FindValues(const fs::path& folder, const std::string& name) {
    const fs::path found = FindAnyCase(folder, name);
    return found.empty() ? folder / name : found;
}

fs::path FindLaserFile(const AppPath& paths, std::string_view code, std::string_view extension) {
    const std::string name = "Laser/" + std::string(code) + "." + std::string(extension);
    fs::path found = paths.Find(name);
    if (found.empty()) throw PlatformError::About(Failure::FileNotFound, name);
    return found;
}

FormPlace::FormPlace(const FormPageInfo& page, int files) : page_(&page), files_(files) {
    const bool isAlone = IsLast(page) && PageBefore(page) == nullptr;
    nextEnabled_ = page.PageForEachAsset ? files >= 2 : !isAlone;
}

void FormPlace::Next() {
    if (page_->PageForEachAsset) {
        pageSequence_ = std::clamp(pageSequence_ + 1, 1, std::max(files_, 1));
        nextEnabled_ = pageSequence_ < files_;
        previousEnabled_ = pageSequence_ > 1;
        return;
    }
    const FormPageInfo& before = *page_;
    page_ = &FormPageOf(page_->Next);
    nextEnabled_ = !IsLast(*page_);
    previousEnabled_ = page_ != &before || PageBefore(*page_) != nullptr;
}

void FormPlace::Previous() {
    if (page_->PageForEachAsset) {
        pageSequence_ = std::max(pageSequence_ - 1, 1);
        nextEnabled_ = pageSequence_ < files_;
        previousEnabled_ = pageSequence_ > 1;
        return;
    }
    if (const FormPageInfo* before = PageBefore(*page_)) {
        page_ = before;
        nextEnabled_ = true;
    }
    previousEnabled_ = PageBefore(*page_) != nullptr;
}

}  // namespace tallymar
