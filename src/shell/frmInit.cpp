#include "shell/frmInit.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"

namespace tallymar {

namespace {

// The product's name in white on its own blue, whatever the desktop's colours.
class Banner : public QWidget {
 public:
    explicit Banner(QWidget* parent) : QWidget(parent), font_(QStringLiteral("Arial")) {
        font_.setPointSizeF(QWidget::font().pointSizeF() * 2.2);
        font_.setBold(true);
        setAccessibleName(Title());
    }
    QSize sizeHint() const override {
        const QFontMetrics metrics(font_);
        return {metrics.horizontalAdvance(Title()) + 3 * metrics.height(), metrics.height() * 5 / 2};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QLinearGradient ground(rect().topLeft(), rect().topRight());
        ground.setColorAt(0.0, QColor(0x1d3f63));
        ground.setColorAt(1.0, QColor(0x2f6f9f));
        painter.fillRect(rect(), ground);
        painter.setFont(font_);
        painter.setPen(Qt::white);
        painter.drawText(rect(), Qt::AlignCenter, Title());
    }

 private:
    static QString Title() { return QStringLiteral("Tallymar for Windows"); }

    QFont font_;
};

}  // namespace

frmInit::frmInit(Choice fileNew, Choice fileOpen, QWidget* parent) : CSForm("frmInit", tr("Tallymar"), parent) {
    auto* cmdNew = Named(new CSCmdBtn(tr("Create a &new Tallymar file"), this), "CSCmdBtnNew");
    cmdNew->setToolTip(tr("Create a new Tallymar file"));
    auto* cmdOpen = Named(new CSCmdBtn(tr("&Open an existing Tallymar file"), this), "CSCmdBtnOpen");
    cmdOpen->setToolTip(tr("Open an existing Tallymar file"));
    auto* cmdExit = Named(new CSCmdBtn(tr("Exit"), this), "CancelButton");
    cmdExit->setToolTip(tr("Close Tallymar"));
    for (CSCmdBtn* button : {cmdNew, cmdOpen, cmdExit}) {
        button->setMinimumHeight(button->fontMetrics().height() * 2);
        SetHint(button, button->toolTip());
    }

    auto* buttons = new QVBoxLayout;
    buttons->setContentsMargins(32, 22, 32, 22);
    buttons->setSpacing(10);
    buttons->addWidget(cmdNew);
    buttons->addWidget(cmdOpen);
    buttons->addWidget(cmdExit);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->setSizeConstraint(QLayout::SetFixedSize);
    all->addWidget(new Banner(this));
    all->addLayout(buttons);

    connect(cmdNew, &QPushButton::clicked, this, Guarded([this, choice = std::move(fileNew)] { Choose(choice); }));
    connect(cmdOpen, &QPushButton::clicked, this, Guarded([this, choice = std::move(fileOpen)] { Choose(choice); }));
    connect(cmdExit, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdExit);
    cmdOpen->setFocus();
}

void frmInit::Choose(const Choice& choice) {
    if (!choice(this)) return;
    cancelled_ = false;
    Unload();
}

}  // namespace tallymar
