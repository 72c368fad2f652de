#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <vector>

#include <QMainWindow>

#include "assets/AssetEditState.h"
#include "engine/ADepre.h"
#include "platform/controls/QtPrompts.h"
#include "shell/MenuTable.h"
#include "store/CompanySession.h"

class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace tallymar {

class CSForm;
class frmBatchForm;
class frmHelp;
class frmReportOptions;
class Looks;
class WindowMemory;

// The main window: menu, toolbar, status line and the child windows. It owns the session, the user profile and the engine, and
// every command goes through its one dispatcher.
//
// A child window that comes up alone fills the frame, and so does what is opened over one that does. The menu is reached from
// every form: by Alt and then a letter, by Alt+Shift and the letter, or by F10 and the arrows; Alt with a letter is a form's own
// command first. A company that is dropped here is opened.
class Tallymar : public QMainWindow, private SessionObserver {
    Q_OBJECT

 public:
    explicit Tallymar(AppPath paths);
    ~Tallymar() override;

    CompanySession& Session() { return session_; }
    // Of what the company's recordsets and the engine do from the next company on; it must outlast the window.
    void SetTrace(Trace* trace) {
        session_.SetTrace(trace);
        engine_.SetTrace(trace);
    }

    // Whose colours the window menu offers; the ones chosen last are taken at once. It must outlast the window.
    void SetLooks(Looks& looks);

    // Asks by frmInit for the first company. False when the program is to end.
    bool AskFirstCompany();
    // Opens a company as the Open command would have. False, after its message, when that failed.
    bool OpenFirstCompany(const std::filesystem::path& path);

    // The dispatcher. A command without a route, or one that is off, does nothing.
    void Run(Command command, int index = 0);
    bool HasWindow(Command command) const { return routes_.contains(command); }

    // The asset form and every command that goes over many assets move the one shared recordset, so the asset form is unloaded
    // before such a command and shown again after it.
    bool EditFormClosed() const;
    bool UnloadEditForm();  // false when it stays, since what stands in it cannot be saved: the command must not go on then
    void ReopenEditForm();

 protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    using Route = std::function<void(int index)>;

    // When the asset form comes back from a batch command.
    enum class Reopen { IfItWasOpen, Always };

    void MakeRoutes();
    // Shows the window of a batch command, with the asset form away from its opening to its closing and during each run.
    void ShowBatch(const QString& name, Reopen reopen, const std::function<frmBatchForm*()>& make);
    // Runs a command that moves the recordset or posts, with the asset form away; it comes back when it was there.
    void WithoutEditForm(const std::function<void()>& command);
    // The import's window over another, with which the first assets, or the company's name, may come.
    void ImportAssets(QWidget* over);
    void ShowDone(const std::string& done);
    void RunPostReport(const std::function<void(frmReportOptions&)>& prepare);
    void MakeMenus();
    void MakeKeys();
    void MakeToolbar();
    void MakeStatusBar();
    void SetIcons();
    void ApplyEnabled(const SessionState& state);
    void FillWindowMenu();
    void FillRecentMenu();
    void RememberCompany();
    void ForgetCompany(const std::string& file);
    std::vector<std::string> RecentCompanies() const;
    // The caption and the status bar: what the company is called and when its years end.
    void ShowCaption();
    void ShowPlace(const QString& place);
    void ShowUnsaved(bool unsaved);
    void RecallPlace();
    void RememberPlace();

    bool FileNew(QWidget* over);
    bool FileOpen(QWidget* over);
    // As the Open command would, with the file chosen already.
    void OpenChosen(const std::filesystem::path& path);

    void EditAsset();
    void AllBooks();
    void FindAsset();
    void CopyAsset(QWidget* over);
    void CreateForm(std::string_view form);    // "4562"
    void ViewForm(std::string_view pageCode);  // "245621"
    void ShowUpdate();
    // Shows the help over the window that has the keyboard: one that is modal keeps the others from being used.
    void ShowHelp(const std::function<void(frmHelp&)>& show);

    CSForm* Child(const QString& name) const;
    void ShowChild(CSForm* form);
    bool CloseFrame(QMdiSubWindow* window);  // false when it stays
    void Activate(CSForm* form);
    // Brings the window of that name to the front, or makes it.
    void ShowOrMake(const QString& name, const std::function<CSForm*()>& make);

    bool CompanyClosing() override;
    void CompanyClosed() override;
    void OpenEnable() override;
    void LastAssetGone() override;

    UserProfile profile_;
    CompanySession session_;
    ADepre engine_;
    AssetEditState editState_;
    QtPrompts prompts_;
    std::map<Command, Route> routes_;

    struct Switched {
        QAction* Action;
        Command Asks;
        EnabledWhen When;
        QString Tip;
    };
    // Off with the reason in its tip; on, without one.
    static void Switch(const Switched& one, std::string_view whyOff);

    std::vector<Switched> switched_;
    WindowMemory* memory_;
    QString caption_;
    QMdiArea* area_ = nullptr;
    QMenu* windowMenu_ = nullptr;
    QMenu* recentMenu_ = nullptr;
    QList<QAction*> windowList_;  // of the window menu
    QLabel* lblCompany_ = nullptr;
    QLabel* lblYearEnds_ = nullptr;
    QLabel* lblPlace_ = nullptr;
    QLabel* lblUnsaved_ = nullptr;
    bool closing_ = false;
};

}  // namespace tallymar
