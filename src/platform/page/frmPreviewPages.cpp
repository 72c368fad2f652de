#include "platform/page/frmPreviewPages.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWheelEvent>

namespace tallymar {

namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kGap = 12;  // pixels around and between pages
constexpr std::array<double, 12> kZooms = {0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1, 1.25, 1.5, 2, 3, 4};
constexpr QColor kHit(255, 224, 102, 150);
constexpr QColor kCurrentHit(255, 140, 0, 170);

}  // namespace

frmPreviewPages::frmPreviewPages(std::shared_ptr<const PrintedDocument> document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(std::move(document)) {
    setObjectName(QStringLiteral("V"));
    setAccessibleName(tr("Pages"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // or fitting the width would take the room that made it fit
    viewport()->setBackgroundRole(QPalette::Dark);
    viewport()->setAutoFillBackground(true);
}

double frmPreviewPages::PixelsPerTwip() const {
    return zoom_ * logicalDpiX() / kTwipsPerInch;
}

QSizeF frmPreviewPages::PageSize() const {
    const PaperSize& paper = document_->Pages.Paper();
    return QSizeF(paper.Width, paper.Height) * PixelsPerTwip();
}

double frmPreviewPages::PageTop(int page) const {
    return kGap + (page - 1) * (PageSize().height() + kGap);
}

QPointF frmPreviewPages::PageOrigin(int page) const {
    const double room = viewport()->width() - PageSize().width();
    const double x = room > 2 * kGap ? room / 2 : kGap - horizontalScrollBar()->value();
    // Whole pixels, so that rules and texts look alike on every page.
    return {std::round(x), std::round(PageTop(page) - verticalScrollBar()->value())};
}

int frmPreviewPages::PageAt(double y) const {
    const int page = static_cast<int>((y - kGap / 2) / (PageSize().height() + kGap)) + 1;
    return std::clamp(page, 1, PageCount());
}

void frmPreviewPages::SetCurrentPage(int page) {
    if (page == currentPage_) return;
    currentPage_ = page;
    emit PageChanged(page);
}

void frmPreviewPages::GoTo(int page) {
    page = std::clamp(page, 1, PageCount());
    {
        const QScopedValueRollback moving(moving_, true);
        verticalScrollBar()->setValue(static_cast<int>(std::round(PageTop(page) - kGap)));
    }
    SetCurrentPage(page);
    viewport()->update();
}

void frmPreviewPages::StepOn() {
    const double hidden = PageTop(currentPage_) + PageSize().height() - verticalScrollBar()->value() - viewport()->height();
    if (hidden > 1) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                      static_cast<int>(std::ceil(std::min(hidden + kGap, viewport()->height() * 0.9))));
    } else if (currentPage_ < PageCount()) {
        GoTo(currentPage_ + 1);
    }
}

void frmPreviewPages::StepBack() {
    const double hidden = verticalScrollBar()->value() - (PageTop(currentPage_) - kGap);
    if (hidden > 1) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() -
                                      static_cast<int>(std::ceil(std::min(hidden, viewport()->height() * 0.9))));
    } else if (currentPage_ > 1) {
        GoTo(currentPage_ - 1);
    }
}

void frmPreviewPages::SetZoom(double zoom) {
    fit_ = Fit::None;
    zoom_ = std::clamp(zoom, kZooms.front(), kZooms.back());
    UpdateScrollBars();
    emit ZoomChanged();
}

void frmPreviewPages::SetFit(Fit fit) {
    fit_ = fit;
    ApplyFit();
    emit ZoomChanged();
}

void frmPreviewPages::ZoomStep(bool in) {
    constexpr double kSame = 0.005;
    if (in) {
        const auto* next = std::find_if(kZooms.begin(), kZooms.end(), [&](double zoom) { return zoom > zoom_ + kSame; });
        if (next != kZooms.end()) SetZoom(*next);
    } else {
        const auto next = std::find_if(kZooms.rbegin(), kZooms.rend(), [&](double zoom) { return zoom < zoom_ - kSame; });
        if (next != kZooms.rend()) SetZoom(*next);
    }
}

void frmPreviewPages::ApplyFit() {
    const PaperSize& paper = document_->Pages.Paper();
    const double perTwip = logicalDpiX() / kTwipsPerInch;
    const double byWidth = (viewport()->width() - 2 * kGap) / (paper.Width * perTwip);
    const double byHeight = (viewport()->height() - 2 * kGap) / (paper.Height * perTwip);
    if (fit_ == Fit::Width) zoom_ = std::max(0.05, byWidth);
    if (fit_ == Fit::Page) zoom_ = std::max(0.05, std::min(byWidth, byHeight));
    UpdateScrollBars();
}

// The current page keeps its place in the window, part for part.
void frmPreviewPages::UpdateScrollBars() {
    const QSizeF size = PageSize();
    const double height = PageTop(PageCount() + 1);
    const double oldPage = painter_ ? document_->Pages.Paper().Height * painter_->Scale() : size.height();
    const double oldTop = kGap + (currentPage_ - 1) * (oldPage + kGap);
    const double part = (verticalScrollBar()->value() + kGap - oldTop) / oldPage;
    {
        const QScopedValueRollback moving(moving_, true);
        verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(std::ceil(height)) - viewport()->height()));
        verticalScrollBar()->setPageStep(viewport()->height());
        verticalScrollBar()->setSingleStep(40);
        verticalScrollBar()->setValue(static_cast<int>(std::round(PageTop(currentPage_) - kGap + part * size.height())));
        const int width = static_cast<int>(std::ceil(size.width() + 2 * kGap));
        horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
        horizontalScrollBar()->setPageStep(viewport()->width());
        horizontalScrollBar()->setSingleStep(40);
    }
    if (!painter_ || painter_->Scale() != PixelsPerTwip()) {
        painter_ = std::make_unique<PagePainter>(document_->Pages, PixelsPerTwip());
    }
    viewport()->update();
}

void frmPreviewPages::SetHits(std::vector<PageHit> hits) {
    hits_ = std::move(hits);
    currentHit_.reset();
    viewport()->update();
}

void frmPreviewPages::ShowHit(std::size_t index) {
    currentHit_ = index;
    const PageHit& hit = hits_.at(index);
    const double scale = PixelsPerTwip();
    const QRectF place(QPointF(hit.X, hit.Y) * scale, QPointF(hit.X2, hit.Y2) * scale);
    const QRectF inSight = place.translated(PageOrigin(hit.Page));
    if (!QRectF(viewport()->rect()).contains(inSight)) {
        if (PageSize().height() + 2 * kGap <= viewport()->height() + 1) {
            GoTo(hit.Page);
        } else {
            const QScopedValueRollback moving(moving_, true);
            verticalScrollBar()->setValue(static_cast<int>(PageTop(hit.Page) + place.center().y() - viewport()->height() / 2.0));
        }
        horizontalScrollBar()->setValue(static_cast<int>(kGap + place.center().x() - viewport()->width() / 2.0));
    }
    SetCurrentPage(hit.Page);
    viewport()->update();
}

void frmPreviewPages::ShowNextHit(bool backward) {
    if (hits_.empty()) return;
    const std::size_t count = hits_.size();
    if (currentHit_) {
        ShowHit((*currentHit_ + (backward ? count - 1 : 1)) % count);
        return;
    }
    const auto next = std::find_if(hits_.begin(), hits_.end(), [&](const PageHit& hit) { return hit.Page >= currentPage_; });
    const std::size_t index = next == hits_.end() ? 0 : static_cast<std::size_t>(next - hits_.begin());
    ShowHit(backward ? (index + count - 1) % count : index);
}

void frmPreviewPages::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    if (!painter_) return;
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF sight = event->rect();
    const int last = PageAt(verticalScrollBar()->value() + viewport()->height());
    for (int page = PageAt(verticalScrollBar()->value()); page <= last; ++page) {
        const QPointF origin = PageOrigin(page);
        const QRectF sheet(origin, PageSize());
        if (!sheet.adjusted(0, 0, kGap, kGap).intersects(sight)) continue;
        painter.fillRect(sheet.translated(2, 2), QColor(0, 0, 0, 60));
        painter.fillRect(sheet, Qt::white);
        painter.save();
        painter.setClipRect(sheet);
        PaintHits(painter, page, origin);
        painter_->Paint(painter, page, origin);
        painter.restore();
    }
}

void frmPreviewPages::PaintHits(QPainter& painter, int page, QPointF origin) const {
    const auto first = std::lower_bound(hits_.begin(), hits_.end(), page, [](const PageHit& hit, int p) { return hit.Page < p; });
    const double scale = PixelsPerTwip();
    for (auto hit = first; hit != hits_.end() && hit->Page == page; ++hit) {
        const QRectF place = QRectF(QPointF(hit->X, hit->Y) * scale, QPointF(hit->X2, hit->Y2) * scale).translated(origin);
        const bool current = currentHit_ && static_cast<std::size_t>(hit - hits_.begin()) == *currentHit_;
        painter.fillRect(place.adjusted(-1, 0, 1, 0), current ? kCurrentHit : kHit);
    }
}

void frmPreviewPages::resizeEvent(QResizeEvent*) {
    ApplyFit();
}

void frmPreviewPages::scrollContentsBy(int, int) {
    if (!moving_) SetCurrentPage(PageAt(verticalScrollBar()->value() + viewport()->height() / 2.0));
    viewport()->update();
}

void frmPreviewPages::keyPressEvent(QKeyEvent* event) {
    const bool control = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
        case Qt::Key_PageDown:
            control ? GoTo(currentPage_ + 1) : StepOn();
            return;
        case Qt::Key_PageUp:
            control ? GoTo(currentPage_ - 1) : StepBack();
            return;
        case Qt::Key_Space:
            event->modifiers() & Qt::ShiftModifier ? StepBack() : StepOn();
            return;
        case Qt::Key_Home:
            GoTo(1);
            return;
        case Qt::Key_End:
            GoTo(PageCount());
            return;
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void frmPreviewPages::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() & Qt::ControlModifier) {
        if (event->angleDelta().y() != 0) ZoomStep(event->angleDelta().y() > 0);
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

}  // namespace tallymar
