#include "assets/AssetEditSession.h"

#include "assets/AssetRecordFields.h"
#include "assets/EntryProblem.h"
#include "assets/LawHints.h"
#include "assets/NewAsset.h"
#include "platform/runtime/Windows1252.h"
#include "store/Books.h"
#include "store/CompanyLimits.h"

namespace tallymar {

namespace {

constexpr std::string_view kTitle = "Tallymar";

// Moves to the row of a kept asset. The place of a row that has been deleted since may be another asset's now.
bool StandsAt(recordset::Recordset& assets, const KeptAsset& kept) {
    try {
        assets.SetBookmark(kept.Bookmark);
    } catch (const PlatformError& failure) {
        if (failure.Code() == Failure::InvalidBookmark) return false;
        throw;
    }
    return RTrim(assets.Get("AssetNum").ToText()) == kept.AssetNum;
}

}  // namespace

AssetEditSession::AssetEditSession(CompanySession& company, AssetEditState& state, Prompts& prompts)
    : company_(company), state_(state), prompts_(prompts) {}

std::string AssetEditSession::Caption() {
    return "Edit Asset Information for " + company_.CompanyName() + " with " + std::to_string(company_.AssetCount()) +
           " Assets in the database";
}

std::optional<AssetEditSession::Standing> AssetEditSession::Place() {
    if (!HasRow() || !company_.IsOpen()) return std::nullopt;
    const recordset::Recordset& assets = company_.AssetsRecordset();
    if (!assets.HasCurrentRow() || assets.Bookmark() != editBookmark_) return std::nullopt;
    return Standing{.Number = assets.RowsBefore() + 1, .Count = assets.RecordCount()};
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
    if (!state_.Kept.IsEmpty() && !state_.Kept.Last().Told) TellKept();
}

void AssetEditSession::LoadEdit() {
    Load(state_.NewAssetPending);
}

// pending: whether the asset that leaves the screen was new and not saved yet.
void AssetEditSession::Load(bool pending) {
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
    std::optional<KeptAsset> dropped = Unsaved(pending);
    editRecord_ = record;
    RecordToFields(editRecord_, Values);
    for (int book = kFirstBook; book <= kLastBook; ++book) ComputeAdjBasis(Values, book);
    ComputeGainLoss(Values, editRecord_);
    stored_ = Values;
    editBookmark_ = assets.Bookmark();
    state_.CurrentAssetNum = Values.AssetNum;
    Offending.reset();
    businessUseSetMethods_ = false;
    SetMirrors();
    state_.EditFormClosed = false;
    ShowAssetStatus();
    if (dropped) Keep(std::move(*dropped));
}

bool AssetEditSession::SaveEdit() {
    Offending.reset();
    if (editBookmark_.empty()) return true;
    AssetRecord record = editRecord_;
    try {
        FieldsToRecord(Values, record);
        company_.AssetsRecordset().SetBookmark(editBookmark_);
        company_.WriteAssetRecord(record);
    } catch (const PlatformError& refusal) {
        TellRefusal(refusal);
        return false;
    }
    editRecord_ = record;
    KeepBadDates();
    stored_ = Values;
    // A new number is what the form comes back to, unless Close has forgotten the asset.
    if (!state_.CurrentAssetNum.empty()) state_.CurrentAssetNum = Values.AssetNum;
    company_.AssetsChanged();
    TabFocusArmed = true;
    state_.NewAssetPending = false;
    return true;
}

void AssetEditSession::TellRefusal(const PlatformError& refusal) {
    std::string text = refusal.what() + std::string("\n\n(Error ") + std::to_string(refusal.Number()) + ")";
    if (const auto problem = FindEntryProblem(company_, Values, editBookmark_, refusal)) {
        Offending = problem->Field;
        text = problem->Text + "\n\n" + text;
    }
    prompts_.Message(text, kTitle, MessageKind::Error);
}

std::optional<KeptAsset> AssetEditSession::Unsaved(bool pending) const {
    if (!HasUnsaved()) return std::nullopt;
    return KeptAsset{.What = KeptAsset::Kind::Entries,
                     .AssetNum = std::string(editRecord_.AssetNum.Trimmed()),
                     .Bookmark = editBookmark_,
                     .Stored = stored_,
                     .Entered = Values,
                     .NewAssetPending = pending};
}

void AssetEditSession::Keep(KeptAsset asset, bool told) {
    asset.Told = told;
    state_.Kept.Keep(std::move(asset));
    if (told) TellKept();
}

void AssetEditSession::TellKept() {
    KeptAsset& kept = state_.Kept.Last();
    kept.Told = true;
    if (kept.What == KeptAsset::Kind::Deleted) {
        notice_ = {"Asset " + kept.AssetNum + " was deleted. Ctrl+Z brings it back"};
    } else {
        notice_ = {"Entries of " + kept.AssetNum + " were not saved. Ctrl+Z brings them back"};
    }
}

// A text that is no date is stored as none. Who leaves the asset from within the field has not been told.
void AssetEditSession::KeepBadDates() {
    AssetFieldValues read = Values;
    RecordToFields(editRecord_, read);
    for (const AssetFieldDef& field : AssetFields()) {
        if (field.Kind != FieldKind::Date || field.Place == FieldPlace::Book) continue;
        const std::string& entered = FieldValue<std::string>(Values, field, 0);
        if (RTrim(entered).empty() || !FieldValue<std::string>(read, field, 0).empty()) continue;
        const std::string number(editRecord_.AssetNum.Trimmed());
        Keep(
            {.What = KeptAsset::Kind::Entries, .AssetNum = number, .Bookmark = editBookmark_, .Stored = read, .Entered = Values});
        notice_ = {std::string(field.Label) + " of " + number + " is not a date: nothing was stored. Ctrl+Z brings it back",
                   true};
        return;
    }
}

bool AssetEditSession::Move(void (*step)(recordset::Recordset& assets)) {
    FieldHint.clear();
    if (!SaveEdit()) return false;
    step(company_.AssetsRecordset());
    LoadEdit();
    return true;
}

bool AssetEditSession::First() {
    return Move([](recordset::Recordset& assets) { assets.MoveFirst(); });
}

bool AssetEditSession::Last() {
    return Move([](recordset::Recordset& assets) { assets.MoveLast(); });
}

bool AssetEditSession::Next() {
    return Move([](recordset::Recordset& assets) {
        if (!assets.Eof()) assets.MoveNext();
        if (assets.Eof()) assets.MoveLast();
    });
}

bool AssetEditSession::Previous() {
    return Move([](recordset::Recordset& assets) {
        if (!assets.Bof()) assets.MovePrevious();
        if (assets.Bof()) assets.MoveFirst();
    });
}

void AssetEditSession::New() {
    AddNewAsset(company_, DefaultsOf(company_.Profile()));
    Load(std::exchange(state_.NewAssetPending, true));
}

bool AssetEditSession::Delete() {
    if (editBookmark_.empty()) return false;
    recordset::Recordset& assets = company_.AssetsRecordset();
    // Another window may have moved the recordset: the asset on the screen is meant.
    assets.SetBookmark(editBookmark_);
    KeptAsset deleted{.What = KeptAsset::Kind::Deleted,
                      .AssetNum = std::string(RTrim(assets.Get("AssetNum").ToText())),
                      .Stored = stored_,
                      .Entered = Values,
                      .NewAssetPending = state_.NewAssetPending};
    if (!prompts_.AskYesNo("Delete Asset " + deleted.AssetNum + "?", "Confirm")) return false;
    company_.ReadAssetRecord(deleted.Record);
    assets.Delete();
    editBookmark_.clear();
    const bool isLast = assets.RecordCount() == 0;
    Keep(std::move(deleted), !isLast);
    assets.MoveNext();
    company_.AssetsChanged();
    if (!isLast) {
        LoadEdit();
        return false;
    }
    return true;
}

bool AssetEditSession::BringBack() {
    if (state_.Kept.IsEmpty()) return false;
    KeptAsset kept = state_.Kept.TakeLast();
    if (!SaveEdit()) {
        state_.Kept.Keep(std::move(kept));
        return false;
    }
    recordset::Recordset& assets = company_.AssetsRecordset();
    try {
        if (kept.What == KeptAsset::Kind::Deleted) {
            company_.AddAssetRecord(kept.Record);
            assets.SetIndex("AssetNum");
            assets.Seek(kept.AssetNum);
        } else if (!StandsAt(assets, kept)) {
            prompts_.Message("Asset " + kept.AssetNum + " no longer exists", kTitle, MessageKind::Warning);
            assets.SetBookmark(editBookmark_);
            return false;
        }
        Load(false);
    } catch (const PlatformError& refusal) {
        // It could not come back now; what keeps it away (its number, taken since) may go.
        prompts_.Message("Asset " + kept.AssetNum + ": " + refusal.what(), kTitle, MessageKind::Warning);
        state_.Kept.Keep(std::move(kept));
        return false;
    }
    EnterAgain(kept, Values);
    for (int book = kFirstBook; book <= kLastBook; ++book) ComputeAdjBasis(Values, book);
    ComputeGainLoss(Values, editRecord_);
    state_.NewAssetPending = kept.NewAssetPending;
    SetMirrors();
    company_.AssetsChanged();
    notice_ = {kept.What == KeptAsset::Kind::Deleted ? "Asset " + kept.AssetNum + " is back"
                                                     : "Entries of " + kept.AssetNum + " are back"};
    return true;
}

bool AssetEditSession::Leave() {
    if (company_.IsOpen() && HasRow()) {
        const recordset::Recordset& assets = company_.AssetsRecordset();
        bool saved = false;
        if (!assets.Bof() && !assets.Eof()) {
            saved = SaveEdit();
            if (!saved && Offending) return false;
            if (!saved && !prompts_.AskYesNo("Close without saving the entries of " + Values.AssetNum + "?", kTitle))
                return false;
        }
        if (saved && notice_ && !state_.Kept.IsEmpty()) state_.Kept.Last().Told = false;
        if (!saved) {
            if (auto unsaved = Unsaved(state_.NewAssetPending)) Keep(std::move(*unsaved), false);
        }
    }
    editBookmark_.clear();
    state_.EditFormClosed = true;
    return true;
}

bool AssetEditSession::Close() {
    if (!Leave()) return false;
    state_.CurrentAssetNum.clear();
    return true;
}

bool AssetEditSession::Build(ADepre& engine, DeprBuildGrid& grid) {
    if (!SaveEdit()) return false;
    company_.ReadAssetRecord(editRecord_);
    const Date yearEnd = company_.FiscalYearEnd(kFirstBook);
    if (!CanBuild(yearEnd)) {
        prompts_.Message(kYearEndsMissing, kTitle, MessageKind::Warning);
        return false;
    }
    engine.BeginRun(company_.RoundText(), company_.LimitsByLaw());
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
    const bool isBusinessUse = field == AssetField::BusinessUse;
    const PerBook<BookFieldValues> before = isBusinessUse ? Values.Book : PerBook<BookFieldValues>();
    ApplyChange(Values, field, book, Context(), editRecord_);
    if (isBusinessUse) {
        // The first digits of a 100 do it too, and the method stays: it is said until the field is left.
        businessUseSetMethods_ = businessUseSetMethods_ || Values.Book != before;
        if (businessUseSetMethods_) notice_ = {std::string(kBusinessUseSetMethods), true};
    }
    const AssetFieldDef& def = FieldDef(field);
    if (def.HintOnChange) FieldHint = def.Hint;
}

bool AssetEditSession::Focused(AssetField field, int book) {
    const AssetFieldDef& def = FieldDef(field);
    if (!def.Hint.empty()) FieldHint = def.Hint;
    AddLawHint(field, book);
    businessUseSetMethods_ = false;
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

bool AssetEditSession::ByLaw() {
    try {
        return company_.IsOpen() && LimitsOf(company_.Database()) == Limits::ByLaw;
    } catch (const PlatformError&) {
        return false;  // computing tells it
    }
}

// A table that cannot be read is told where it would have spoken: entering goes on.
void AssetEditSession::AddLawHint(AssetField field, int book) {
    HintByLaw = false;
    if (!ByLaw()) return;
    std::string hint;
    try {
        hint = LawHint(*company_.LimitsByLaw(), Values, field, company_.FiscalYearEnd(std::max(book, kFirstBook)));
    } catch (const PlatformError& failure) {
        hint = failure.what();
    }
    if (hint.empty()) return;
    HintByLaw = true;
    const std::string_view own = FieldDef(field).Hint;
    FieldHint = own.empty() ? hint : std::string(own) + ". " + hint;
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
    // By Enter or a key of the tabs too: a heading with the number that was there before would be another asset's.
    if (tab != kGeneralTab) SetMirrors();
    if (TabFocusArmed) {
        FieldHint.clear();
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
