#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include <gtest/gtest.h>

#include "shell/UpdateSites.h"
#include "shell/frmBrowser.h"
#include "shell/frmUpdateLoader.h"
#include "support/Failures.h"

namespace tallymar {
namespace {

const UpdateSites kSites{"https://update.tallymar.example/", {"update.tallymar.example", "www.tallymar.example"}};

TEST(UpdateSites, FollowsOnlyHttpsToTheSites) {
    for (const char* good : {"https://update.tallymar.example/", "update.tallymar.example/news?x=1#y", " www.tallymar.example ",
                             "https://deep.WWW.tallymar.example/a"}) {
        EXPECT_TRUE(kSites.Follow(good)) << good;
    }
    for (const char* bad : {"", "END!", "http://update.tallymar.example/", "ftp://update.tallymar.example/", "file:///etc/passwd",
                            "https://update.tallymar.example.evil.example/", "https://evil.example/?update.tallymar.example",
                            "https://evilwww.tallymar.example/", "https://update.tallymar.example@evil.example/",
                            "https://update.tallymar.example:8443/", "https://evil.example\\update.tallymar.example",
                            "https://evil.example#.www.tallymar.example", "javascript:alert(1)",
                            "https://update.tallymar.example/\r\nHost: evil", "tallymar.example"}) {
        EXPECT_FALSE(kSites.Follow(bad)) << bad;
    }
}

TEST(UpdateSites, TheFileSaysWhatIsWrongInItsLine) {
    const auto sites = UpdateSites::Parse("# c\npage https://a.b.example/x\n\nsite b.example\r\n", "update.txt");
    EXPECT_EQ(sites.Page, "https://a.b.example/x");
    EXPECT_EQ(sites.Sites, std::vector<std::string>{"b.example"});
    for (const char* bad : {"page https://a.example/\nsite b.example\n", "site a.example\n", "page x\nhttps://a.example\n",
                            "page https://a.x.example/\nsite a.x.example\nsite b.x.example\nsite c.x.example\nsite "
                            "d.x.example\nsite e.x.example"}) {
        EXPECT_THROW(UpdateSites::Parse(bad, "update.txt"), PlatformError) << bad;
    }
}

TEST(UpdateVersion, IsComparedByNumbers) {
    EXPECT_EQ(VersionNamed("<html><head><META name=\"tallymar-version\"  content=\"1.10\"></head>"), "1.10");
    EXPECT_EQ(VersionNamed("<meta name=\"tallymar-version\" content=\"1.10 <b>\">"), "");
    EXPECT_TRUE(IsNewerVersion("1.10", "1.9"));
    EXPECT_TRUE(IsNewerVersion("1.4.1", "1.4"));
    EXPECT_FALSE(IsNewerVersion("1.4", "1.4"));
    EXPECT_FALSE(IsNewerVersion("", "1.4"));
    EXPECT_FALSE(IsNewerVersion("2x", "1.4"));
}

// A house on this machine: every https request goes to it, and it answers with what the test has set. Nothing else is put on.
class House : public QNetworkAccessManager {
 public:
    House() {
        server_.listen(QHostAddress::LocalHost);
        connect(&server_, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = server_.nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
                Requests << QString::fromLatin1(socket->readLine()).section(' ', 1, 1);
                if (Answer.isEmpty()) return;  // never comes
                socket->write(Answer);
                socket->disconnectFromHost();
            });
        });
    }
    void Close() { server_.close(); }
    static QByteArray Page(const QByteArray& html) {
        return "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nConnection: close\r\n\r\n" + html;
    }

    QByteArray Answer = Page("<p>news</p>");
    QStringList Requests;

 protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request, QIODevice* data) override {
        QNetworkRequest local(request);
        QUrl url = request.url();
        EXPECT_EQ(url.scheme(), "https");
        url.setScheme("http");
        url.setHost("127.0.0.1");
        url.setPort(port_ ? port_ : (port_ = server_.serverPort()));
        local.setUrl(url);
        return QNetworkAccessManager::createRequest(operation, local, data);
    }

 private:
    QTcpServer server_;
    int port_ = 0;
};

class Update : public testing::Test {
 protected:
    // What the window shows when it has loaded, or given up.
    QString Shown() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !Browser().toPlainText().isEmpty(); }, 5000));
        return Browser().toPlainText();
    }
    QTextBrowser& Browser() { return *form_->findChild<QTextBrowser*>("brwWebBrowser"); }
    QString Title() { return form_->findChild<QLabel*>("lblTitle")->text(); }
    void Open() { form_ = std::make_unique<frmBrowser>(kSites, &house_); }

    House house_;
    std::unique_ptr<frmBrowser> form_;
};

TEST_F(Update, ShowsThePageAndSaysThatAVersionIsNewer) {
    house_.Answer = House::Page(
        "<head><meta name=\"tallymar-version\" content=\"99.1\"></head><p>99.1 is out</p>"
        "<script>x</script><img src=\"https://evil.example/x.png\">");
    Open();
    EXPECT_EQ(Title(), "Tallymar Update:");
    EXPECT_EQ(Shown().trimmed().left(11), "99.1 is out");
    EXPECT_TRUE(Title().startsWith("Tallymar Update: version 99.1 is newer than yours, 1.")) << Title().toStdString();
    EXPECT_EQ(house_.Requests, QStringList("/")) << "nothing that the page points to is fetched";
    // END! and other houses lead nowhere, typed or clicked.
    auto* address = form_->findChild<QComboBox*>("cboAddress");
    EXPECT_EQ(address->itemText(address->count() - 1), "END!");
    for (const char* other : {"END!", "https://evil.example/", "http://www.tallymar.example/"}) {
        address->setEditText(other);
        QTest::keyClick(address->lineEdit(), Qt::Key_Return);
        if (const QUrl link(other); !link.isRelative()) emit Browser().anchorClicked(link);
    }
    QTest::qWait(50);
    EXPECT_EQ(house_.Requests.size(), 1);
    emit Browser().anchorClicked(QUrl("https://www.tallymar.example/news/"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return address->currentText().endsWith("/news/"); }, 5000));
    // As a page tells its own links: a place in it is not fetched.
    emit Browser().anchorClicked(QUrl("#top"));
    emit Browser().anchorClicked(QUrl("more"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return house_.Requests.size() == 3; }, 5000));
    EXPECT_EQ(house_.Requests.back(), "/news/more");
}

TEST_F(Update, AWorkingPageSaysSoAndIsGivenUpInTime) {
    house_.Answer.clear();
    Open();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Title() == "Working..."; }, 5000));
    QString why;
    UpdateLoader loader(kSites, house_, 50);
    QObject::connect(&loader, &UpdateLoader::Failed, [&](const QString& text) { why = text; });
    EXPECT_TRUE(loader.Load("www.tallymar.example"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !why.isEmpty(); }, 5000));
    EXPECT_EQ(why, "The page did not come in time.");
}

TEST_F(Update, WhatMayNotBeShownGetsAPageOfOurs) {
    house_.Answer = "HTTP/1.1 302 Found\r\nLocation: https://evil.example/\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
    Open();
    EXPECT_TRUE(Shown().contains("not allowed")) << Shown().toStdString();
    EXPECT_EQ(house_.Requests.size(), 1);
    EXPECT_EQ(Title(), "Tallymar Update:");

    house_.Answer = House::Page(QByteArray(UpdateLoader::kSizeLimit * 2, 'x'));
    Open();
    EXPECT_TRUE(Shown().contains("too large")) << Shown().left(200).toStdString();

    house_.Answer = "HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\nConnection: close\r\n\r\nx";
    Open();
    EXPECT_TRUE(Shown().contains("leads to no page")) << Shown().toStdString();

    house_.Close();
    Open();
    EXPECT_TRUE(Shown().contains("cannot be reached")) << Shown().toStdString();
    EXPECT_TRUE(Shown().contains("Is this computer on the network?"));
}

}  // namespace
}  // namespace tallymar
