#pragma once

#include <string>

#include "platform/page/PageDocument.h"

namespace tallymar {

// A page as fixed-pitch text on the document's grid, in UTF-8, no blanks at the ends of lines.
//
// Which edge of a text is kept is told by what stands under and over it: a column of equal right edges stays flush right, one of
// equal left edges flush left, all else is centred where it stood. Half rows go to the line below. A rule is a line of dashes,
// put into the blank line above its row or, where there is none, in between. What would be printed over something else goes on a
// line of its own beneath, so that no figure is lost; words that would touch their right neighbour end a
// blank before it.
std::string PageText(const PageDocument& pages, int page);

}  // namespace tallymar
