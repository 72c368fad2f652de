#pragma once

#include <optional>
#include <string>
#include <utility>

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
// The session writes through: whatever stands in the fields goes to the row when the asset is left. What cannot be written (a
// duplicate number, a text too long for its column, a full disk) is told with the entry that it is due to; the row then is as it
// was, and the asset stays on the screen with its entries. Some commands drop entries, and one deletes the asset: until the next
// of the kind the entries or the asset can be brought back.
class AssetEditSession {
 public:
    AssetEditSession(CompanySession& company, AssetEditState& state, Prompts& prompts);
    AssetEditSession(const AssetEditSession&) = delete;
    AssetEditSession& operator=(const AssetEditSession&) = delete;

    AssetFieldValues Values;
    std::string FieldHint;          // of the field that has the focus, with what the law says of it
    bool HintByLaw = false;         // the law says something of it
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

    // What happened on the way, for the status line; empty once it has been taken.
    struct Notice {
        std::string Text;
        bool IsWarning = false;
    };
    std::optional<Notice> TakeNotice() { return std::exchange(notice_, std::nullopt); }
    // The company's limits are those of the law.
    bool ByLaw();

    // The field with the entry that kept the last command from storing the asset.
    std::optional<AssetField> Offending;

    const AssetRecord& EditRecord() const { return editRecord_; }
    bool HasRow() const { return !editBookmark_.empty(); }
    // Something stands in the fields that is not stored.
    bool HasUnsaved() const { return HasRow() && Values != stored_; }

    // The place of the asset among all, counted from 1 in the order of the recordset; nullopt when it is not on the screen's
    // asset.
    struct Standing {
        std::int64_t Number;
        std::int64_t Count;
    };
    std::optional<Standing> Place();

    std::string Caption();
    // The first asset of a form just opened.
    void Open();
    // Fills Values from the row where the recordset stands; before the first or after the last row, from that one. With no rows
    // it does nothing.
    void LoadEdit();
    // False, after a message, when the asset could not be stored; so are the others, which then leave it on the screen.
    bool SaveEdit();

    bool First();
    bool Previous();
    bool Next();
    bool Last();

    void New();
    // Asks, and deletes the asset on the screen, whose entries vanish. True when it was the last one: the form then closes.
    bool Delete();
    // Goes back to what was kept last: the asset whose entries were dropped, with them in the fields, or the one deleted. False
    // when nothing is kept, or the asset on the screen cannot be left.
    bool BringBack();
    // The form is to go, however that was caused. False when it must stay: an entry cannot be stored. What the database does not
    // take for a reason of its own may be left unsaved, if the user says so.
    bool Leave();
    // The Close command: the same, and the next form starts where the recordset stands.
    bool Close();
    void CopyAsset() { state_.CopySourceAssetNum = Values.AssetNum; }

    // A build: saves, rebuilds into the record and the grid; false when the asset could not be stored or the company has no year
    // end, after a message.
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
    void Load(bool pending);
    bool Move(void (*step)(recordset::Recordset& assets));
    void TellRefusal(const PlatformError& refusal);
    // The asset on the screen, if something in its fields is not stored.
    std::optional<KeptAsset> Unsaved(bool pending) const;
    void Keep(KeptAsset asset, bool told = true);
    void TellKept();
    void KeepBadDates();
    void ShowAssetStatus();
    void SetMirrors();
    void ValidateAssetNum();
    FieldRuleContext Context();
    void AddLawHint(AssetField field, int book);

    CompanySession& company_;
    AssetEditState& state_;
    Prompts& prompts_;
    AssetRecord editRecord_;
    std::string editBookmark_;
    AssetFieldValues stored_;  // Values as they were loaded or last saved
    std::optional<Notice> notice_;
    bool businessUseSetMethods_ = false;  // since that field got the focus
};

}  // namespace tallymar
