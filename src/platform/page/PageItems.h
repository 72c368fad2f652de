#pragma once

#include <string>

#include "platform/page/PageDocument.h"
#include "platform/runtime/FileReplacement.h"

namespace tallymar {

// A page as one JSON object a line, in drawing order, for tests and other programs; positions in twips, size in points, UTF-8:
//   {"page":1,"op":"text","x":85,"y":180,"w":612,"size":7.5,"text":"Report date:"}
//   {"page":1,"op":"line","x1":85,"x2":764,"y":1260}
// A text that is not in Arial has "font" after its size; a line that is not level has "y2" after its y.
std::string PageItems(const PageDocument& pages, int page);

// All pages into a file; fails as its Write does.
void WritePageItems(const PageDocument& pages, FileReplacement& file);

}  // namespace tallymar
