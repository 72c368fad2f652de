#include "shell/frmUpdateLoader.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include "platform/controls/EventGuard.h"

namespace tallymar {

UpdateLoader::UpdateLoader(UpdateSites sites, QNetworkAccessManager& network, int timeLimit, QObject* parent)
    : QObject(parent), sites_(std::move(sites)), network_(network), timeLimit_(timeLimit) {}

bool UpdateLoader::Load(const QString& address) {
    const auto whole = sites_.Follow(address.toStdString());
    if (!whole) return false;
    const QUrl url(QString::fromStdString(*whole), QUrl::StrictMode);
    // Who fetches must read the host as it was judged.
    if (!url.isValid() || url.host().toStdString() != HostOf(*whole)) return false;
    if (reply_) {
        QNetworkReply* old = reply_;
        reply_.clear();
        old->abort();
    }
    Follow(url);
    return true;
}

void UpdateLoader::Follow(const QUrl& address) {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setMaximumRedirectsAllowed(3);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Tallymar"));
    QNetworkReply* reply = network_.get(request);
    reply_ = reply;
    address_ = address;
    QTimer::singleShot(timeLimit_, reply, [this, reply] {
        if (reply == reply_) GiveUp(tr("The page did not come in time."));
    });
    connect(reply, &QNetworkReply::redirected, this, [this, reply](const QUrl& to) {
        if (sites_.Follow(to.toString(QUrl::FullyEncoded).toStdString())) {
            address_ = to;
            emit reply->redirectAllowed();
        } else {
            GiveUp(tr("The page has moved to an address that is not allowed."));
        }
    });
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
        if (reply == reply_ && reply->bytesAvailable() > kSizeLimit) GiveUp(tr("The page is too large."));
    });
    connect(reply, &QNetworkReply::finished, this, Guarded([this, reply] { Finish(*reply); }));
}

void UpdateLoader::Finish(QNetworkReply& reply) {
    reply.deleteLater();
    if (&reply != reply_) return;  // given up
    if (reply.error() != QNetworkReply::NoError) {
        GiveUp(tr("The page cannot be reached: %1").arg(reply.errorString()));
        return;
    }
    if (!reply.header(QNetworkRequest::ContentTypeHeader).toString().startsWith(QStringLiteral("text/html"))) {
        GiveUp(tr("The address leads to no page."));
        return;
    }
    reply_.clear();
    emit Loaded(address_, reply.readAll());
}

void UpdateLoader::GiveUp(const QString& why) {
    QNetworkReply* reply = reply_;
    reply_.clear();
    if (reply && reply->isRunning()) reply->abort();
    emit Failed(why);
}

}  // namespace tallymar
