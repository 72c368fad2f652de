#pragma once

#include "platform/controls/CSForm.h"
#include "shell/UpdateSites.h"

class QNetworkAccessManager;
class QTextBrowser;
class QTimer;

namespace tallymar {

class CSCombo;
class UpdateLoader;

// The update page, and what the allowed sites say beside it. It installs nothing.
class frmBrowser : public CSForm {
    Q_OBJECT

 public:
    // network: for tests; otherwise it makes its own.
    explicit frmBrowser(const UpdateSites& sites, QNetworkAccessManager* network = nullptr, QWidget* parent = nullptr);

 private:
    void Go(const QString& address);
    void FollowLink(const QUrl& link);
    void Show(const QUrl& address, const QByteArray& html);
    void ShowOwnPage(const QString& why);
    void ShowTitle(const QString& text);

    UpdateLoader* loader_ = nullptr;
    QLabel* lblTitle_ = nullptr;
    CSCombo* cboAddress_ = nullptr;
    QTextBrowser* brwWebBrowser_ = nullptr;
    QTimer* timTimer_ = nullptr;  // runs while a page loads
    QString asked_;               // the address that is loaded
};

}  // namespace tallymar
