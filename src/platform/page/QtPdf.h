#pragma once

#include "platform/page/PageDocument.h"
#include "platform/runtime/FileReplacement.h"

namespace tallymar {

// The pages as PDF: selectable text in embedded fonts at the document's own twips, its title, and pages labelled by their
// numbers. Needs a Qt application object. Failures: those of writing the file; DeviceError when a font is missing.
void WritePdf(const PageDocument& pages, FileReplacement& file);

}  // namespace tallymar
