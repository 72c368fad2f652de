#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What a command may ask of or tell its user while it runs: windows answer with dialogs, the command line tool on the terminal,
// tests from a script.
namespace tallymar {

enum class MessageKind { Information, Warning, Error };

enum class Answer { Yes, No, Cancel };

struct FileFilter {
    std::string Name;     // "Tallymar Data Files (*.mdb)"
    std::string Pattern;  // "*.mdb"
};

struct FileDialog {
    std::string Title;
    std::vector<FileFilter> Filters;
    std::size_t FilterIndex = 0;  // preselected
    std::filesystem::path InitialFolder;
    std::filesystem::path FileName;  // offered; may be empty
    std::string DefaultExtension;    // put after a typed name that has none ("mdb"); may be empty
    bool AsksToOverwrite = true;     // false: the command itself asks before an existing file is written
};

class Prompts {
 public:
    virtual ~Prompts() = default;

    virtual void Message(std::string_view text, std::string_view title, MessageKind kind = MessageKind::Information) = 0;
    // The same with more that may be looked at, a line for each thing, its parts divided by tabs.
    virtual void MessageWithDetails(std::string_view text, std::string_view details, std::string_view title) {
        Message(std::string(text) + "\n\n" + std::string(details), title);
    }
    // Yes or No; No is the default button.
    virtual bool AskYesNo(std::string_view text, std::string_view title) = 0;
    // The same with a way back. Who has no Cancel to offer asks for Yes or No.
    virtual Answer AskYesNoCancel(std::string_view text, std::string_view title) {
        return AskYesNo(text, title) ? Answer::Yes : Answer::No;
    }

    // nullopt when cancelled.
    virtual std::optional<std::filesystem::path> AskOpenFile(const FileDialog& dialog) = 0;  // the file exists
    // Asks before an existing file is chosen, unless the dialog says otherwise.
    virtual std::optional<std::filesystem::path> AskSaveFile(const FileDialog& dialog) = 0;

    // Steps of long work. A maximum of 0 takes the bar away.
    virtual void ProgressStart(std::int64_t maximum) = 0;
    virtual void ProgressStep(std::int64_t value) = 0;
};

// The progress bar of one pass, gone however the pass ends.
class ProgressScope {
 public:
    ProgressScope(Prompts& prompts, std::int64_t maximum) : prompts_(prompts) { prompts_.ProgressStart(maximum); }
    ~ProgressScope() { prompts_.ProgressStart(0); }
    ProgressScope(const ProgressScope&) = delete;
    ProgressScope& operator=(const ProgressScope&) = delete;

    void Step() { prompts_.ProgressStep(++done_); }

 private:
    Prompts& prompts_;
    std::int64_t done_ = 0;
};

}  // namespace tallymar
