#include "platform/page/PageSearch.h"

#include <cmath>

#include "platform/page/FontMetrics.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

void SearchText(const PageDocument& pages, const PageItem& item, int page, std::string_view wanted, std::vector<PageHit>& hits) {
    const std::string_view text = pages.Text(item);
    if (text.size() < wanted.size()) return;
    const std::string folded = LCase(text);
    for (std::size_t at = folded.find(wanted); at != std::string::npos; at = folded.find(wanted, at + wanted.size())) {
        const PageFont& font = pages.Font(item);
        const FontMetrics& metrics = FindFontMetrics(font.Name);
        const auto edge = [&](std::size_t length) {
            const double behind = ToTwips(metrics, AdvanceOf(metrics, text.substr(0, length)), font.Size);
            return item.X + static_cast<int>(std::lround(behind));
        };
        hits.push_back({page, edge(at), item.Y, edge(at + wanted.size()), item.Y2});
    }
}

}  // namespace

std::vector<PageHit> SearchPages(const PageDocument& pages, std::string_view text) {
    std::vector<PageHit> hits;
    if (text.empty()) return hits;
    const std::string wanted = LCase(text);
    for (int page = 1; page <= pages.PageCount(); ++page) {
        for (const PageItem* item = pages.PageBegin(page); item != pages.PageEnd(page); ++item) {
            if (item->Op == PageItem::Kind::Text) SearchText(pages, *item, page, wanted, hits);
        }
    }
    return hits;
}

}  // namespace tallymar
