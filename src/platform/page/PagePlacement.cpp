#include "platform/page/PagePlacement.h"

#include <algorithm>

#include "platform/fonts/FontMetrics.h"

namespace tallymar {

PagePlacement::PagePlacement(const PageDocument& pages, int page) : pages_(pages) {
    if (pages.Margin == 0) return;
    const double room = pages.Paper().Height - 2.0 * pages.Margin;
    for (const PageItem* item = pages.PageBegin(page); item != pages.PageEnd(page); ++item) {
        if (item->Y <= 0 || (item->Op == PageItem::Kind::Text && item->Frame != 0)) continue;
        const int height = item->Op == PageItem::Kind::Text ? item->Y2 - item->Y : 0;
        squeeze_ = std::min(squeeze_, (room - height) / std::max(item->Y, item->Y2 - height));
    }
}

double PagePlacement::OffsetX(const PageItem& item) const {
    if (item.Op == PageItem::Kind::Line || item.Frame == 0) return pages_.Margin;
    const PageFrame& frame = pages_.Frame(item);
    return frame.PaperX - frame.X;
}

double PagePlacement::PlaceOfY(const PageItem& item, int y) const {
    if (item.Op == PageItem::Kind::Line || item.Frame == 0) return pages_.Margin + y * squeeze_;
    const PageFrame& frame = pages_.Frame(item);
    return frame.PaperY + (y - frame.Y);
}

std::string_view PagePlacement::ShownText(const PageItem& item) const {
    std::string_view text = pages_.Text(item);
    if (item.Frame == 0) return text;
    const PageFrame& frame = pages_.Frame(item);
    const double room = frame.X + frame.Width - item.X;
    const PageFont& font = pages_.Font(item);
    const FontMetrics& metrics = FindFontMetrics(font.Name);
    while (!text.empty() && ToTwips(metrics, AdvanceOf(metrics, text), font.Size) > room) text.remove_suffix(1);
    return text;
}

}  // namespace tallymar
