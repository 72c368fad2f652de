#include "platform/controls/DraggedFile.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "platform/controls/Hourglass.h"
#include "platform/controls/ScreenText.h"

namespace tallymar {

std::filesystem::path DraggedFile(const QDropEvent& event) {
    if (QApplication::activeModalWidget() || class_Hourglass::Stands()) return {};
    const QList<QUrl> urls = event.mimeData()->urls();
    return urls.size() == 1 && urls.front().isLocalFile() ? QStringToPath(urls.front().toLocalFile()) : std::filesystem::path();
}

}  // namespace tallymar
