#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include <QStringList>
#include <QUrl>

#include "platform/controls/CSForm.h"
#include "shell/frmHelpSearch.h"

class QHelpEngine;
class QLineEdit;
class QListWidget;
class QTabWidget;

namespace tallymar {

class AppPath;
class HelpBrowser;

enum class HelpBook { Tallymar, HelpTutorial };

// The help: both books, their contents, their index and a search, and the page that is read. It stands beside the window that it
// was called from, which goes on working.
class frmHelp : public CSForm {
    Q_OBJECT

 public:
    // collection: the file of HelpCollection. parent: the window that help was asked in, modal or not.
    frmHelp(const std::filesystem::path& collection, QWidget* parent);
    ~frmHelp() override;

    // "help/Tallymar.qhc", which names both books; empty when no help is there.
    static std::filesystem::path HelpCollection(const AppPath& paths);

    void ShowContents(HelpBook book = HelpBook::Tallymar);
    void ShowIndex();
    // The page of the first key that has one ("frmComputeOptions.silgMonth", then "frmComputeOptions"); the contents when none
    // has.
    void ShowKey(const QStringList& keys);
    // The place that tells of a message; the page of all messages when none does.
    void ShowMessageHelp(const QString& text);

    QUrl Shown() const;

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void Recall(const WindowMemory& memory) override;
    void Remember(WindowMemory& memory) const override;

 private:
    QWidget* MakeContents();
    QWidget* MakeIndex();
    QWidget* MakeSearch();
    void Open(const QUrl& address);
    void Search();
    void ReadTexts();
    void Zoom(int steps);

    std::unique_ptr<QHelpEngine> engine_;
    std::vector<HelpText> texts_;  // of all pages, read when they are first looked through
    QTabWidget* tabs_ = nullptr;
    HelpBrowser* page_ = nullptr;
    QLineEdit* words_ = nullptr;
    QLineEdit* index_ = nullptr;
    QListWidget* hits_ = nullptr;
    int zoom_ = 0;
};

// The keys that the help is looked up by for a place in a window: its control, then the window itself.
QStringList HelpKeysOf(const QWidget* focus);

}  // namespace tallymar
