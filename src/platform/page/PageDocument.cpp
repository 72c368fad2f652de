#include "platform/page/PageDocument.h"

#include <algorithm>
#include <limits>

#include "platform/fonts/FontMetrics.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"

namespace tallymar {

namespace {

int Twips(const FontMetrics& metrics, std::int64_t measure, float points) {
    return ToLong(ToTwips(metrics, measure, points));
}

const std::vector<PageItem>& PageAt(const std::vector<std::vector<PageItem>>& pages, int page) {
    if (page < 1 || static_cast<std::size_t>(page) > pages.size()) throw PlatformError(Failure::SubscriptOutOfRange);
    return pages[static_cast<std::size_t>(page) - 1];
}

}  // namespace

PageDocument::PageDocument(PaperSize paper) : paper_(paper), pages_(1) {}

int PageDocument::TextWidth(std::string_view text) const {
    const FontMetrics& metrics = FindFontMetrics(FontName);
    return Twips(metrics, AdvanceOf(metrics, text), FontSize);
}

// The last fonts used are looked at first: a report changes between two or three.
std::uint8_t PageDocument::FontIndex() {
    for (std::size_t i = fonts_.size(); i-- > 0;) {
        if (fonts_[i].Size == FontSize && fonts_[i].Name == FontName) return static_cast<std::uint8_t>(i);
    }
    if (fonts_.size() > std::numeric_limits<std::uint8_t>::max()) throw PlatformError(Failure::Overflow);
    fonts_.push_back({FontName, FontSize});
    return static_cast<std::uint8_t>(fonts_.size() - 1);
}

std::uint16_t PageDocument::AddFrame(const PageFrame& frame) {
    const auto known = std::find(frames_.begin(), frames_.end(), frame);
    const std::ptrdiff_t number = known - frames_.begin() + 1;
    if (number > std::numeric_limits<std::uint16_t>::max()) throw PlatformError(Failure::Overflow);
    if (known == frames_.end()) frames_.push_back(frame);
    return static_cast<std::uint16_t>(number);
}

void PageDocument::PrintText(std::string_view text) {
    if (text.empty()) return;
    if (text.size() > std::numeric_limits<std::uint32_t>::max() - texts_.size()) throw PlatformError(Failure::Overflow);
    const FontMetrics& metrics = FindFontMetrics(FontName);
    PageItem item;
    item.Op = PageItem::Kind::Text;
    item.Font = FontIndex();
    item.Frame = FrameOfTexts;
    item.X = CurrentX;
    item.Y = CurrentY;
    item.X2 = CurrentX + Twips(metrics, AdvanceOf(metrics, text), FontSize);
    item.Y2 = CurrentY + Twips(metrics, metrics.Ascent + metrics.Descent, FontSize);
    item.TextStart = static_cast<std::uint32_t>(texts_.size());
    item.TextLength = static_cast<std::uint32_t>(text.size());
    texts_.append(text);
    pages_.back().push_back(item);
    CurrentX = item.X2;
}

void PageDocument::DrawLine(int x1, int y1, int x2, int y2) {
    PageItem item;
    item.Op = PageItem::Kind::Line;
    item.LineWidth = static_cast<std::uint16_t>(std::clamp(DrawWidth, 1, int{std::numeric_limits<std::uint16_t>::max()}));
    item.X = x1;
    item.Y = y1;
    item.X2 = x2;
    item.Y2 = y2;
    pages_.back().push_back(item);
    CurrentX = x2;
    CurrentY = y2;
}

void PageDocument::NewPage() {
    const std::size_t items = pages_.back().size();
    pages_.back().shrink_to_fit();
    pages_.emplace_back().reserve(items);  // the pages of a report are much alike
    CurrentX = 0;
    CurrentY = 0;
}

int PageDocument::PageCount() const {
    return static_cast<int>(pages_.size());
}

const PageItem* PageDocument::PageBegin(int page) const {
    return PageAt(pages_, page).data();
}

const PageItem* PageDocument::PageEnd(int page) const {
    const std::vector<PageItem>& items = PageAt(pages_, page);
    return items.data() + items.size();
}

std::string_view PageDocument::Text(const PageItem& item) const {
    return std::string_view(texts_).substr(item.TextStart, item.TextLength);
}

const PageFrame& PageDocument::Frame(const PageItem& item) const {
    return frames_.at(item.Frame - std::size_t{1});
}

const PageFont& PageDocument::Font(const PageItem& item) const {
    return fonts_.at(item.Font);
}

}  // namespace tallymar
