#include "platform/controls/EventGuard.h"

#include <QMessageBox>

#include "platform/controls/ScreenText.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        ReportFailure(failure);
    }
    return true;
}

void GuardedApplication::Report(const QString& text) {
    if (reporter_) {
        reporter_(text);
        return;
    }
    // A command that failed had set the wait cursor aside already; one that still stands belongs to a command further out.
    QMessageBox::critical(activeModalWidget() ? activeModalWidget() : activeWindow(), QStringLiteral("Tallymar"), text);
}

QString MessageOf(const std::exception& failure) {
    const QString text = FailureToQString(failure.what());
    const auto* platform = dynamic_cast<const PlatformError*>(&failure);
    return platform ? QObject::tr("%1\n\n(Error %2)").arg(text).arg(platform->Number()) : text;
}

void ReportFailure(const std::exception& failure) {
    const QString text = MessageOf(failure);
    if (auto* application = qobject_cast<GuardedApplication*>(QCoreApplication::instance())) {
        application->Report(text);
    } else {
        QMessageBox::critical(QApplication::activeWindow(), QStringLiteral("Tallymar"), text);
    }
}

}  // namespace tallymar
