// The values of a form page, as the viewer reads, changes and saves them: what it saves it reads again, and what is undone is as
// it was.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "formoutput/PageEdits.h"
#include "platform/runtime/PlatformError.h"

using namespace tallymar;

namespace {

bool HaveSameLines(const FormPageText& a, const FormPageText& b) {
    for (int line = std::max(a.LineCount(), b.LineCount()); line > 0; --line) {
        if (a.Line(line) != b.Line(line)) return false;
    }
    return true;
}

void ReadAgain(const FormPageText& page) {
    const std::string file = page.ToFile();
    if (file.size() > FormPageText::kLongestFile) return;
    const FormPageText again = FormPageText::Parse(file, "page.LDT");
    if (again.ToFile() != file || !HaveSameLines(again, page)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The first bytes say what is typed, and where.
    constexpr std::size_t kTyped = 12;
    if (size < kTyped) return 0;
    const std::string typed(reinterpret_cast<const char*>(data), kTyped);
    try {
        FormPageText page = FormPageText::Parse({reinterpret_cast<const char*>(data) + kTyped, size - kTyped}, "page.LDT");
        ReadAgain(page);
        const FormPageText before = page;
        PageEdits edits(page);
        edits.Show("page.LDT", {{data[0] % 2 == 0, data[1] % kPageLines + 1, data[2] % 40, data[3] % 40 + 1},
                                {data[4] % 2 == 0, data[5] % kPageLines + 1, data[6] % 40, data[7] % 40 + 1}});
        for (int field : {0, 1, 0}) {
            edits.Store(field, std::string_view(typed).substr(static_cast<std::size_t>(field) * 3));
            ReadAgain(page);
        }
        while (edits.IsDirty()) edits.Undo();
        if (!HaveSameLines(page, before)) std::abort();
    } catch (const PlatformError&) {
    }
    return 0;
}
