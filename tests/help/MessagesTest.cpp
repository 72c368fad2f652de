#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>
#include <string>

#include <QHelpLink>
#include <QProcess>

#include <gtest/gtest.h>

#include "help/HelpText.h"
#include "help/SourceTexts.h"

namespace tallymar {
namespace {

namespace fs = std::filesystem;

// Every text of the source is taken for a message unless its place says that it is something else. A new text that is no message
// either stands in one of these calls, or its file gets a row here with the reason.

// What is given to these is a label, a hint, a tip or a title: it stands beside its field, whose page tells of it.
const std::set<std::string, std::less<>> kOnTheScreen = {"QLabel",
                                                         "CSCmdBtn",
                                                         "QGroupBox",
                                                         "QCheckBox",
                                                         "CSChkList",
                                                         "CSOptList",
                                                         "CSForm",
                                                         "frmBatchForm",
                                                         "frmDocumentForm",
                                                         "frmExchangeForm",
                                                         "frmFieldDefinition",
                                                         "frmCounts",
                                                         "Heading",
                                                         "Figure",
                                                         "MakeBookList",
                                                         "MakeOutput",
                                                         "MakeFoot",
                                                         "Add",
                                                         "add",
                                                         "button",
                                                         "AddButton",
                                                         "AddSmallButton",
                                                         "SetHint",
                                                         "SetHints",
                                                         "SetNote",
                                                         "setToolTip",
                                                         "setAccessibleName",
                                                         "setPlaceholderText",
                                                         "addItem",
                                                         "addTab",
                                                         "addToolBar",
                                                         "setText",
                                                         "translate",
                                                         "AddColumn"};
// Options of the tool: each command's --help tells of them.
const std::set<std::string, std::less<>> kOptions = {"add_option", "add_flag", "add_subcommand", "AddSwitch", "AddFiles", "app"};
// Written into files and databases, or read from them; nobody is shown them.
const std::set<std::string, std::less<>> kInFiles = {"Execute",     "Pragma",        "Object",      "Write",  "Put",  "VSendLJ",
                                                     "VSendCenter", "static_assert", "starts_with", "insert", "check"};

struct NoMessages {
    const char* Files;  // how their paths begin, or a part of them
    const char* Why;
};
constexpr NoMessages kNoMessages[] = {
    {"assets/AssetFields", "labels, hints and tips of the asset's fields"},
    {"shell/MenuTable", "captions and hints of the menus"},
    {"shell/UserProfileEdit", "labels and hints of the user profile"},
    {"shell/frmEdit", "labels of the two profiles"},
    {"interchange/FieldDefinition.cpp", "labels of the forty boxes"},
    {"loans/Loan.h", "labels and hints of the loan's boxes"},
    {"reports/ReportTable.h", "captions, titles and hints of the reports"},
    {"reports/ReportOptions.h", "choices of a report"},
    {"reports/ReportShape.h", "words printed on reports"},
    {"reports/ColumnReport", "words printed on reports"},
    {"Report.cpp", "headings of reports"},
    {"DisposalReports.cpp", "headings of reports"},
    {"RegisterReports.cpp", "headings of reports"},
    {"ValueReports.cpp", "headings of reports"},
    {"Pages.cpp", "words printed on forms and schedules"},
    {"platform/page/Pdf", "words of the PDF language"},
    {"cli/Manual.cpp", "manual page and completion of the tool"},
    {"platform/page/PageFontFile", "names of fonts"},
    {"platform/page/PageItems", "names in a file"},
    {"platform/recordset/Sql", "words of the database language"},
    {"platform/runtime/Pictures.h", "pictures of dates"},
    {"store/AppPath", "names of folders"},
    {"shell/frmSystemInfo.cpp", "names of the facts, and a hint"},
    {"shell/main.cpp", "options of the program"},
};

bool HasMessages(const std::string& path) {
    return std::none_of(std::begin(kNoMessages), std::end(kNoMessages),
                        [&](const NoMessages& each) { return path.find(each.Files) != path.npos; });
}

// Two words of letters at least, and something of a sentence: a small word after a blank.
bool ReadsLikeAMessage(const std::string& text) {
    static const std::regex kSqlOrWord("^(SELECT|PRAGMA|, c\\.coll)");
    static const std::regex kWord("[A-Za-z][a-z']+");
    static const std::regex kSentence("[a-z] [a-z0-9]|^ [a-z]|[a-z] $");
    if (std::regex_search(text, kSqlOrWord) || !std::regex_search(text, kSentence)) return false;
    return std::distance(std::sregex_iterator(text.begin(), text.end(), kWord), {}) >= 2;
}

// What stands between the places where names and numbers are put in, with single blanks.
std::vector<std::string> Pieces(const std::string& text) {
    static const std::regex kPlace("%[0-9n]");
    static const std::regex kBlanks("\\s+");
    static const std::regex kAccess("&(\\w)");  // an access key
    std::vector<std::string> pieces;
    for (std::sregex_token_iterator part(text.begin(), text.end(), kPlace, -1), end; part != end; ++part) {
        std::string piece = std::regex_replace(std::regex_replace(part->str(), kAccess, "$1"), kBlanks, " ");
        while (piece.starts_with(' ')) piece.erase(0, 1);
        while (piece.ends_with(' ')) piece.pop_back();
        if (!piece.empty()) pieces.push_back(piece);
    }
    return pieces;
}

TEST(Messages, EachIsInTheHelpWordForWord) {
    const auto books = test::OpenBooks();
    const std::string help = test::TextOfPages(*books, "messages") + test::TextOfPages(*books, "status");
    const fs::path source = fs::path(TALLYMAR_SOURCE_DIR) / "src";
    std::size_t seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const std::string path = fs::relative(entry.path(), source).string();
        const bool isCode = entry.path().extension() == ".cpp" || entry.path().extension() == ".h";
        if (!isCode || !HasMessages(path)) continue;
        for (const test::SourceText& text : test::TextsOf(entry.path())) {
            const auto isElsewhere = [](const std::string& call) {
                return kOnTheScreen.contains(call) || kOptions.contains(call) || kInFiles.contains(call);
            };
            if (!ReadsLikeAMessage(text.Text) || std::any_of(text.Calls.begin(), text.Calls.end(), isElsewhere)) continue;
            ++seen;
            for (const std::string& piece : Pieces(text.Text)) {
                EXPECT_NE(help.find(piece), help.npos) << path << ": \"" << piece << "\" is on no page messages*.md of data/help";
            }
        }
    }
    EXPECT_GT(seen, 300u);
}

// Windows that no command of the menus opens are found by their names in the source.
TEST(Windows, EachHasAPage) {
    static const std::regex kWindow("frm[A-Z][A-Za-z0-9]+");
    const auto books = test::OpenBooks();
    std::set<std::string> windows;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(TALLYMAR_SOURCE_DIR) / "src")) {
        if (entry.path().extension() != ".cpp") continue;
        for (const test::SourceText& text : test::TextsOf(entry.path())) {
            if (std::regex_match(text.Text, kWindow)) windows.insert(text.Text);
        }
    }
    EXPECT_GT(windows.size(), 25u);
    for (const std::string& window : windows) {
        EXPECT_FALSE(books->documentsForIdentifier(QString::fromStdString(window)).isEmpty()) << window;
    }
}

TEST(Tool, EveryCommandIsInTheHelp) {
    QProcess tool;
    tool.start(QString::fromStdString((test::kProgramFolder / "tallymar-cli").string()), {"--help"});
    ASSERT_TRUE(tool.waitForFinished());
    const QString list = QString::fromUtf8(tool.readAllStandardOutput()).section("Subcommands:", 1);
    const auto books = test::OpenBooks();
    const QByteArray page = books->fileData(QUrl("qthelp://tallymar.tallymar/doc/tool.html"));
    int seen = 0;
    for (const QString& line : list.split('\n', Qt::SkipEmptyParts)) {
        const QString command = line.trimmed().section(' ', 0, 0);
        EXPECT_TRUE(page.contains(("<code>" + command + "</code>").toUtf8())) << command.toStdString();
        ++seen;
    }
    EXPECT_GT(seen, 20);
}

}  // namespace
}  // namespace tallymar
