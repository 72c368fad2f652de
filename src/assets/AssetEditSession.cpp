#include "assets/AssetEditSession.h"

#include "assets/AssetRecordFields.h"
#include "assets/NewAsset.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::string_view kTitle = "Tallymar";

}  // namespace

AssetEditSession::AssetEditSession(CompanySession& company, AssetEditState& state, Prompts& prompts)
    : company_(company), state_(state), prompts_(prompts) {}

std::string AssetEditSession::Caption() {
    return "Edit Asset Information for " + company_.CompanyName() + " with " + std::to_string(company_.AssetCount()) +
           " Assets in the database";
}

void AssetEditSession::Open() {
    recordset::Recordset& assets = company_.AssetsRecordset();
    if (assets.RecordCount() == 0) {
        New();
    } else {
        if (!state_.CurrentAssetNum.empty()) assets.Seek(state_.CurrentAssetNum);
        LoadEdit();
    }
    state_.EditFormClosed = false;
}

void AssetEditSession::LoadEdit() {
    recordset::Recordset& assets = company_.AssetsRecordset();
    if (!assets.HasCurrentRow()) {
        if (assets.Eof()) {
            assets.MoveLast();
        } else {
            assets.MoveFirst();
        }
        if (!assets.HasCurrentRow()) return;
    }
    // A row that cannot be read leaves the asset on the screen whole.
    AssetRecord record;
    company_.ReadAssetRecord(record);
    editRecord_ = record;
    RecordToFields(editRecord_, Values);
    for (int book = kFirstBook; book <= kLastBook; ++book) ComputeAdjBasis(Values, book);
    ComputeGainLoss(Values, editRecord_);
    editBookmark_ = assets.Bookmark();
    state_.CurrentAssetNum = Values.AssetNum;
    unsavable_.reset();
    SetMirrors();
    state_.EditFormClosed = false;
    ShowAssetStatus();
}

void AssetEditSession::SaveEdit() {
    if (editBookmark_.empty()) return;
    AssetRecord record = editRecord_;
    FieldsToRecord(Values, record);
    try {
        company_.AssetsRecordset().SetBookmark(editBookmark_);
        company_.WriteAssetRecord(record);
    } catch (const PlatformError&) {
        unsavable_ = Values;
        throw;
    }
    editRecord_ = record;
    unsavable_.reset();
    // A new number is what the form comes back to, unless Close has forgotten the asset.
    if (!state_.CurrentAssetNum.empty()) state_.CurrentAssetNum = Values.AssetNum;
    if (OnFindEnable) OnFindEnable(true);
    TabFocusArmed = true;
    state_.NewAssetPending = false;
}

void AssetEditSession::First() {
    FieldHint.clear();
    SaveEdit();
    company_.AssetsRecordset().MoveFirst();
    LoadEdit();
}

void AssetEditSession::Last() {
    FieldHint.clear();
    SaveEdit();
    company_.AssetsRecordset().MoveLast();
    LoadEdit();
}

void AssetEditSession::Next() {
    FieldHint.clear();
    SaveEdit();
    recordset::Recordset& assets = company_.AssetsRecordset();
    if (!assets.Eof()) assets.MoveNext();
    if (assets.Eof()) assets.MoveLast();
    LoadEdit();
}

void AssetEditSession::Previous() {
    FieldHint.clear();
    SaveEdit();
    recordset::Recordset& assets = company_.AssetsRecordset();
    if (!assets.Bof()) assets.MovePrevious();
    if (assets.Bof()) assets.MoveFirst();
    LoadEdit();
}

void AssetEditSession::New() {
    AddNewAsset(company_, DefaultsOf(company_.Profile()));
    state_.NewAssetPending = true;
    LoadEdit();
}

bool AssetEditSession::Delete() {
    if (editBookmark_.empty()) return false;
    recordset::Recordset& assets = company_.AssetsRecordset();
    // Another window may have moved the recordset: the asset on the screen is meant.
    assets.SetBookmark(editBookmark_);
    if (!prompts_.AskYesNo("Delete Asset " + std::string(RTrim(assets.Get("AssetNum").ToText())) + "?", "Confirm")) return false;
    assets.Delete();
    editBookmark_.clear();
    assets.MoveNext();
    if (assets.RecordCount() > 0) {
        LoadEdit();
        return false;
    }
    if (OnFindEnable) OnFindEnable(false);
    return true;
}

void AssetEditSession::Close() {
    state_.EditFormClosed = true;
    state_.CurrentAssetNum.clear();
}

void AssetEditSession::Unload() {
    state_.EditFormClosed = true;
    if (company_.IsOpen() && !company_.AssetsRecordset().Bof() && !company_.AssetsRecordset().Eof()) {
        const bool shown = unsavable_ == Values;
        try {
            SaveEdit();
        } catch (const PlatformError& failure) {
            if (!shown) prompts_.Message(failure.what(), kTitle, MessageKind::Error);
        }
    }
    editBookmark_.clear();
}

bool AssetEditSession::Build(ADepre& engine, DeprBuildGrid& grid) {
    SaveEdit();
    company_.ReadAssetRecord(editRecord_);
    const Date yearEnd = company_.FiscalYearEnd(kFirstBook);
    if (!CanBuild(yearEnd)) {
        prompts_.Message(kYearEndsMissing, kTitle, MessageKind::Warning);
        return false;
    }
    engine.BeginRun(company_.RoundText());
    BuildDepreciation(editRecord_, yearEnd, engine, grid);
    return true;
}

void AssetEditSession::FinishBuild(bool cancelled) {
    if (cancelled) return;
    company_.AssetsRecordset().SetBookmark(editBookmark_);
    company_.WriteAssetRecord(editRecord_);
    LoadEdit();
}

FieldRuleContext AssetEditSession::Context() {
    return {.NewAssetPending = state_.NewAssetPending, .Defaults = DefaultsOf(company_.Profile())};
}

void AssetEditSession::Changed(AssetField field, int book) {
    ApplyChange(Values, field, book, Context(), editRecord_);
    const AssetFieldDef& def = FieldDef(field);
    if (def.HintOnChange) FieldHint = def.Hint;
}

bool AssetEditSession::Focused(AssetField field, int book) {
    const AssetFieldDef& def = FieldDef(field);
    if (!def.Hint.empty()) FieldHint = def.Hint;
    if (def.Arming != TabArming::None) {
        TabFocusArmed = def.Arming == TabArming::Arms;
        Tab = def.Place == FieldPlace::General ? kGeneralTab : def.Place == FieldPlace::Sale ? kSaleTab : book;
    }
    switch (field) {
        case AssetField::DeprMethod:
            if (book == kFirstBook) ApplyStockAndCollectible(Values, state_.NewAssetPending);
            return false;
        case AssetField::InService:
            return ApplyInServiceFocus(Values);
        case AssetField::SoldAmount:
        case AssetField::SoldExpense:
            ComputeGainLoss(Values, editRecord_);
            return false;
        default:
            return false;
    }
}

void AssetEditSession::Left(AssetField field) {
    if (field == AssetField::ClassLife) ApplyClassLife(Values);
    if (field == AssetField::AssetNum) ValidateAssetNum();
}

void AssetEditSession::ValidateAssetNum() {
    AssetNumRejected = false;
    const std::string_view stored = editRecord_.AssetNum.Trimmed();
    if (state_.NewAssetPending || !HasRow() || UCase(RTrim(Values.AssetNum)) == UCase(stored)) return;
    recordset::Recordset& assets = company_.AssetsRecordset();
    assets.Seek(Values.AssetNum);
    const bool taken = !assets.NoMatch();
    assets.SetBookmark(editBookmark_);
    if (!taken) return;
    prompts_.Message("Asset Number already exists. Use a different number", kTitle, MessageKind::Warning);
    Values.AssetNum = stored;
    AssetNumRejected = true;
    Tab = kGeneralTab;
}

std::optional<AssetField> AssetEditSession::TabChanged(int tab) {
    Tab = tab;
    std::optional<AssetField> focus;
    if (TabFocusArmed) {
        FieldHint.clear();
        if (tab != kGeneralTab) SetMirrors();
        focus = tab == kGeneralTab ? AssetField::AssetNum : tab == kSaleTab ? AssetField::DateSold : AssetField::DeprType;
        ComputeGainLoss(Values, editRecord_);
    }
    ShowAssetStatus();
    return focus;
}

void AssetEditSession::ShowAssetStatus() {
    if (Tab == kGeneralTab || Tab == kSaleTab) MsgLabel = AssetStatusText(Values, editRecord_);
}

void AssetEditSession::SetMirrors() {
    Mirrors = {Values.AssetNum, Values.Description, Values.InService};
}

}  // namespace tallymar
