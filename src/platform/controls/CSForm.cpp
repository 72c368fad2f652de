#include "platform/controls/CSForm.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDropEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>

#include "platform/controls/EntryEdit.h"
#include "platform/controls/HintLine.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/ScrollPage.h"
#include "platform/controls/WindowMemory.h"

namespace tallymar {

namespace {

constexpr const char* kHint = "hint";

bool IsField(const QWidget* widget) {
    return qobject_cast<const EntryEdit*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QTabBar*>(widget);
}

// Qt's fields type the letter, and its lists choose by it, though with Alt it is the key of a menu, a command or a field. With
// Ctrl too it is what some keyboards have for AltGr, which types.
bool IsAltCharacter(const QKeyEvent& key) {
    const bool withAlt = (key.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier;
    return withAlt && !key.text().isEmpty() && key.text().front().isPrint();
}

void SendTab(QWidget* field, bool back) {
    QKeyEvent tab(QEvent::KeyPress, back ? Qt::Key_Backtab : Qt::Key_Tab, back ? Qt::ShiftModifier : Qt::NoModifier);
    QApplication::sendEvent(field, &tab);
}

QWidget* FirstField(QWidget* form) {
    for (QWidget* next = form->nextInFocusChain(); next != form; next = next->nextInFocusChain()) {
        if (form->isAncestorOf(next) && next->isVisibleTo(form) && next->isEnabled() && (next->focusPolicy() & Qt::TabFocus) &&
            !next->focusProxy() && !qobject_cast<QTabBar*>(next)) {
            return next;
        }
    }
    return nullptr;
}

}  // namespace

CSForm::CSForm(const char* name, const QString& title, QWidget* parent) : QWidget(parent) {
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(title);
    setAccessibleName(title);
}

void CSForm::ShowModal() {
    QWidget* over = parentWidget() ? parentWidget()->window() : nullptr;
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
    setWindowModality(Qt::ApplicationModal);
    PlaceOver(over);
    QEventLoop loop;
    connect(this, &CSForm::Unloaded, &loop, &QEventLoop::quit);
    unloaded_ = false;
    show();
    activateWindow();
    loop.exec();
}

void CSForm::PlaceOver(const QWidget* over) {
    if (!testAttribute(Qt::WA_Resized)) adjustSize();
    QRect frame({}, size());
    const QScreen* screen = over ? over->screen() : QApplication::primaryScreen();
    const QRect room = screen->availableGeometry();
    frame.moveCenter(over && over->isVisible() ? over->geometry().center() : room.center());
    const WindowMemory* memory = WindowMemory::Of(this);
    const auto kept = memory ? memory->PlaceOf(objectName()) : std::nullopt;
    if (kept && !kept->Frame.isEmpty()) frame = kept->Frame;
    // Over a window at the screen's edge it would hang off the screen.
    frame = Within(room, frame);
    resize(frame.size());
    move(frame.topLeft());
    placed_ = {pos(), size()};
}

void CSForm::RememberAll() {
    WindowMemory* memory = WindowMemory::Of(this);
    if (!memory) return;
    Remember(*memory);
    // One that nobody has moved or sized opens as its contents and the main window have it.
    if (!isWindow() || !placed_.isValid()) return;
    constexpr int kNudge = 16;  // pixels by which a window manager may put it beside its place
    const bool moved = (pos() - placed_.topLeft()).manhattanLength() > kNudge;
    if (moved || size() != placed_.size()) memory->KeepPlace(objectName(), {.Frame = {pos(), size()}});
}

bool CSForm::Unload() {
    // Within the main window the frame is what closes, and it takes the form with it.
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget())) return frame->close();
    return close();
}

void CSForm::SetHint(QWidget* field, const QString& hint) {
    field->setProperty(kHint, hint);
    field->setAccessibleDescription(hint);
}

QString CSForm::HintOf(const QWidget* field) {
    return field->property(kHint).toString();
}

QLabel* CSForm::MakeHintLine(const char* name) {
    hintLine_ = new HintLine(this);
    hintLine_->setObjectName(QString::fromLatin1(name));
    return hintLine_;
}

void CSForm::ShowMessage(const QString& text) {
    if (hintLine_ && !noticeStands_) hintLine_->Show(text, HintLine::Mark::None);
}

void CSForm::ShowResult(const QString& text) {
    ShowNotice(text, false);
}

void CSForm::ShowWarning(const QString& text) {
    ShowNotice(text, true);
}

void CSForm::ShowNotice(const QString& text, bool isWarning) {
    if (!hintLine_) return;
    noticeStands_ = true;
    hintLine_->Show(text, isWarning ? HintLine::Mark::Warning : HintLine::Mark::None);
    Announce(hintLine_);
}

bool CSForm::WarningStands() const {
    return noticeStands_ && hintLine_->Shown() == HintLine::Mark::Warning;
}

void CSForm::EndNotice() {
    if (!noticeStands_) return;
    noticeStands_ = false;
    const QWidget* in = focusWidget();
    ShowMessage(in ? HintOf(in) : QString());
}

void CSForm::Adopt() {
    adopted_ = true;
    for (QWidget* field : findChildren<QWidget*>()) {
        if (!IsField(field)) continue;
        field->installEventFilter(this);
        // The next entry or command takes a standing result off the line before it does anything itself.
        if (auto* entry = qobject_cast<EntryEdit*>(field)) {
            connect(entry, &QLineEdit::textEdited, this, &CSForm::EndNotice);
            connect(entry, &EntryEdit::Refused, this, &CSForm::ShowWarning);
        } else if (auto* list = qobject_cast<QComboBox*>(field)) {
            connect(list, &QComboBox::activated, this, &CSForm::EndNotice);
        } else if (qobject_cast<QPushButton*>(field) || qobject_cast<QCheckBox*>(field) || qobject_cast<QRadioButton*>(field)) {
            connect(qobject_cast<QAbstractButton*>(field), &QAbstractButton::pressed, this, &CSForm::EndNotice);
        }
    }
}

void CSForm::showEvent(QShowEvent* event) {
    if (!adopted_) {
        Adopt();
        if (const WindowMemory* memory = WindowMemory::Of(this)) Recall(*memory);
    }
    QWidget::showEvent(event);
    FocusFirst();
}

void CSForm::FocusFirst() {
    QWidget* in = focusWidget();
    // The frame of a child window gives the focus to the first thing that takes it, which may be the tabs.
    if (!in || in == this || qobject_cast<QTabBar*>(in)) in = FirstField(this);
    if (!in) return;
    // A list of options is entered at the one that is chosen, as by Tab.
    if (qobject_cast<QRadioButton*>(in)) {
        for (auto* option : in->parentWidget()->findChildren<QRadioButton*>()) {
            if (option->isChecked()) in = option;
        }
    }
    in->setFocus(Qt::TabFocusReason);
    ShowMessage(HintOf(in));  // it may have had the focus before anyone was told of it
}

bool CSForm::eventFilter(QObject* watched, QEvent* event) {
    auto* field = qobject_cast<QWidget*>(watched);
    int tab = 0;
    // A file that is dropped on a field is the form's or the main window's to take, and no text.
    const bool isDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove || event->type() == QEvent::Drop;
    if (isDrag && static_cast<QDropEvent*>(event)->mimeData()->hasUrls()) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (CommandOf(*key) || TabsOf(*key, tab)) {
            event->accept();
            return true;
        }
    }
    if (event->type() == QEvent::KeyPress && field->hasFocus()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (QPushButton* command = CommandOf(*key)) {
            command->setFocus(Qt::ShortcutFocusReason);
            command->click();
            return true;
        }
        if (QTabWidget* tabs = TabsOf(*key, tab)) return TurnTab(*tabs, tab);
        if (IsAltCharacter(*key)) {
            event->ignore();  // nobody's here; what the form stands in may have it
            return true;
        }
        if (OnFieldKey(field, key->key(), key->modifiers())) return true;
    } else if (event->type() == QEvent::FocusIn) {
        BringIntoView(field);
        ShowMessage(HintOf(field));
        OnFieldFocus(field);
    }
    return QWidget::eventFilter(watched, event);
}

QPushButton* CSForm::CommandOf(const QKeyEvent& key) const {
    if (key.modifiers() != Qt::AltModifier) return nullptr;
    const QKeySequence access(key.keyCombination());
    for (auto* button : findChildren<QPushButton*>()) {
        if (button->isVisible() && button->isEnabled() && button->shortcut() == access) return button;
    }
    return nullptr;
}

QTabWidget* CSForm::TabsOf(const QKeyEvent& key, int& tab) const {
    if (key.modifiers() != Qt::AltModifier) return nullptr;
    const QKeySequence access(key.keyCombination());
    for (auto* tabs : findChildren<QTabWidget*>()) {
        if (!tabs->isVisible()) continue;
        for (tab = 0; tab < tabs->count(); ++tab) {
            if (QKeySequence::mnemonic(tabs->tabText(tab)) == access) return tabs;
        }
    }
    return nullptr;
}

bool CSForm::OnFieldKey(QWidget* field, int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers == Qt::ControlModifier && (key == Qt::Key_PageDown || key == Qt::Key_PageUp)) {
        return StepTab(key == Qt::Key_PageDown ? 1 : -1);
    }
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    if (qobject_cast<QAbstractItemView*>(field)) return false;
    const bool onPad = modifiers & Qt::KeypadModifier;
    // In a list of options the arrows choose.
    if ((key == Qt::Key_Down || key == Qt::Key_Up) && qobject_cast<QRadioButton*>(field)) return false;
    switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (qobject_cast<QPushButton*>(field)) return false;  // a command
            [[fallthrough]];
        case Qt::Key_Down:
            SendTab(field, false);
            return true;
        case Qt::Key_Up:
            SendTab(field, true);
            return true;
        case Qt::Key_PageDown:
            return OnPage(Page::Next);
        case Qt::Key_PageUp:
            return OnPage(Page::Previous);
        case Qt::Key_Plus:
            return onPad && OnPage(Page::Next);
        case Qt::Key_Minus:
            return onPad && OnPage(Page::Previous);
        default:
            return false;
    }
}

bool CSForm::TurnTo(QTabWidget& tabs, int tab) {
    if (QWidget* in = focusWidget(); in && tabs.isAncestorOf(in)) {
        in->clearFocus();
        if (!MayTurn(in)) {
            in->setFocus(Qt::OtherFocusReason);
            return false;
        }
    }
    tabs.setCurrentIndex(tab);
    return true;
}

bool CSForm::TurnTab(QTabWidget& tabs, int tab) {
    if (!TurnTo(tabs, tab)) return true;
    if (QWidget* first = FirstField(tabs.currentWidget())) first->setFocus(Qt::TabFocusReason);
    return true;
}

bool CSForm::StepTab(int step) {
    auto* tabs = findChild<QTabWidget*>();
    if (!tabs || tabs->count() == 0) return false;
    return TurnTab(*tabs, (tabs->currentIndex() + step + tabs->count()) % tabs->count());
}

void CSForm::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && cancelButton_) {
        cancelButton_->click();
        return;
    }
    QWidget::keyPressEvent(event);
}

void CSForm::closeEvent(QCloseEvent* event) {
    if (class_Hourglass::Stands()) {
        event->ignore();  // a command is at work in here
        return;
    }
    if (!unloaded_) {
        if (!MayUnload()) {
            event->ignore();
            return;
        }
        RememberAll();
        OnUnload();
        unloaded_ = true;
        emit Unloaded();
    }
    QWidget::closeEvent(event);
}

}  // namespace tallymar
