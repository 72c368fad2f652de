#include "help/HelpText.h"

#include <gtest/gtest.h>

#include <QTextDocumentFragment>

#include "shell/frmHelp.h"
#include "store/AppPath.h"

namespace tallymar::test {

std::unique_ptr<QHelpEngineCore> OpenBooks() {
    const std::filesystem::path file = frmHelp::HelpCollection(AppPath::At(kProgramFolder, kProgramFolder));
    auto books = std::make_unique<QHelpEngineCore>(QString::fromStdString(file.string()));
    books->setReadOnly(true);
    EXPECT_TRUE(books->setupData()) << file;
    return books;
}

std::string TextOfPages(QHelpEngineCore& books, const QString& beginning) {
    QString text;
    for (const QUrl& page : books.files(QStringLiteral("tallymar.tallymar"), QString(), QStringLiteral("html"))) {
        if (!page.fileName().startsWith(beginning)) continue;
        text += QTextDocumentFragment::fromHtml(QString::fromUtf8(books.fileData(page))).toPlainText().simplified() + u'\n';
    }
    return text.toStdString();
}

}  // namespace tallymar::test
