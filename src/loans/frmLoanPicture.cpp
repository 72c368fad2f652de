#include "loans/frmLoanPicture.h"

#include <algorithm>
#include <cmath>

#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include "platform/controls/ScreenText.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"

namespace tallymar {

namespace {

constexpr double kGap = 18;        // between the two halves
constexpr double kBarShare = 0.7;  // of its place that a year's bar takes
constexpr double kWidestBar = 40;

QString Money(CurrencyAmount amount) {
    return ToQString(Format(amount, pictures::kTotal));
}

// For a scale: no cents.
QString WholeMoney(double amount) {
    return ToQString(Format(amount, "###,###,##0"));
}

QString Year(int year) {
    return QString::number(year);
}

// What a year brought besides its interest: paid back, or added by the saver.
double PrincipalOf(const LoanYear& year, bool additions) {
    const CurrencyAmount principal = additions ? -year.Principal - year.Interest : year.Principal;
    return std::max(0.0, principal.ToDouble());
}

double InterestOf(const LoanYear& year) {
    return std::max(0.0, year.Interest.ToDouble());
}

}  // namespace

// Told apart by lightness and pattern as well as by hue, on a light and a dark ground.
struct frmLoanPicture::Colours {
    explicit Colours(const QPalette& palette) : Text(palette.color(QPalette::Text)), Ground(palette.color(QPalette::Base)) {
        const bool dark = Ground.lightness() < 128;
        Principal = dark ? QColor(0x6ba5e7) : QColor(0x1f5fa8);
        Interest = dark ? QColor(0xf0b35e) : QColor(0xb45f06);
        Grid = Text;
        Grid.setAlphaF(0.25F);
    }

    QBrush InterestBrush() const { return QBrush(Interest, Qt::BDiagPattern); }

    QColor Text;
    QColor Ground;
    QColor Principal;
    QColor Interest;
    QColor Grid;
};

frmLoanPicture::frmLoanPicture(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Picture1"));
    setAccessibleName(tr("Picture of the schedule"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize frmLoanPicture::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 11};
}

QSize frmLoanPicture::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 50, fontMetrics().height() * 7};
}

void frmLoanPicture::Show(std::optional<LoanSchedule> schedule, const QString& otherwise) {
    schedule_ = std::move(schedule);
    if (schedule_ && schedule_->Payments.empty()) schedule_.reset();
    otherwise_ = otherwise;
    setAccessibleDescription(schedule_ ? Description() : otherwise_);
    update();
}

QString frmLoanPicture::Description() const {
    const LoanPayment& first = schedule_->Payments.front();
    const LoanPayment& last = schedule_->Payments.back();
    QStringList parts = {
        tr("Balance from %1 to %2 in %n payments.", nullptr, last.Number).arg(Money(first.Before), Money(last.After))};
    for (const LoanYear& year : schedule_->Years) {
        parts << tr("%1: principal %2, interest %3.").arg(Year(year.Year), Money(year.Principal), Money(year.Interest));
    }
    return parts.join(u' ');
}

QRectF frmLoanPicture::YearsArea() const {
    const QRectF all = QRectF(rect()).adjusted(8, 6, -8, -6);
    return all.adjusted((all.width() + kGap) / 2, 0, 0, 0);
}

QString frmLoanPicture::TipAt(const QPoint& place) const {
    const QRectF area = YearsArea();
    if (!schedule_ || !area.contains(place)) return {};
    const auto count = static_cast<double>(schedule_->Years.size());
    const auto index = static_cast<std::size_t>((place.x() - area.left()) / area.width() * count);
    const LoanYear& year = schedule_->Years[std::min(index, schedule_->Years.size() - 1)];
    return tr("%1: principal %2, interest %3").arg(Year(year.Year), Money(year.Principal), Money(year.Interest));
}

bool frmLoanPicture::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), TipAt(help->pos()), this);
        return true;
    }
    return QWidget::event(event);
}

void frmLoanPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Colours colours(palette());
    painter.setPen(colours.Grid);
    painter.setBrush(colours.Ground);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    if (!schedule_) {
        painter.setPen(colours.Text);
        painter.drawText(rect().adjusted(8, 6, -8, -6), Qt::AlignCenter | Qt::TextWordWrap, otherwise_);
        return;
    }
    const QRectF years = YearsArea();
    PaintBalance(painter, QRectF(8, years.top(), years.width(), years.height()), colours);
    PaintYears(painter, years, colours);
}

void frmLoanPicture::PaintBalance(QPainter& painter, const QRectF& area, const Colours& colours) const {
    const std::vector<LoanPayment>& payments = schedule_->Payments;
    const double line = fontMetrics().height();
    const QRectF plot = area.adjusted(0, line + 4, 0, -line - 2);
    double top = std::max(1.0, payments.front().Before.ToDouble());
    for (const LoanPayment& payment : payments) top = std::max(top, payment.After.ToDouble());

    const auto count = static_cast<double>(payments.size());
    const auto place = [&](std::size_t paid, double balance) {
        const double height = std::max(0.0, balance) / top * plot.height();
        return QPointF(plot.left() + static_cast<double>(paid) / count * plot.width(), plot.bottom() - height);
    };
    QPainterPath path(place(0, payments.front().Before.ToDouble()));
    for (std::size_t i = 0; i < payments.size(); ++i) path.lineTo(place(i + 1, payments[i].After.ToDouble()));
    QPainterPath ground = path;
    ground.lineTo(plot.bottomRight());
    ground.lineTo(plot.bottomLeft());
    QColor tint = colours.Principal;
    tint.setAlphaF(0.18F);
    painter.fillPath(ground, tint);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colours.Principal, 2));
    painter.drawPath(path);
    painter.setPen(colours.Grid);
    painter.drawLine(plot.bottomLeft(), plot.bottomRight());

    painter.setPen(colours.Text);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignTop, tr("Balance, up to %1").arg(WholeMoney(top)));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignBottom, Year(payments.front().Due.Year));
    painter.drawText(area, Qt::AlignRight | Qt::AlignBottom, Year(payments.back().Due.Year));
}

void frmLoanPicture::PaintYears(QPainter& painter, const QRectF& area, const Colours& colours) const {
    const std::vector<LoanYear>& years = schedule_->Years;
    const bool additions = schedule_->IsAdditions;
    const double line = fontMetrics().height();
    const QRectF plot = area.adjusted(0, line + 4, 0, -line - 2);
    double top = 1;
    for (const LoanYear& year : years) top = std::max(top, PrincipalOf(year, additions) + InterestOf(year));

    const double room = plot.width() / static_cast<double>(years.size());
    const double width = std::min(room * kBarShare, kWidestBar);
    // Years whose names would touch are named at intervals.
    const double nameWidth = fontMetrics().horizontalAdvance(QStringLiteral("00000"));
    const auto step = static_cast<std::size_t>(std::ceil(nameWidth / room));
    for (std::size_t i = 0; i < years.size(); ++i) {
        const double centre = plot.left() + room * (static_cast<double>(i) + 0.5);
        const double principal = PrincipalOf(years[i], additions) / top * plot.height();
        const double interest = InterestOf(years[i]) / top * plot.height();
        const QRectF lower(centre - width / 2, plot.bottom() - principal, width, principal);
        const QRectF upper(centre - width / 2, lower.top() - interest, width, interest);
        painter.fillRect(lower, colours.Principal);
        painter.fillRect(upper, colours.InterestBrush());
        painter.setBrush(Qt::NoBrush);
        painter.setPen(colours.Interest);
        if (interest >= 1) painter.drawRect(upper);
        painter.setPen(colours.Text);
        if (i % step == 0) {
            painter.drawText(QRectF(centre - nameWidth, plot.bottom() + 2, 2 * nameWidth, line), Qt::AlignHCenter,
                             Year(years[i].Year));
        }
    }
    painter.setPen(colours.Grid);
    painter.drawLine(plot.bottomLeft(), plot.bottomRight());

    // The legend, from the left: a patch and its name.
    double x = area.left();
    const auto legend = [&](const QBrush& brush, const QColor& frame, const QString& name) {
        const QRectF patch(x, area.top() + line * 0.2, line * 0.7, line * 0.6);
        painter.fillRect(patch, brush);
        painter.setPen(frame);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(patch);
        painter.setPen(colours.Text);
        x = patch.right() + 5;
        painter.drawText(QPointF(x, area.top() + fontMetrics().ascent()), name);
        x += fontMetrics().horizontalAdvance(name) + 14;
    };
    legend(colours.Principal, colours.Principal, additions ? tr("Added a year") : tr("Principal a year"));
    legend(colours.InterestBrush(), colours.Interest, tr("Interest"));
}

}  // namespace tallymar
