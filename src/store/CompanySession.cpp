#include "store/CompanySession.h"

#include <random>
#include <utility>

#include "platform/recordset/DatabaseFiles.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"
#include "store/Books.h"
#include "store/CompanyLimits.h"
#include "store/Schema.h"

namespace tallymar {

namespace {

constexpr std::string_view kNewCompanyName = "New Company";

}  // namespace

FileDialog CompanyFileDialog(std::string title, const std::filesystem::path& initialFolder) {
    return {.Title = std::move(title),
            .Filters = {{"All Files (*.*)", "*"}, {"Tallymar Data Files (*.mdb)", "*.mdb"}},
            .FilterIndex = 1,
            .InitialFolder = initialFolder,
            .FileName = {},
            .DefaultExtension = "mdb"};
}

// What is there only while a company is open; the recordsets go before their database.
struct CompanySession::Open {
    explicit Open(recordset::Database opened)
        : Database(std::move(opened)),
          Company(Database.OpenRecordset("Company")),
          Assets(Database.OpenRecordset("Assets")),
          Access(Assets) {
        Assets.SetIndex("AssetNum");
    }

    recordset::Database Database;
    recordset::Recordset Company;
    recordset::Recordset Assets;
    AssetRecordAccess Access;
};

CompanySession::CompanySession(AppPath appPath, UserProfile& profile) : appPath_(std::move(appPath)), profile_(profile) {}

CompanySession::~CompanySession() = default;

bool CompanySession::FileNew(Prompts& prompts) {
    const auto path = prompts.AskSaveFile(CompanyFileDialog("Create a New Tallymar Database", appPath_.Folder()));
    if (!path) return false;
    return NewCompany(*path);
}

bool CompanySession::NewCompany(const std::filesystem::path& path) {
    if (!FileClose()) return false;
    MakeCompany(path);
    recordset::Database database = recordset::Database::Open(path);
    if (trace_ != nullptr) database.TraceTo(*trace_);
    SetOpen(std::move(database), std::filesystem::absolute(path));
    NewCompanyPending = true;
    TellObserver();
    return true;
}

void CompanySession::MakeCompany(const std::filesystem::path& path, const std::function<void(recordset::Database&)>& fill) {
    recordset::DatabaseReplacement file(path);
    {
        recordset::Database database = recordset::Database::Create(file.Unfinished());
        CreateSchema(database);
        recordset::Recordset company = database.OpenRecordset("Company");
        company.AddNew();
        company.Set("Company", kNewCompanyName);
        company.Update();
        if (fill) fill(database);
    }
    file.PutInPlace();
}

bool CompanySession::FileOpen(Prompts& prompts) {
    FileDialog dialog = CompanyFileDialog("Open an Tallymar Database", appPath_.Folder());
    dialog.FileName = profile_.LastDataPath;
    const auto path = prompts.AskOpenFile(dialog);
    if (!path) return false;
    if (!OpenCompany(*path, prompts)) return false;
    RememberLastCompany();
    return true;
}

std::optional<std::filesystem::path> CompanySession::ChosenCompany(const std::filesystem::path& file, Prompts& prompts) const {
    // The company that is open is one, and must not be looked into: that would drop its locks.
    if (!chosenFile_ || IsSameFile(file, databaseFileName_)) return file;
    return chosenFile_(file, prompts);
}

bool CompanySession::OpenCompany(const std::filesystem::path& path, Prompts& prompts) {
    const auto company = ChosenCompany(std::filesystem::absolute(path), prompts);
    if (!company || !FileClose()) return false;
    recordset::Database database = recordset::Database::Open(*company);
    if (trace_ != nullptr) database.TraceTo(*trace_);
    UpgradeSchema(database, prompts);
    SetOpen(std::move(database), *company);
    TellObserver();
    return true;
}

void CompanySession::RememberLastCompany() {
    profile_.LastDataPath = databaseFileName_.string();
    profile_.Save(appPath_.Profile());
}

void CompanySession::SetOpen(recordset::Database database, const std::filesystem::path& path) {
    open_ = std::make_unique<Open>(std::move(database));
    databaseFileName_ = path;
}

bool CompanySession::FileClose() {
    if (observer_ != nullptr && !observer_->CompanyClosing()) return false;
    open_.reset();
    databaseFileName_.clear();
    NewCompanyPending = false;
    if (observer_ != nullptr) observer_->CompanyClosed();
    return true;
}

CompanySession::Open& CompanySession::Opened() {
    if (open_ == nullptr) throw PlatformError(Failure::CannotOpenFile, "No company is open");
    return *open_;
}

recordset::Database& CompanySession::Database() {
    return Opened().Database;
}

recordset::Recordset& CompanySession::CompanyRecordset() {
    return Opened().Company;
}

recordset::Recordset& CompanySession::AssetsRecordset() {
    return Opened().Assets;
}

AssetRecordAccess& CompanySession::Assets() {
    return Opened().Access;
}

recordset::Value CompanySession::CompanyValue(std::string_view column) {
    recordset::Recordset& company = CompanyRecordset();
    return company.HasCurrentRow() ? company.Get(column) : recordset::Value();
}

std::string CompanySession::CompanyName() {
    return CompanyValue("Company").ToText();
}

std::string CompanySession::RoundText() {
    return CompanyValue("Round").ToText();
}

Date CompanySession::FiscalYearEnd(int book) {
    const recordset::Value value = CompanyValue(BookOf(book).YearEndColumn);
    return value.IsDate() ? value.AsDate() : Date();
}

std::shared_ptr<const Law> CompanySession::LimitsByLaw() {
    if (LimitsOf(Database()) != Limits::ByLaw) return nullptr;
    return std::make_shared<const Law>(ReadLaw(appPath_.Folders()));
}

void CompanySession::TellObserver() {
    if (observer_ == nullptr) return;
    toldOfAssets_ = AssetCount() > 0;
    observer_->OpenEnable();
}

void CompanySession::AssetsChanged() {
    if (!IsOpen() || observer_ == nullptr || toldOfAssets_ == (AssetCount() > 0)) return;
    toldOfAssets_ = !toldOfAssets_;
    toldOfAssets_ ? observer_->OpenEnable() : observer_->LastAssetGone();
}

std::int64_t CompanySession::AssetCount() {
    return AssetsRecordset().RecordCount();
}

}  // namespace tallymar
