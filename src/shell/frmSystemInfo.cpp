#include "shell/frmSystemInfo.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSqlDatabase>
#include <QStyle>
#include <QSysInfo>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/recordset/LibraryVersion.h"
#include "platform/runtime/Version.h"

namespace tallymar {

std::vector<std::pair<QString, QString>> SystemFacts() {
    QStringList screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens << QStringLiteral("%1: %2 x %3, %4 %")
                       .arg(screen->name())
                       .arg(screen->size().width())
                       .arg(screen->size().height())
                       .arg(qRound(screen->devicePixelRatio() * 100));
    }
    std::vector<std::pair<QString, QString>> facts = {
        {QObject::tr("Tallymar"), ToQString(ProgramVersion())},
        {QObject::tr("System"), QSysInfo::prettyProductName()},
        {QObject::tr("Kernel"), QSysInfo::kernelType() + u' ' + QSysInfo::kernelVersion()},
        {QObject::tr("Processor"), QSysInfo::currentCpuArchitecture()},
        {QObject::tr("Qt"), QString::fromLatin1(qVersion()) + QStringLiteral(" (%1)").arg(QGuiApplication::platformName())},
        {QObject::tr("SQLite"), ToQString(recordset::LibraryVersion())},
        {QObject::tr("Reader of old companies"), QStringLiteral("libmdb " TALLYMAR_LIBMDB_VERSION)},
        {QObject::tr("Database drivers"), QSqlDatabase::drivers().join(QStringLiteral(", "))},
        {QObject::tr("Screens"), screens.join(QStringLiteral("; "))},
        {QObject::tr("Style"), QApplication::style()->name()},
    };
    std::erase_if(facts, [](const auto& fact) { return fact.second.trimmed().isEmpty(); });
    return facts;
}

frmSystemInfo::frmSystemInfo(const std::vector<std::pair<QString, QString>>& facts, QWidget* parent)
    : CSForm("frmSystemInfo", tr("System Information"), parent) {
    QStringList lines;
    for (const auto& [name, text] : facts) lines << name + QStringLiteral(": ") + text;
    auto* page = Named(new QPlainTextEdit(lines.join(u'\n'), this), "SystemInfo");
    page->setReadOnly(true);
    page->setTabChangesFocus(true);
    page->setLineWrapMode(QPlainTextEdit::NoWrap);
    page->setAccessibleName(windowTitle());
    page->setMinimumSize(page->fontMetrics().averageCharWidth() * 70,
                         page->fontMetrics().lineSpacing() * (static_cast<int>(lines.size()) + 2));
    auto* cmdCopy = Named(new CSCmdBtn(tr("&Copy"), this), "cmdCopy");
    SetHint(cmdCopy, tr("Copy the page, to paste it into a letter"));
    auto* cmdClose = Named(new CSCmdBtn(tr("C&lose"), this), "cmdClose");
    SetHint(cmdClose, tr("Close this window"));

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdCopy);
    buttons->addWidget(cmdClose);
    auto* all = new QVBoxLayout(this);
    all->addWidget(page, 1);
    all->addLayout(buttons);
    all->addWidget(MakeHintLine());

    connect(cmdCopy, &QPushButton::clicked, this, [this, page] {
        QGuiApplication::clipboard()->setText(page->toPlainText());
        ShowResult(tr("The page has been copied"));
    });
    connect(cmdClose, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdClose);
}

}  // namespace tallymar
