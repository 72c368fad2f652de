#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "interchange/AssetImport.h"
#include "platform/controls/CSForm.h"
#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

class QCheckBox;
class QLayout;
class QProgressBar;

namespace tallymar {

class CSCmdBtn;

// What the windows that import or export assets have in common: the foot with the progress of a run, the status line and the
// buttons; runs that leave what came of them on the screen; and for imports the check of a file and the choice to take it whole
// or not at all. The windows are modal, since a run moves the company's one recordset.
class frmExchangeForm : public CSForm {
    Q_OBJECT

 protected:
    frmExchangeForm(const char* name, const QString& title, CompanySession& session, QWidget* parent);

    CompanySession& Session() const { return session_; }

    // The foot: the progress bar, then the status line with the commands and the button that closes the window.
    QLayout* MakeFoot(const QList<CSCmdBtn*>& commands, const QString& closeCaption);

    // Runs it with the progress bar. A failure goes on to the caller and leaves its first line on the status line. When the run
    // has ended, either way, the closing button says that there is nothing left to cancel.
    void Run(const std::function<void(Prompts&)>& command);

    // How an import window's runs go.
    struct ImportWays {
        std::function<std::optional<std::filesystem::path>(Prompts&)> AskFile;
        // nullopt when it was refused, after its message.
        std::function<std::optional<ImportCounts>(const std::filesystem::path&, ImportEnding, Prompts&, const ImportProgress&)>
            Import;
        std::function<void(const ImportCounts&)> ShowCounts;  // so far: while it runs, and when it has failed
        std::function<void(const std::filesystem::path&)> ShowFile;
        std::function<void(const ImportCounts&)> ShowDone;
        std::function<void()> ShowCancelled;
    };
    void SetImportWays(ImportWays ways) { ways_ = std::move(ways); }
    // "All or nothing", and the command that reads a file and says what would become of it.
    QCheckBox* MakeAllOrNothing();
    CSCmdBtn* MakeCheckFile();
    void ImportNow();
    // Reads a file, lists what would become of it, and imports it when its user wants that.
    void CheckFile();

 private:
    void Take(const std::filesystem::path& file);
    ImportEnding ChosenEnding() const;  // of a window without that choice, all or nothing

    CompanySession& session_;
    ImportWays ways_;
    QProgressBar* progressBar_ = nullptr;
    CSCmdBtn* cmdCancel_ = nullptr;
    QCheckBox* chkAllOrNothing_ = nullptr;
};

}  // namespace tallymar
