#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QAbstractScrollArea>

#include "platform/page/Delivery.h"
#include "platform/page/PageSearch.h"
#include "platform/page/QtPagePainter.h"

namespace tallymar {

// The pages of a document one under the other. Only what is in sight is drawn, however many there are.
class frmPreviewPages : public QAbstractScrollArea {
    Q_OBJECT

 public:
    enum class Fit { None, Width, Page };

    explicit frmPreviewPages(std::shared_ptr<const PrintedDocument> document, QWidget* parent = nullptr);

    int CurrentPage() const { return currentPage_; }
    void GoTo(int page);
    // A screenful on or back; at the end of a page, the page that follows.
    void StepOn();
    void StepBack();

    double Zoom() const { return zoom_; }  // 1 is paper size
    Fit FitMode() const { return fit_; }
    void SetZoom(double zoom);
    void SetFit(Fit fit);
    void ZoomStep(bool in);

    // The places to be marked, and which of them is the current one.
    void SetHits(std::vector<PageHit> hits);
    const std::vector<PageHit>& Hits() const { return hits_; }
    std::optional<std::size_t> CurrentHit() const { return currentHit_; }
    void ShowHit(std::size_t index);
    // The current hit's neighbour or, without one, the first from the current page on; around the ends of the document.
    void ShowNextHit(bool backward);

 signals:
    void PageChanged(int page);
    void ZoomChanged();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    int PageCount() const { return document_->Pages.PageCount(); }
    double PixelsPerTwip() const;
    QSizeF PageSize() const;  // in pixels
    double PageTop(int page) const;
    QPointF PageOrigin(int page) const;  // in the viewport
    int PageAt(double y) const;
    void ApplyFit();
    void UpdateScrollBars();
    void SetCurrentPage(int page);
    void PaintHits(QPainter& painter, int page, QPointF origin) const;

    std::shared_ptr<const PrintedDocument> document_;
    std::unique_ptr<PagePainter> painter_;
    double zoom_ = 1;
    Fit fit_ = Fit::None;  // the paper size first: type of 7.5 points cannot be read on a page shrunk to a small screen
    int currentPage_ = 1;
    bool moving_ = false;  // the scroll bars follow a page or zoom, not the user
    std::vector<PageHit> hits_;
    std::optional<std::size_t> currentHit_;
};

}  // namespace tallymar
