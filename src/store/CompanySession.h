#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "law/Law.h"
#include "platform/prompts/Prompts.h"
#include "platform/recordset/Database.h"
#include "platform/recordset/Recordset.h"
#include "store/AppPath.h"
#include "store/AssetRecordAccess.h"
#include "store/UserProfile.h"

namespace tallymar {

// The dialog that every choice of a company file starts from.
FileDialog CompanyFileDialog(std::string title, const std::filesystem::path& initialFolder);

// Who has windows on the session: told before the company goes and after one has come.
class SessionObserver {
 public:
    virtual ~SessionObserver() = default;
    // Every window on the company must let go of it now. False when one cannot: the company then stays open.
    virtual bool CompanyClosing() = 0;
    virtual void CompanyClosed() = 0;
    virtual void OpenEnable() = 0;  // a company is open, or its first asset has been saved
    virtual void LastAssetGone() = 0;
};

// The one open company. The database file name is empty when there is none; that is also the test for it.
class CompanySession {
 public:
    CompanySession(AppPath appPath, UserProfile& profile);
    ~CompanySession();
    CompanySession(const CompanySession&) = delete;
    CompanySession& operator=(const CompanySession&) = delete;

    void SetObserver(SessionObserver* observer) { observer_ = observer; }
    // Asked first, with a file that is to be opened: gives the company's path, which for a file of another kind may be another's;
    // nullopt when nothing is to be opened.
    using ChosenFile = std::function<std::optional<std::filesystem::path>(const std::filesystem::path&, Prompts&)>;
    void SetChosenFile(ChosenFile chosenFile) { chosenFile_ = std::move(chosenFile); }
    // The company that a command is to use for a file that was chosen: what ChosenFile gives, or the file itself where it is the
    // open company.
    std::optional<std::filesystem::path> ChosenCompany(const std::filesystem::path& file, Prompts& prompts) const;
    // For the companies opened from here on; nullptr for none. It must outlast the session.
    void SetTrace(Trace* trace) { trace_ = trace; }

    // False when the observer keeps the company open: nothing has happened then. The same holds for all that open another.
    bool FileClose();
    // Each asks for a file; false when that is cancelled, and then the company that is open stays so. A failure of the database
    // reaches the caller as PlatformError, with no company open.
    bool FileNew(Prompts& prompts);
    bool FileOpen(Prompts& prompts);
    // The same without a dialog.
    bool NewCompany(const std::filesystem::path& path);
    bool OpenCompany(const std::filesystem::path& path, Prompts& prompts);
    // Makes the open company the one that the next start offers, as FileOpen does; a profile that cannot be written is passed
    // over.
    void RememberLastCompany();
    // A new company file of that path, made beside an earlier one and put in its place when it is whole: the two tables, and the
    // company's row, which knows no more than "New Company". `fill` may put more into it before. Failures as DatabaseReplacement.
    static void MakeCompany(const std::filesystem::path& path, const std::function<void(recordset::Database&)>& fill = {});

    bool IsOpen() const { return !databaseFileName_.empty(); }
    const std::filesystem::path& DatabaseFileName() const { return databaseFileName_; }

    // Failure::CannotOpenFile when no company is open, for all of these.
    recordset::Database& Database();
    recordset::Recordset& CompanyRecordset();
    recordset::Recordset& AssetsRecordset();
    void ReadAssetRecord(AssetRecord& record) { Assets().ReadAssetRecord(record); }
    void WriteAssetRecord(const AssetRecord& record) { Assets().WriteAssetRecord(record); }
    void WriteComputed(const AssetRecord& record, int book) { Assets().WriteComputed(record, book); }
    void AddAssetRecord(const AssetRecord& record) { Assets().AddAssetRecord(record); }

    // A company table that has lost its row reads as if its row were empty, until the profile form adds one.
    std::string CompanyName();
    std::string RoundText();       // "True" or "False", as the rounding of amounts is told it
    Date FiscalYearEnd(int book);  // date 0 when the profile holds none
    std::int64_t AssetCount();
    // The law that the company's limits go by, as the tables are now; nullptr for a company whose limits are those delivered with
    // the program. Failures as LimitsOf and ReadLaw.
    std::shared_ptr<const Law> LimitsByLaw();

    // For a command that has saved or deleted assets: the observer hears of the first and of the last.
    void AssetsChanged();

    // From the creation of a company until its first profile has been closed.
    bool NewCompanyPending = false;

    const AppPath& Paths() const { return appPath_; }
    UserProfile& Profile() { return profile_; }

 private:
    struct Open;

    Open& Opened();
    AssetRecordAccess& Assets();
    recordset::Value CompanyValue(std::string_view column);
    void TellObserver();
    void SetOpen(recordset::Database database, const std::filesystem::path& path);

    AppPath appPath_;
    UserProfile& profile_;
    SessionObserver* observer_ = nullptr;
    bool toldOfAssets_ = false;
    ChosenFile chosenFile_;
    Trace* trace_ = nullptr;
    std::filesystem::path databaseFileName_;
    std::unique_ptr<Open> open_;
};

}  // namespace tallymar
