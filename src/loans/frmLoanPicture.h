#pragma once

#include <optional>

#include <QWidget>

#include "loans/LoanSchedule.h"

namespace tallymar {

// A small picture of a schedule: the balance over time on the left, interest and principal of each year on the right. What it
// shows is its accessible description too.
class frmLoanPicture : public QWidget {
    Q_OBJECT

 public:
    explicit frmLoanPicture(QWidget* parent = nullptr);

    // Without a schedule or payments: the text, in place of the picture.
    void Show(std::optional<LoanSchedule> schedule, const QString& otherwise);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

 private:
    struct Colours;

    void PaintBalance(QPainter& painter, const QRectF& area, const Colours& colours) const;
    void PaintYears(QPainter& painter, const QRectF& area, const Colours& colours) const;
    QString Description() const;
    QString TipAt(const QPoint& place) const;
    QRectF YearsArea() const;

    std::optional<LoanSchedule> schedule_;
    QString otherwise_;
};

}  // namespace tallymar
