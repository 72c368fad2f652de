#include "shell/frmHelpKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QWidget>

#include "platform/controls/EventGuard.h"
#include "shell/frmHelp.h"

namespace tallymar {

HelpKey::HelpKey(Show show, QObject* parent) : QObject(parent), show_(std::move(show)) {
    qApp->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) return false;
    const auto* key = static_cast<const QKeyEvent*>(event);
    const auto* at = qobject_cast<const QWidget*>(watched);
    if (!at || key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();  // no shortcut takes it from the field that it is asked in
        return true;
    }
    const QStringList keys = HelpKeysOf(at);
    const auto* message = qobject_cast<const QMessageBox*>(at->window());
    const QString text = message ? message->text() : QString();
    while (QWidget* open = QApplication::activePopupWidget()) {
        if (!open->close()) break;
    }
    Guarded([&] { show_(keys, text); })();
    return true;
}

}  // namespace tallymar
