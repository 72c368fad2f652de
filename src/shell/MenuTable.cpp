#include "shell/MenuTable.h"

#include <array>

#include "reports/ReportTable.h"

namespace tallymar {

namespace {

using enum Command;
using enum EnabledWhen;

constexpr MenuItem OfReport(int number) {
    const ReportInfo& report = kReportTable.at(static_cast<std::size_t>(number));
    // What lists the assets on paper is what one prints.
    const std::string_view key = number == kFixedAssetReport ? "Ctrl+P" : "";
    return {"mnuReportsRun", number, report.Menu, report.Hint, ReportsRun, HasAssets, {}, false, key};
}

constexpr auto kMenuItems = std::to_array<MenuItem>({
    {"mnuFile", -1, "&File", "Access Open, Save, Print and Exit options"},
    {"mnuFileNew", -1, "&New", "Allows the creation of a new Tallymar company", FileNew, Always, {}, false, "Ctrl+N"},
    {"mnuFileOpen", -1, "&Open", "Select an Tallymar company", FileOpen, Always, {}, false, "Ctrl+O"},
    {"mnuFileClose", -1, "&Close", "Close and save the current changes to disk", FileClose, CompanyOpen},
    {"mnuFileImport", -1, "&Import", "Select importing of asset data", FileImport, CompanyOpen, {}, true},
    {"mnuFileExport", -1, "&Export", "Select exporting of asset data", FileExport, CompanyOpen},
    {"mnuFilePrinterSetup", -1, "&Printer Setup", "Select printer options", FilePrinterSetup, Always, {}, true},
    {"mnuFileExit", -1, "E&xit", "End this program", FileExit, Always, {}, true},

    {"mnuEdit", -1, "&Edit", "Edit, Find, Copy assets"},
    {"mnuEditAsset", -1, "&Edit Asset", "Edit the assets for the current company", EditAsset, CompanyOpen},
    {"mnuEditFind", -1, "&Find Asset", "Find assets in the database", EditFind, CompanyOpen, {}, false, "Ctrl+F"},
    {"mnuCopyAsset", -1, "Co&py Asset", "Make multiple copies of the current asset", CopyAsset, HasAssets},
    {"mnuEditCompanyInformation",
     -1,
     "&Company Profile",
     "Edit the profile of the current company",
     EditCompanyInformation,
     CompanyOpen,
     {},
     true},
    {"mnuEditUserInformation", -1, "&User Profile", "Edit the profile of the current user", EditUserInformation},

    {"mnuActivities", -1, "&Activities", "Selects an activity to perform on the assets"},
    {"mnuActivitiesComputeCurrent", -1, "&Compute Current", "Compute current depreciation on all assets",
     ActivitiesComputeCurrent, HasAssets},
    {"mnuActivitiesCloseYear", -1, "Close &Year", "Close the current year and post current to previous", ActivitiesCloseYear,
     HasAssets},
    {"mnuFindAssets", -1, "&Find Assets", "Find assets in the database", FindAssets, HasAssets},
    {"mnuResequence", -1, "&Resequence", "Create a new database with resequenced Asset numbers", Resequence, HasAssets},

    {"mnuReports", -1, "&Reports", "Select an Asset Report"},
    OfReport(kFixedAssetReport),
    OfReport(kCurrentDepreciationReport),
    OfReport(kAssetValueReport),
    OfReport(kFairMarketValueReport),
    OfReport(kNetBookValueReport),
    OfReport(kAssetSoldReport),
    OfReport(kStocksAndCollectiblesReport),
    OfReport(kPostReport),
    OfReport(kPropertyTaxReport),
    OfReport(kComparisonReport),
    OfReport(kFourYearReport),
    {"mnuReportsLabels", -1, "Asset &Labels", "Print labels for each Asset", ReportsLabels, HasAssets, {}, true},
    {"mnuAmortization", -1, "&Amortization Schedule", "Print an Amortization Schedule", Amortization},

    {"mnuForms", -1, "&IRS Forms", "Selects an IRS Form or Schedule"},
    {"mnuCreateSchD", -1, "Create Schedule &D", "Create an IRS Schedule D", CreateSchD, HasAssets},
    {"mnuCreate4255", -1, "Create Form 4&255", "Create an IRS Form 4255", Create4255, HasAssets},
    // COMPAT: the hint names another number.
    {"mnuCreate4562", -1, "Create Form 4&562", "Create an IRS Form 4563", Create4562, HasAssets},
    {"mnuCreate4797", -1, "Create Form 4&797", "Create an IRS Form 4797", Create4797, HasAssets},
    {"mnuCreate8824", -1, "Create Form &8824", {}, Create8824},
    {"mnuSoftFonts", -1, "&Download Soft Fonts", "Select to download soft fonts to your printer", SoftFonts, Always, {}, true},

    {"mnuTools", -1, "&Utilities", "Select a database utility"},
    {"mnuChangeDept", -1, "&Change Department/Division", "Change the Department, Division, or G/L Number", ChangeDept, HasAssets},
    {"mnuChangeRange", -1, "C&hange Range of Assets", "Make changes to a range of assets", ChangeRange, HasAssets},
    {"mnuSetBooks", -1, "&Set ALL Books Equal", "Set all books equal to a single book", SetBooks, HasAssets},
    {"mnuBackup", -1, "&Backup Company Database", "Make a backup copy of a Company Tallymar database", Backup, Always,
     "&Backup a Database", true},
    {"mnuRestore", -1, "&Restore Company Database", "Restore a copy of an Company Tallymar database", Restore, Always,
     "&Restore a Database"},
    {"mnuDeleteDB", -1, "&Delete Company Database", "Delete a Company Tallymar database", DeleteDB, Always, "&Delete a Database"},
    {"mnuUpdate", -1, "&Update Tallymar", "Get an update of Tallymar over the Internet", Update, Always, {}, true},

    {"mnuWindow", -1, "&Window", "See which Tallymar windows are active"},
    {"mnuAllBooks", -1, "All &Books", "See the four books of the asset side by side", AllBooks, HasAssets, {}, false, "Ctrl+B"},

    {"mnuHelp", -1, "&Help", "View Help information"},
    {"mnuHelpContents", -1, "&Contents", "View the Help file by content", HelpContents},
    {"mnuHelpIndex", -1, "&Index", "View the Help file using the help index", HelpIndex},
    {"mnuHelpAbout", -1, "&About Tallymar", "Information about Tallymar and your computer", HelpAbout, Always, {}, true},
});

constexpr auto kToolbarButtons = std::to_array<ToolbarButton>({
    {"New", FileNew, "Create a new company", "new", Always},
    {"Open", FileOpen, "Open a company", "open", Always},
    {"Close", FileClose, "Close the company", "close", CompanyOpen},
    {"Find", EditFind, "Find an asset", "find", HasAssets},
    {"Edit", EditAsset, "Edit the assets", "edit", CompanyOpen},
    {"Calculate", ActivitiesComputeCurrent, "Compute current depreciation", "calculate", HasAssets},
    {"Help", HelpContents, "Help", "help", Always},
});

}  // namespace

std::span<const MenuItem> MenuItems() {
    return kMenuItems;
}

std::span<const ToolbarButton> ToolbarButtons() {
    return kToolbarButtons;
}

std::string_view WhyOff(EnabledWhen when, const SessionState& state) {
    if (when != Always && !state.CompanyOpen) return "Open a company first";
    if (when == HasAssets && state.AssetCount == 0) return "The company has no assets yet";
    return {};
}

std::string_view HintForCaption(std::string_view caption) {
    for (const MenuItem& item : kMenuItems) {
        if (item.Hint.empty()) continue;
        if ((item.HintCaption.empty() ? item.Caption : item.HintCaption) == caption) return item.Hint;
    }
    return {};
}

}  // namespace tallymar
