#pragma once

#include <functional>
#include <optional>
#include <string>

#include "assets/AssetEditState.h"
#include "assets/AssetFieldValues.h"
#include "assets/AssetFields.h"
#include "assets/DeprBuild.h"
#include "assets/FieldRules.h"
#include "engine/ADepre.h"
#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

namespace tallymar {

// One asset on the screen: how it comes from its row into the fields and back, the moves through the company, and what the
// fields' events lead to. The window moves Values to and from its controls and reports what its user does; everything else is
// here.
//
// The session writes through: whatever stands in the fields goes to the row when the asset is left, and there is no way back. A
// row that cannot be written (a duplicate number, a text too long for its column, a full disk) fails with the database's
// PlatformError: the row then is as it was, the entry stays in the fields and the asset on the screen.
class AssetEditSession {
 public:
    AssetEditSession(CompanySession& company, AssetEditState& state, Prompts& prompts);
    AssetEditSession(const AssetEditSession&) = delete;
    AssetEditSession& operator=(const AssetEditSession&) = delete;

    AssetFieldValues Values;
    std::string FieldHint;          // of the field that has the focus
    bool TabFocusArmed = false;     // a change of tab moves the focus to the new tab's first field
    bool AssetNumRejected = false;  // the last validation of the number refused a duplicate
    int Tab = kGeneralTab;          // the tab shown; rules may change it
    std::string MsgLabel{kInitialStatusText};

    // The read-only repetition on tabs 1 to 5, which follows the fields on a load and a change of tab.
    struct MirrorTexts {
        std::string AssetNum;
        std::string Description;
        std::string InService;
    };
    MirrorTexts Mirrors;

    // Told when the main window's Find command and button are to be switched.
    std::function<void(bool)> OnFindEnable;

    const AssetRecord& EditRecord() const { return editRecord_; }
    bool HasRow() const { return !editBookmark_.empty(); }

    std::string Caption();
    // The first asset of a form just opened.
    void Open();
    // Fills Values from the row where the recordset stands; before the first or behind the last row, from that one. With no rows
    // it does nothing.
    void LoadEdit();
    void SaveEdit();

    void First();
    void Previous();
    void Next();
    void Last();

    void New();
    // Asks, and deletes the asset on the screen, whose entries vanish. True when it was the last one: the form then closes.
    bool Delete();
    // The Close command: the next form starts where the recordset stands.
    void Close();
    // The form goes, however that was caused. What cannot be saved is lost, after a message unless its failure has been shown
    // already.
    void Unload();
    void CopyAsset() { state_.CopySourceAssetNum = Values.AssetNum; }

    // A build: saves, rebuilds into the record and the grid; false when the company has no year end, after a message.
    bool Build(ADepre& engine, DeprBuildGrid& grid);
    // What the preparer answered to the build shown.
    void FinishBuild(bool cancelled);

    // A field's new value stands in Values; others may change with it.
    void Changed(AssetField field, int book = 0);
    // Returns true when all of the field's text is to be selected.
    bool Focused(AssetField field, int book = 0);
    void Left(AssetField field);
    // Another tab is shown; the field that gets the focus, if one does.
    std::optional<AssetField> TabChanged(int tab);

 private:
    void ShowAssetStatus();
    void SetMirrors();
    void ValidateAssetNum();
    FieldRuleContext Context();

    CompanySession& company_;
    AssetEditState& state_;
    Prompts& prompts_;
    AssetRecord editRecord_;
    std::string editBookmark_;
    std::optional<AssetFieldValues> unsavable_;  // entries whose failure has been shown
};

}  // namespace tallymar
