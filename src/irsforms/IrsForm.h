#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "irsforms/FormLines.h"
#include "irsforms/FormOutput.h"
#include "irsforms/WorkFile.h"
#include "platform/prompts/Prompts.h"
#include "platform/runtime/JsonWriter.h"
#include "store/CompanySession.h"

namespace tallymar {

// The tax year whose forms these are.
inline constexpr std::string_view kFormYear = "2002";

// What a form says of itself: its window, its pages and the name that the command line tool knows it by.
struct FormInfo {
    std::string_view Name;           // "4562"
    std::string_view Title;          // "Form 4562"
    std::string_view Window;         // "frmCreate4562"
    std::string_view WindowTitle;    // "Create Form 4562"
    std::string_view CreateButton;   // "cmdCreate4562"
    std::string_view CreateCaption;  // "Create 4562"
    std::string_view EditButton;
    std::string_view EditCaption;
    std::string_view TypeCaption;             // empty: the form asks for no entity type
    std::span<const std::string_view> Pages;  // codes, the first page first
    bool PageForEachAsset = false;            // the one code is followed by a number of two digits
};

inline constexpr auto kEntityTypes = std::to_array<std::string_view>({"1040", "1041", "1120", "1120S", "1065"});

struct FormOptions {
    int Book = kFirstBook;
    std::string Type = {};        // of kEntityTypes, in any letter case and between blanks; blank: none told
    std::string Division = {};    // blank: all
    std::string Department = {};  // blank: all
};

// An asset, or a part of it, that the form does not carry, and why.
struct LeftOut {
    std::string AssetNum;
    std::string Reason;
    CurrencyAmount Amount;      // of its current depreciation; 0 where another figure is meant, which the reason names
    std::string Together = {};  // assets that share this text are told in one line: "the 11th amortization on"
};

// The current depreciation of the assets chosen: all of it, what stands on the form, and what was left out. The first is the sum
// of the other two.
struct DepreciationSums {
    CurrencyAmount InBook;
    CurrencyAmount OnForm;
    CurrencyAmount LeftOut;
};

// What the form's lines are computed with, beside the assets.
struct FormSettings {
    std::string Company;
    std::string Id;
    // The text of the company's Round column. "Y" rounds to the dollar; the column being a Boolean, it reads "True" or "False",
    // so the forms keep their cents, as the depreciation does.
    std::string RoundText;
    Date YearEnd;  // of the book
    FormOptions Options;
    std::shared_ptr<const Law> LimitsByLaw = {};  // of a company that goes by it
};

// What stands before a form while an asset is taken.
struct FormScan {
    const FormSettings& Settings;
    // A message for the user, who gets it when all assets have been taken: nobody who writes to the company may have to wait for
    // one to be read.
    std::function<void(std::string text)> Tell;
    FormOutput& Output;
    // Reads the asset of that number into the record; false when there is none. The scan goes on after it as before.
    std::function<bool(const FixedText<6>& assetNum, AssetRecord& record)> Find;
};

// One form being computed. COMPAT: it keeps what it has gathered, so that a second run adds to the first.
class IrsForm {
 public:
    virtual ~IrsForm() = default;
    virtual std::unique_ptr<IrsForm> Clone() const = 0;
    virtual const FormInfo& Info() const = 0;

    // In this order: NameCompany, Take for each asset that passed the division and department filters, ComputeLines, Write.
    void NameCompany(const FormSettings& settings);
    virtual void Take(const AssetRecord& asset, FormScan& scan) = 0;
    virtual void ComputeLines(const FormSettings& settings) = 0;
    virtual void Write(FormOutput& output) = 0;
    // What the form has computed, item by item, into its work file or back from one.
    virtual void ExchangeWorkFile(WorkFile& file) = 0;
    std::string WorkFileText();

    virtual std::string Message() const = 0;
    virtual std::optional<DepreciationSums> Sums() const { return std::nullopt; }
    // The form's own members of the data for a tax package.
    virtual void WriteTables(JsonWriter& json) const = 0;
    // Numbers of Lines that hold counts and totals for the pages, where the form has no line of dollars.
    virtual std::span<const int> SlotsBesideLines() const { return {}; }

    const FormLines& Lines() const { return lines_; }
    CurrencyAmount Line(int number) const { return lines_[number]; }
    const std::string& Company() const { return company_; }
    const std::string& Id() const { return id_; }
    const std::vector<LeftOut>& NotOnForm() const { return leftOut_; }
    int AssetsRead = 0;

 protected:
    explicit IrsForm(int lastLine) : lines_(lastLine) {}

    void LeaveOut(const AssetRecord& asset, std::string reason, CurrencyAmount amount = {}, std::string together = {});
    void LeaveOut(const std::string& assetNum, std::string reason);

    FormLines lines_;  // by the numbers of the form
    std::string company_;
    std::string id_;

 private:
    std::vector<LeftOut> leftOut_;
};

std::vector<const FormInfo*> AllForms();
// Failure::InvalidCall for another name.
std::unique_ptr<IrsForm> MakeForm(std::string_view name);
// The form as its work file has it. Failure::InputPastEnd or TypeMismatch when the text is no work file of that form.
std::unique_ptr<IrsForm> ReadWorkFile(std::string_view name, std::string_view contents);

struct FormResult {
    std::string Message;
    std::vector<std::string> Pages;    // codes of the pages written
    std::vector<std::string> Skipped;  // of those that could not be opened
    std::vector<std::string> Earlier;  // of those that lie in the folder from an earlier run
};

// The entity type as the forms compare it: in capitals, without the blanks around it. Failure::InvalidCall for any other than
// those of kEntityTypes and blank, by which the lines would silently be those of an individual.
std::string EntityType(std::string_view text);

// Goes over the assets, computes the form and writes its pages and work file into the folder. On a failure, which names the asset
// that it met, neither the form nor any file has changed. Failures: that of EntityType; those of the session and of the files.
FormResult CreateForm(std::unique_ptr<IrsForm>& form, CompanySession& session, const FormOptions& options,
                      const std::filesystem::path& folder, Prompts& prompts);

// What a preparer reads after a run: pages of an earlier run, what was left out, and the three sums.
std::vector<std::string> FormNotes(const IrsForm& form, const FormResult& result);
// What the form computed, for a tax package to take in.
std::string FormJson(const IrsForm& form, const FormResult& result, const FormOptions& options);

}  // namespace tallymar
