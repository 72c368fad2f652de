#include "assets/frmPicture.h"

#include <QGridLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>

#include "assets/AssetPicture.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr QSize kLeast(240, 240);

}  // namespace

frmPicture::frmPicture(std::filesystem::path path, QWidget* parent)
    : CSForm("frmPicture", tr("Picture of Asset"), parent), path_(std::move(path)) {
    setWindowTitle(PathToQString(path_));
    Picture1_ = Named(new QWidget(this), "Picture1");
    Picture2_ = Named(new QLabel(Picture1_), "Picture2");
    Picture2_->setAccessibleName(tr("Picture of Asset"));
    HScroll1_ = Named(new QScrollBar(Qt::Horizontal, this), "HScroll1");
    VScroll1_ = Named(new QScrollBar(Qt::Vertical, this), "VScroll1");
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(Picture1_, 0, 0);
    grid->addWidget(VScroll1_, 0, 1);
    grid->addWidget(HScroll1_, 1, 0);
    const auto scroll = [this] { Picture2_->move(-HScroll1_->value(), -VScroll1_->value()); };
    connect(HScroll1_, &QScrollBar::valueChanged, this, scroll);
    connect(VScroll1_, &QScrollBar::valueChanged, this, scroll);
}

std::optional<std::string> frmPicture::Load() {
    if (std::optional<std::string> problem = PictureProblem(path_)) return problem;
    QImageReader reader(PathToQString(path_));
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QPixmap picture = QPixmap::fromImage(reader.read());
    if (picture.isNull()) return std::string(kInvalidPicture);
    Picture2_->setPixmap(picture);
    Picture2_->resize(picture.size());
    // As large as the screen lets it be, within the frame that the desktop puts around it.
    const QSize frame(2 * style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth),
                      style()->pixelMetric(QStyle::PM_TitleBarHeight) + style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth));
    const QSize room = (parentWidget() ? parentWidget()->screen() : screen())->availableGeometry().size() - frame;
    Picture1_->setMinimumSize(kLeast.boundedTo(room));
    resize(room);
    return std::nullopt;
}

void frmPicture::FitScrollBars() {
    // A bar that comes takes room from the other direction, so that the second look counts.
    const QSize picture = Picture2_->size();
    bool across = picture.width() > width();
    bool down = picture.height() > height();
    across = across || picture.width() > width() - (down ? VScroll1_->sizeHint().width() : 0);
    down = down || picture.height() > height() - (across ? HScroll1_->sizeHint().height() : 0);
    HScroll1_->setVisible(across);
    VScroll1_->setVisible(down);
    const int viewWidth = width() - (down ? VScroll1_->sizeHint().width() : 0);
    const int viewHeight = height() - (across ? HScroll1_->sizeHint().height() : 0);
    HScroll1_->setRange(0, qMax(0, picture.width() - viewWidth));
    VScroll1_->setRange(0, qMax(0, picture.height() - viewHeight));
    HScroll1_->setPageStep(viewWidth);
    VScroll1_->setPageStep(viewHeight);
}

void frmPicture::resizeEvent(QResizeEvent* event) {
    CSForm::resizeEvent(event);
    FitScrollBars();
}

void frmPicture::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            Unload();
            return;
        case Qt::Key_Left:
            HScroll1_->triggerAction(QScrollBar::SliderSingleStepSub);
            return;
        case Qt::Key_Right:
            HScroll1_->triggerAction(QScrollBar::SliderSingleStepAdd);
            return;
        case Qt::Key_Up:
            VScroll1_->triggerAction(QScrollBar::SliderSingleStepSub);
            return;
        case Qt::Key_Down:
            VScroll1_->triggerAction(QScrollBar::SliderSingleStepAdd);
            return;
        default:
            CSForm::keyPressEvent(event);
    }
}

}  // namespace tallymar
