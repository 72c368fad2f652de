#include "platform/page/PageSearch.h"

#include <cmath>

#include "platform/fonts/FontMetrics.h"
#include "platform/page/PagePlacement.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

void SearchText(const PageDocument& pages, const PagePlacement& placement, const PageItem& item, int page,
                std::string_view wanted, std::vector<PageHit>& hits) {
    const std::string_view text = placement.ShownText(item);
    if (text.size() < wanted.size()) return;
    const PagePlacement::Place place = placement.PlaceOf(item);
    const std::string folded = LCase(text);
    for (std::size_t at = folded.find(wanted); at != std::string::npos; at = folded.find(wanted, at + wanted.size())) {
        const PageFont& font = pages.Font(item);
        const FontMetrics& metrics = FindFontMetrics(font.Name);
        const auto edge = [&](std::size_t length) {
            const double before = ToTwips(metrics, AdvanceOf(metrics, text.substr(0, length)), font.Size);
            return static_cast<int>(std::lround(place.X + before));
        };
        const int top = static_cast<int>(std::lround(place.Y));
        hits.push_back({page, edge(at), top, edge(at + wanted.size()), top + item.Y2 - item.Y});
    }
}

}  // namespace

std::vector<PageHit> SearchPages(const PageDocument& pages, std::string_view text) {
    std::vector<PageHit> hits;
    if (text.empty()) return hits;
    const std::string wanted = LCase(text);
    for (int page = 1; page <= pages.PageCount(); ++page) {
        const PagePlacement placement(pages, page);
        for (const PageItem* item = pages.PageBegin(page); item != pages.PageEnd(page); ++item) {
            if (item->Op == PageItem::Kind::Text) SearchText(pages, placement, *item, page, wanted, hits);
        }
    }
    return hits;
}

}  // namespace tallymar
