#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "assets/AssetEditSession.h"
#include "assets/frmAssetControls.h"
#include "platform/controls/CSForm.h"
#include "platform/controls/QtPrompts.h"

class QLabel;
class QPushButton;
class QTabWidget;
class QTimer;
class QToolButton;

namespace tallymar {

class AssetMirrors;

// "Edit Asset Information": one asset at a time, in six tabs.
class frmEditAsset : public CSForm {
    Q_OBJECT

 public:
    // prompts: who answers in the place of the form's own dialogs; nullptr for those.
    frmEditAsset(CompanySession& company, AssetEditState& state, ADepre& engine, Prompts* prompts = nullptr,
                 QWidget* parent = nullptr);

    // For other windows that have moved the company's recordset.
    void LoadEdit();

    const AssetFieldValues& Values() const { return edit_.Values; }

 signals:
    void FindWanted();
    void CopyWanted();
    void ValuesShown();  // the fields show what they did not show before
    // For the main window's status bar: "12 of 73"; whether entries stand here that are not stored.
    void PlaceShown(const QString& place);
    void UnsavedShown(bool unsaved);

 protected:
    bool OnPage(Page page) override;
    void OnFieldFocus(QWidget* field) override;
    bool MayUnload() override;
    bool MayTurn(QWidget* left) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    // A picture that is dropped here is the asset's; other files are the main window's.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    QWidget* MakeGeneralPage();
    QWidget* MakeSalePage();
    QWidget* MakeArrows();
    QWidget* MakeCommands();
    QPushButton* MakeCommand(const AssetCommandDef& command, const std::function<void()>& action);
    QToolButton* MakeArrow(const AssetCommandDef& command, bool right, bool toEnd, bool (AssetEditSession::*step)());

    void ShowAll();
    void ShowCaption();
    void ShowPictureCommand();
    void ShowBookMarks();
    void ShowPlace();
    void SetPicture(const std::optional<std::string>& name);
    // Takes the outcome of a command to the screen: what happened to the status line, the keyboard to the entry that could not be
    // stored, if there was one.
    void ShowOutcome();
    bool ShowTab(int tab);
    void OnTabChanged(int tab);
    void FocusField(AssetField field);
    void FocusTab();
    void Move(bool (AssetEditSession::*step)());
    void BringBack();
    void Delete();
    void Build();
    void ViewPicture();

    CompanySession& company_;
    AssetEditState& state_;
    ADepre& engine_;
    QtPrompts ownPrompts_;
    Prompts& prompts_;
    AssetEditSession edit_;
    AssetControls controls_;
    std::vector<QWidget*> focusOrder_;
    std::vector<AssetMirrors*> mirrors_;
    QTabWidget* SSTab1_ = nullptr;
    QLabel* MsgLabel_ = nullptr;
    QPushButton* cmdView_ = nullptr;
    QTimer* placing_ = nullptr;
    PerBook<QString> bookMarks_;  // what the tab of a book says to differ
    bool unsavedShown_ = false;
    int shownTab_ = kGeneralTab;
    bool opened_ = false;
    bool enterMoves_ = false;  // Enter or an arrow is what moves the focus, not Tab
};

}  // namespace tallymar
