#pragma once

#include "platform/page/PageDocument.h"
#include "platform/runtime/FileReplacement.h"

namespace tallymar {

// The pages as PDF 1.4: text that can be selected, searched and copied, in embedded subsets of the page fonts, where
// PagePlacement puts it (to a hundredth of a twip); its title, and pages labelled by their numbers. One page is in memory at a
// time, and the same document gives the same bytes. Failures: those of writing the file; DeviceError when a font is missing.
void WritePdf(const PageDocument& pages, FileReplacement& file);

}  // namespace tallymar
