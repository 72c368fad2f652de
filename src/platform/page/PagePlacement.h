#pragma once

#include <string_view>

#include "platform/page/PageDocument.h"

namespace tallymar {

// Where the items of one page stand on the paper, in twips from its upper left corner: every delivery that draws asks here, so
// that the preview, the printer and the PDF are the same. The document's own positions are those of its grid; on the paper
//   - they begin at the document's margin,
//   - a page that reaches beyond the paper is drawn together, line by line, until it ends at the lower margin,
//   - a text of a frame stands where its frame does, and is cut after the last character that fits into it.
class PagePlacement {
 public:
    PagePlacement(const PageDocument& pages, int page);

    struct Place {
        double X;
        double Y;
    };
    Place PlaceOf(const PageItem& item) const { return {item.X + OffsetX(item), PlaceOfY(item, item.Y)}; }
    // The other end of a line.
    Place EndOf(const PageItem& item) const { return {item.X2 + OffsetX(item), PlaceOfY(item, item.Y2)}; }
    // As much of the text as is drawn.
    std::string_view ShownText(const PageItem& item) const;

 private:
    double OffsetX(const PageItem& item) const;
    double PlaceOfY(const PageItem& item, int y) const;

    const PageDocument& pages_;
    double squeeze_ = 1;
};

}  // namespace tallymar
