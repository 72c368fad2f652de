#include "shell/frmBrowser.h"

#include <QLineEdit>
#include <QNetworkAccessManager>
#include <QTextBrowser>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSCombo.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/runtime/Version.h"
#include "shell/frmUpdateLoader.h"

namespace tallymar {

namespace {

constexpr int kWorkingAfter = 100;  // milliseconds: a page that is there at once does not blink
constexpr std::string_view kEnd = "END!";
constexpr QSize kLeastPage(620, 320);

QString Title() {
    return QObject::tr("Tallymar Update:");
}

// Shows what it is given. It fetches nothing itself, neither pictures nor style sheets, and knows no scripts.
class PageView : public QTextBrowser {
 public:
    using QTextBrowser::QTextBrowser;
    QVariant loadResource(int /*type*/, const QUrl& /*name*/) override { return QByteArray(); }
};

}  // namespace

frmBrowser::frmBrowser(const UpdateSites& sites, QNetworkAccessManager* network, QWidget* parent)
    : CSForm("frmBrowser", tr("Update"), parent) {
    loader_ = new UpdateLoader(sites, network ? *network : *new QNetworkAccessManager(this), UpdateLoader::kTimeLimit, this);
    lblTitle_ = Named(new QLabel(Title(), this), "lblTitle");
    lblTitle_->setTextInteractionFlags(Qt::NoTextInteraction);
    cboAddress_ = Named(new CSCombo(this), "cboAddress");
    cboAddress_->setEditable(true);
    cboAddress_->setInsertPolicy(QComboBox::NoInsert);
    cboAddress_->Add(sites.Page);
    for (const std::string& site : sites.Sites) cboAddress_->Add("https://" + site + "/");
    cboAddress_->Add(kEnd);
    cboAddress_->setAccessibleName(tr("Address"));
    SetHint(cboAddress_, tr("Choose or type an address; those of other houses are not followed"));
    brwWebBrowser_ = Named(new PageView(this), "brwWebBrowser");
    brwWebBrowser_->setOpenLinks(false);
    brwWebBrowser_->setMinimumSize(kLeastPage);
    brwWebBrowser_->setAccessibleName(tr("Page"));
    auto* cmdClose = Named(new CSCmdBtn(tr("C&lose"), this), "cmdClose");
    SetHint(cmdClose, tr("Close the update window"));
    timTimer_ = new QTimer(this);
    timTimer_->setObjectName(QStringLiteral("timTimer"));
    timTimer_->setInterval(kWorkingAfter);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdClose);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(12, 10, 12, 8);
    all->addWidget(lblTitle_);
    all->addWidget(cboAddress_);
    all->addWidget(brwWebBrowser_, 1);
    all->addLayout(buttons);
    all->addWidget(MakeHintLine());

    connect(timTimer_, &QTimer::timeout, this, [this] { lblTitle_->setText(tr("Working...")); });
    connect(cboAddress_, &QComboBox::activated, this, [this] { Go(cboAddress_->currentText()); });
    connect(cboAddress_->lineEdit(), &QLineEdit::returnPressed, this, [this] { Go(cboAddress_->currentText()); });
    connect(brwWebBrowser_, &QTextBrowser::anchorClicked, this, &frmBrowser::FollowLink);
    connect(loader_, &UpdateLoader::Loaded, this,
            Guarded([this](const QUrl& address, const QByteArray& html) { Show(address, html); }));
    connect(loader_, &UpdateLoader::Failed, this, &frmBrowser::ShowOwnPage);
    connect(cmdClose, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdClose);
    Go(ToQString(sites.Page));
}

void frmBrowser::Go(const QString& address) {
    // Enter in an editable list chooses an entry as well.
    if (timTimer_->isActive() && address == asked_) return;
    if (!loader_->Load(address)) return;
    asked_ = address;
    timTimer_->start();
}

// A link may be told from the page that it stands in, or lead to another place of it.
void frmBrowser::FollowLink(const QUrl& link) {
    const QUrl here = brwWebBrowser_->document()->baseUrl();
    const QUrl there = here.resolved(link);
    if (there.hasFragment() && there.matches(here, QUrl::RemoveFragment)) {
        brwWebBrowser_->scrollToAnchor(there.fragment(QUrl::FullyDecoded));
    } else {
        Go(there.toString(QUrl::FullyEncoded));
    }
}

void frmBrowser::ShowTitle(const QString& text) {
    timTimer_->stop();
    lblTitle_->setText(text);
}

void frmBrowser::Show(const QUrl& address, const QByteArray& html) {
    const std::string version = VersionNamed(std::string_view(html.constData(), static_cast<std::size_t>(html.size())));
    const std::string_view whole = ProgramVersion();
    const std::string_view own = whole.substr(0, whole.find(' '));
    ShowTitle(IsNewerVersion(version, own)
                  ? tr("%1 version %2 is newer than yours, %3").arg(Title(), ToQString(version), ToQString(own))
                  : Title());
    brwWebBrowser_->setHtml(QString::fromUtf8(html));
    brwWebBrowser_->document()->setBaseUrl(address);
    cboAddress_->setEditText(address.toString());
}

void frmBrowser::ShowOwnPage(const QString& why) {
    ShowTitle(Title());
    brwWebBrowser_->setHtml(QStringLiteral("<h2>%1</h2><p>%2</p><p>%3</p>")
                                .arg(tr("The update page is not there"), why.toHtmlEscaped(),
                                     tr("Is this computer on the network? Tallymar works without it; look again later.")));
}

}  // namespace tallymar
