#pragma once

#include <QObject>
#include <QPointer>
#include <QUrl>

#include "shell/UpdateSites.h"

class QNetworkAccessManager;
class QNetworkReply;

namespace tallymar {

// Fetches one page at a time, from the sites alone, within a time and a size; nothing that a page points to is fetched with it.
class UpdateLoader : public QObject {
    Q_OBJECT

 public:
    static constexpr int kTimeLimit = 20'000;        // milliseconds, for the whole page
    static constexpr qint64 kSizeLimit = 1'000'000;  // bytes

    // network must outlast it.
    UpdateLoader(UpdateSites sites, QNetworkAccessManager& network, int timeLimit = kTimeLimit, QObject* parent = nullptr);

    // False, and nothing happens, when the address may not be followed. A page that is still loading is given up for it.
    bool Load(const QString& address);

 signals:
    void Loaded(const QUrl& address, const QByteArray& html);
    void Failed(const QString& why);

 private:
    void Follow(const QUrl& address);
    void Finish(QNetworkReply& reply);
    void GiveUp(const QString& why);

    UpdateSites sites_;
    QNetworkAccessManager& network_;
    int timeLimit_;
    QPointer<QNetworkReply> reply_;
    QUrl address_;  // of the page that is loaded, as it was judged
};

}  // namespace tallymar
