#include "platform/controls/CSCombo.h"

#include <QKeyEvent>
#include <QWheelEvent>

#include "platform/controls/ScreenText.h"

namespace tallymar {

CSCombo::CSCombo(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

void CSCombo::Add(std::string_view text) {
    addItem(ToQString(text));
}

std::string CSCombo::Text() const {
    return ToWindows1252(currentText());
}

bool CSCombo::Choose(std::string_view text) {
    const int place = findText(ToQString(text), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (place < 0) return false;
    setCurrentIndex(place);
    return true;
}

void CSCombo::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    if (step == 0) {
        QComboBox::keyPressEvent(event);
        return;
    }
    const int place = currentIndex() + step;
    if (place < 0 || place >= count()) return;
    setCurrentIndex(place);
    emit activated(place);
}

void CSCombo::wheelEvent(QWheelEvent* event) {
    event->ignore();  // an open list gets the wheel itself
}

}  // namespace tallymar
