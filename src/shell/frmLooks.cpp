#include "shell/frmLooks.h"

#include <QApplication>
#include <QFont>
#include <QIcon>

namespace tallymar {

namespace {
constexpr const char* kFontFamily = "Arial";
constexpr double kFontPoints = 10.0;
}  // namespace

void SetLooks(QApplication& application) {
    QFont font(QString::fromLatin1(kFontFamily));
    font.setPointSizeF(kFontPoints);
    QApplication::setFont(font);
    QIcon icon;
    for (const char* picture : {":/icons/tallymar-48.png", ":/icons/tallymar-256.png"})
        icon.addFile(QString::fromLatin1(picture));
    QApplication::setWindowIcon(icon);
    QGuiApplication::setDesktopFileName(QStringLiteral("tallymar"));
    application.setApplicationName(QStringLiteral("Tallymar"));
}

}  // namespace tallymar
