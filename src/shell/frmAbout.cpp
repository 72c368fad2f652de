#include "shell/frmAbout.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/FieldRows.h"
#include "shell/frmSystemInfo.h"

namespace tallymar {

namespace {
constexpr int kPictureSide = 72;
}

frmAbout::frmAbout(QWidget* parent) : CSForm("frmAbout", tr("About Tallymar for Windows"), parent) {
    auto* picture = new QLabel(this);
    picture->setPixmap(QApplication::windowIcon().pixmap(kPictureSide));
    auto* title = new QLabel(tr("Tallymar for Windows"), this);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    title->setFont(large);
    auto* text = new QVBoxLayout;
    text->setSpacing(6);
    text->addWidget(title);
    text->addWidget(new QLabel(tr("Fixed Asset Management Software"), this));
    text->addWidget(new QLabel(tr("Version 1.4 -  Dated 8/18/2003"), this));
    text->addStretch(1);
    auto* top = new QHBoxLayout;
    top->setSpacing(18);
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addLayout(text, 1);

    auto* cmdOK = Named(new CSCmdBtn(tr("OK"), this), "cmdOK");
    auto* cmdSysInfo = Named(new CSCmdBtn(tr("&System Info..."), this), "cmdSysInfo");
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdSysInfo);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(20, 20, 20, 14);
    all->setSpacing(18);
    all->setSizeConstraint(QLayout::SetFixedSize);
    all->addLayout(top);
    all->addLayout(buttons);

    connect(cmdOK, &QPushButton::clicked, this, &CSForm::Unload);
    connect(cmdSysInfo, &QPushButton::clicked, this, [this] { ShowSystemInformation(); });
    SetCancelButton(cmdOK);
}

void frmAbout::ShowSystemInformation() {
    // Desktops name their own tool; the first one that is there is taken.
    struct Tool {
        const char* Program;
        QStringList Arguments;
    };
    for (const Tool& tool : {Tool{"hardinfo2", {}}, Tool{"hardinfo", {}}, Tool{"kinfocenter", {}},
                             Tool{"gnome-control-center", {QStringLiteral("info-overview")}}}) {
        const QString path = QStandardPaths::findExecutable(QString::fromLatin1(tool.Program));
        if (!path.isEmpty() && QProcess::startDetached(path, tool.Arguments)) return;
    }
    if (const auto facts = SystemFacts(); !facts.empty()) {
        frmSystemInfo(facts, this).ShowModal();
        return;
    }
    QMessageBox::information(this, windowTitle(), tr("System Information Is Unavailable At This Time"));
}

}  // namespace tallymar
