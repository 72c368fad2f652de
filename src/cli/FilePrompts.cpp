#include "cli/FilePrompts.h"

#include "platform/runtime/FileFailure.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

namespace fs = std::filesystem;

void FilePrompts::Message(std::string_view text, std::string_view title, MessageKind kind) {
    // What a window tells before it stays open ends the command, in one line.
    if (kind == MessageKind::Error) throw PlatformError(Failure::InvalidCall, std::string(text));
    prompts_.Message(text, title, kind);
}

bool FilePrompts::AskYesNo(std::string_view text, std::string_view title) {
    // The title is what tells two questions of the same text apart.
    return yes_ || prompts_.AskYesNo(std::string(title) + ": " + std::string(text), title);
}

std::optional<fs::path> FilePrompts::AskOpenFile(const FileDialog&) {
    std::error_code error;
    if (!fs::exists(open_, error)) throw FileFailure(ENOENT, open_);
    return open_;
}

std::optional<fs::path> FilePrompts::AskSaveFile(const FileDialog& dialog) {
    const fs::path file = save_ ? *save_ : dialog.InitialFolder / dialog.FileName;
    std::error_code error;
    if (fs::exists(file, error) && !AskYesNo(FromUtf8(file.string()) + " already exists. Replace it?", dialog.Title)) return {};
    return file;
}

}  // namespace tallymar::cli
