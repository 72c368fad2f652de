#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include <QList>
#include <QObject>
#include <QRect>
#include <QStringList>

class QSettings;
class QWidget;

namespace tallymar {

// What the windows of an installation keep from one start to the next: their sizes and places, the widths of columns, the files
// that were opened last. It stands in a file of its own; without one, or with a damaged one, windows open as they were built.
//
// The main window owns it; every other window finds it through the one that it stands in or over.
class WindowMemory : public QObject {
    Q_OBJECT

 public:
    WindowMemory(const std::filesystem::path& file, QObject* owner);
    ~WindowMemory() override;

    // nullptr when no window above this one has a memory.
    static WindowMemory* Of(const QWidget* window);

    // Empty when nothing was kept, or what was kept is not that.
    QList<int> Numbers(const QString& key) const;
    QStringList Texts(const QString& key) const;
    void Keep(const QString& key, const QList<int>& numbers);
    void Keep(const QString& key, const QStringList& texts);

    // Of a window, by its name: where its user has put it and whether it filled its room. A window that fills its room keeps the
    // place that it had before.
    struct Place {
        QRect Frame;  // empty when it was never moved or sized
        bool Maximised = false;
    };
    std::optional<Place> PlaceOf(const QString& window) const;
    void KeepPlace(const QString& window, const Place& place);

 private:
    std::unique_ptr<QSettings> settings_;
};

// A window of its own goes back to its place, within the screen that it is on.
void PutBack(QWidget& window, const WindowMemory::Place& place);

// The frame within the room: moved there where it hangs over the edge, cut where it is larger.
QRect Within(const QRect& room, QRect frame);

}  // namespace tallymar
