#include "platform/controls/WindowMemory.h"

#include <algorithm>
#include <system_error>

#include <QScreen>
#include <QSettings>
#include <QWidget>

#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr std::uintmax_t kLargestFile = 256 * 1024;  // ours is a few kilobytes
constexpr qsizetype kMostValues = 64;
constexpr int kGreatest = 100'000;  // pixels
constexpr int kPlaceNumbers = 5;

QString PlaceKey(const QString& window) {
    return QStringLiteral("Places/") + window;
}

}  // namespace

WindowMemory::WindowMemory(const std::filesystem::path& file, QObject* owner) : QObject(owner) {
    std::error_code missing;
    const std::filesystem::file_status status = std::filesystem::status(file, missing);
    if (std::filesystem::exists(status)) {
        // A pipe of that name would be waited for, and what is larger than any of ours is not one of ours.
        if (!std::filesystem::is_regular_file(status)) return;
        if (std::filesystem::file_size(file, missing) > kLargestFile || missing) return;
    }
    settings_ = std::make_unique<QSettings>(PathToQString(file), QSettings::IniFormat);
}

WindowMemory::~WindowMemory() = default;

WindowMemory* WindowMemory::Of(const QWidget* window) {
    for (; window; window = window->parentWidget()) {
        if (auto* memory = window->findChild<WindowMemory*>(QString(), Qt::FindDirectChildrenOnly)) return memory;
    }
    return nullptr;
}

QStringList WindowMemory::Texts(const QString& key) const {
    return settings_ ? settings_->value(key).toStringList().mid(0, kMostValues) : QStringList();
}

QList<int> WindowMemory::Numbers(const QString& key) const {
    QList<int> numbers;
    for (const QString& text : Texts(key)) {
        bool isNumber = false;
        numbers.append(std::clamp(text.toInt(&isNumber), -kGreatest, kGreatest));
        if (!isNumber) return {};
    }
    return numbers;
}

void WindowMemory::Keep(const QString& key, const QStringList& texts) {
    if (settings_ && Texts(key) != texts) settings_->setValue(key, texts);
}

void WindowMemory::Keep(const QString& key, const QList<int>& numbers) {
    QStringList texts;
    for (const int number : numbers) texts.append(QString::number(number));
    Keep(key, texts);
}

std::optional<WindowMemory::Place> WindowMemory::PlaceOf(const QString& window) const {
    const QList<int> kept = Numbers(PlaceKey(window));
    if (kept.size() != kPlaceNumbers) return std::nullopt;
    return Place{.Frame = QRect(kept[0], kept[1], std::max(kept[2], 0), std::max(kept[3], 0)), .Maximised = kept[4] != 0};
}

void WindowMemory::KeepPlace(const QString& window, const Place& place) {
    Place kept = place;
    if (const auto before = PlaceOf(window); before && place.Maximised) kept.Frame = before->Frame;
    const QRect& frame = kept.Frame;
    Keep(PlaceKey(window), {frame.x(), frame.y(), frame.width(), frame.height(), kept.Maximised ? 1 : 0});
}

void PutBack(QWidget& window, const WindowMemory::Place& place) {
    if (!place.Frame.isEmpty()) {
        const QRect frame = Within(window.screen()->availableGeometry(), place.Frame);
        window.resize(frame.size());
        window.move(frame.topLeft());
    }
    if (place.Maximised) window.setWindowState(Qt::WindowMaximized);
}

QRect Within(const QRect& room, QRect frame) {
    frame.setSize(frame.size().boundedTo(room.size()));
    frame.moveRight(std::min(frame.right(), room.right()));
    frame.moveBottom(std::min(frame.bottom(), room.bottom()));
    frame.moveTopLeft({std::max(frame.left(), room.left()), std::max(frame.top(), room.top())});
    return frame;
}

}  // namespace tallymar
