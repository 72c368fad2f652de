#include "cli/ImportCheck.h"

#include <iostream>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

void EndCheck(const ImportCounts& counts) {
    for (const ImportRemark& remark : counts.Remarks) {
        std::cout << ToUtf8(ImportRemarkText(remark)) << (remark.Fails ? " (fails)\n" : "\n");
    }
    if (counts.RemarksLeftOut > 0) std::cout << "and " << counts.RemarksLeftOut << " more\n";
    std::cout << ToUtf8(ImportCheckText(counts)) << '\n';
    if (counts.Failing > 0) throw PlatformError(Failure::InvalidCall, "The file would not be taken whole; nothing was written");
}

}  // namespace tallymar::cli
