#include "platform/controls/QtPrompts.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>

#include "platform/controls/Hourglass.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr int kProgressRange = 1000;      // the bar is an int wide, a table may be longer
constexpr qint64 kProgressInterval = 40;  // milliseconds between two pictures

QMessageBox::Icon IconOf(MessageKind kind) {
    switch (kind) {
        case MessageKind::Warning:
            return QMessageBox::Warning;
        case MessageKind::Error:
            return QMessageBox::Critical;
        case MessageKind::Information:
            break;
    }
    return QMessageBox::Information;
}

// The toolkit reads the patterns from the last parentheses, which the dialog does not show: the name says them as its user knows
// them.
QString FilterText(const FileFilter& filter) {
    return QStringLiteral("%1 (%2)").arg(ToQString(filter.Name), ToQString(filter.Pattern).replace(u';', u' '));
}

// The pointer of a command that has the wait cursor is the usual one while it asks.
class PointerForDialog {
 public:
    PointerForDialog() : stands_(class_Hourglass::Stands()) {
        if (stands_) QApplication::changeOverrideCursor(Qt::ArrowCursor);
    }
    ~PointerForDialog() {
        if (stands_) QApplication::changeOverrideCursor(Qt::WaitCursor);
    }
    PointerForDialog(const PointerForDialog&) = delete;
    PointerForDialog& operator=(const PointerForDialog&) = delete;

 private:
    bool stands_;
};

}  // namespace

void QtPrompts::Message(std::string_view text, std::string_view title, MessageKind kind) {
    QMessageBox box(IconOf(kind), ToQString(title), FailureToQString(text), QMessageBox::Ok, window_);
    box.setTextFormat(Qt::PlainText);
    const PointerForDialog pointer;
    box.exec();
}

void QtPrompts::MessageWithDetails(std::string_view text, std::string_view details, std::string_view title) {
    QMessageBox box(QMessageBox::Information, ToQString(title), FailureToQString(text), QMessageBox::Ok, window_);
    box.setTextFormat(Qt::PlainText);
    box.setDetailedText(ToQString(details));
    box.exec();
}

bool QtPrompts::AskYesNo(std::string_view text, std::string_view title) {
    QMessageBox box(QMessageBox::Question, ToQString(title), FailureToQString(text), QMessageBox::Yes | QMessageBox::No, window_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    const PointerForDialog pointer;
    return box.exec() == QMessageBox::Yes;
}

Answer QtPrompts::AskYesNoCancel(std::string_view text, std::string_view title) {
    QMessageBox box(QMessageBox::Question, ToQString(title), FailureToQString(text),
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, window_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::Cancel);
    const PointerForDialog pointer;
    const int pressed = box.exec();
    if (pressed == QMessageBox::Yes) return Answer::Yes;
    return pressed == QMessageBox::No ? Answer::No : Answer::Cancel;
}

std::optional<std::filesystem::path> QtPrompts::AskOpenFile(const FileDialog& dialog) {
    return AskFile(dialog, false);
}

std::optional<std::filesystem::path> QtPrompts::AskSaveFile(const FileDialog& dialog) {
    return AskFile(dialog, true);
}

void QtPrompts::SetUp(QFileDialog& box, const FileDialog& dialog) {
    box.setWindowTitle(ToQString(dialog.Title));
    box.setOption(QFileDialog::HideNameFilterDetails);
    QStringList filters;
    for (const FileFilter& filter : dialog.Filters) filters += FilterText(filter);
    if (!filters.isEmpty()) {
        box.setNameFilters(filters);
        if (dialog.FilterIndex < dialog.Filters.size()) box.selectNameFilter(filters[static_cast<qsizetype>(dialog.FilterIndex)]);
    }
    box.setOption(QFileDialog::DontConfirmOverwrite, !dialog.AsksToOverwrite);
    if (!dialog.InitialFolder.empty()) box.setDirectory(PathToQString(dialog.InitialFolder));
    if (!dialog.FileName.empty()) box.selectFile(PathToQString(dialog.FileName));
    if (!dialog.DefaultExtension.empty()) box.setDefaultSuffix(ToQString(dialog.DefaultExtension));
}

std::optional<std::filesystem::path> QtPrompts::AskFile(const FileDialog& dialog, bool forSaving) {
    QFileDialog box(window_);
    box.setAcceptMode(forSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    box.setFileMode(forSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    SetUp(box, dialog);
    const PointerForDialog pointer;
    if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
    return QStringToPath(box.selectedFiles().constFirst());
}

void QtPrompts::ProgressStart(std::int64_t maximum) {
    if (!bar_) return;
    bar_->setRange(0, kProgressRange);
    bar_->setValue(0);
    bar_->setProperty("steps", static_cast<qlonglong>(maximum));
    bar_->setTextVisible(maximum > 0);
    sinceShown_.start();
    KeepAlive();
}

void QtPrompts::ProgressStep(std::int64_t value) {
    if (!bar_ || sinceShown_.elapsed() < kProgressInterval) return;
    const qlonglong steps = bar_->property("steps").toLongLong();
    bar_->setValue(steps > 0 ? static_cast<int>(value * kProgressRange / steps) : 0);
    sinceShown_.restart();
    KeepAlive();
}

void QtPrompts::KeepAlive() {
    // The window is painted and answers the desktop, but no key or click gets in: no command starts inside another.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace tallymar
