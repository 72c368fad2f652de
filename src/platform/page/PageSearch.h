#pragma once

#include <string_view>
#include <vector>

#include "platform/page/PageDocument.h"

namespace tallymar {

// A place where a searched text stands, in twips on the paper.
struct PageHit {
    int Page;
    int X;
    int Y;
    int X2;
    int Y2;
};

// Every place in the document, page by page in drawing order, whatever the letter case. A hit lies within one drawn text; an
// empty search finds nothing.
std::vector<PageHit> SearchPages(const PageDocument& pages, std::string_view text);

}  // namespace tallymar
