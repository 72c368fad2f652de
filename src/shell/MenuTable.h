#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tallymar {

// What a menu item or toolbar button asks for. The eleven reports are one command with an index.
enum class Command {
    None,  // opens a menu
    FileNew,
    FileOpen,
    FileClose,
    FileImport,
    FileExport,
    FilePrinterSetup,
    FileExit,
    EditAsset,
    EditFind,
    CopyAsset,
    EditCompanyInformation,
    EditUserInformation,
    ActivitiesComputeCurrent,
    ActivitiesCloseYear,
    FindAssets,
    Resequence,
    ReportsRun,
    ReportsLabels,
    Amortization,
    CreateSchD,
    Create4255,
    Create4562,
    Create4797,
    Create8824,
    SoftFonts,
    ChangeDept,
    ChangeRange,
    SetBooks,
    Backup,
    Restore,
    DeleteDB,
    Update,
    AllBooks,
    HelpContents,
    HelpIndex,
    HelpAbout
};

enum class EnabledWhen {
    Always,
    CompanyOpen,
    HasAssets  // a company is open and has assets
};

// What decides which commands are on. It is looked at when a company opens or closes, when the first asset has been saved and
// when the last has been deleted.
struct SessionState {
    bool CompanyOpen = false;
    std::int64_t AssetCount = 0;
};

struct MenuItem {
    std::string_view Name;     // "mnuFileNew"
    int Index = -1;            // of a menu that is one control array
    std::string_view Caption;  // "&New"
    std::string_view Hint;     // for the status line
    tallymar::Command Command = Command::None;
    EnabledWhen When = EnabledWhen::Always;
    // The caption that the hint is filed under, where that is not the item's own: such an item shows no hint.
    std::string_view HintCaption = {};
    bool Separated = false;     // a line stands above it
    std::string_view Key = {};  // "Ctrl+N"
};

struct ToolbarButton {
    std::string_view Key;
    tallymar::Command Command;
    std::string_view Tip;
    std::string_view Icon;
    EnabledWhen When;
};

// The whole menu tree, row by row; a row with Command::None begins a menu and the rows after it are its items. mnuWindow lists
// the open windows below its own.
std::span<const MenuItem> MenuItems();
std::span<const ToolbarButton> ToolbarButtons();

// Why a command is off, for its tip; empty when it is on.
std::string_view WhyOff(EnabledWhen when, const SessionState& state);
// Of a command that has no window.
inline constexpr std::string_view kNoWindow = "This version does not have it";

// The hint of the first entry filed under exactly this caption; empty when there is none.
std::string_view HintForCaption(std::string_view caption);

}  // namespace tallymar
