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
class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace tallymar {

class CSForm;
class frmReportOptions;

// The main window: menu, toolbar, status line and the child windows. It owns the session, the user profile and the engine, and
// every command goes through its one dispatcher.
class Tallymar : public QMainWindow, private SessionObserver {
    Q_OBJECT

 public:
    explicit Tallymar(AppPath paths);
    ~Tallymar() override;

    CompanySession& Session() { return session_; }

    // Asks by frmInit for the first company. False when the program is to end.
    bool AskFirstCompany();
    // Opens a company as the Open command would have. False, after its message, when that failed.
    bool OpenFirstCompany(const std::filesystem::path& path);

    // The dispatcher. A command without a route, or one that is off, does nothing.
    void Run(Command command, int index = 0);
    bool HasWindow(Command command) const { return routes_.contains(command); }

    // The asset form and every command that goes over many assets move the one shared recordset, so a batch form closes the asset
    // form when it opens and shows it again when it closes.
    bool EditFormClosed() const;
    bool UnloadEditForm();  // was it open?
    void ReopenEditForm();

    // The Find menu item and button go with the first and the last asset, without the other commands.
    void SetFindEnabled(bool enabled);

 protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    using Route = std::function<void(int index)>;

    void MakeRoutes();
    void RunPostReport(const std::function<void(frmReportOptions&)>& prepare);
    void MakeMenus();
    void MakeToolbar();
    void SetIcons();
    void ApplyEnabled(const SessionState& state);
    void FillWindowMenu();
    void ShowCaption();

    bool FileNew(QWidget* over);
    bool FileOpen(QWidget* over);

    void EditAsset();
    void FindAsset();
    void CopyAsset(QWidget* over);

    CSForm* Child(const QString& name) const;
    void ShowChild(CSForm* form);
    void CloseFrame(QMdiSubWindow* window);
    void Activate(CSForm* form);
    // Brings the window of that name to the front, or makes it.
    void ShowOrMake(const QString& name, const std::function<CSForm*()>& make);

    void CompanyClosing() override;
    void CompanyClosed() override;
    void OpenEnable() override;

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
    };
    std::vector<Switched> switched_;
    QMdiArea* area_ = nullptr;
    QMenu* windowMenu_ = nullptr;
    bool closing_ = false;
};

}  // namespace tallymar
