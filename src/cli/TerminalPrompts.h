#pragma once

#include "platform/prompts/Prompts.h"

namespace tallymar::cli {

// Asks on the terminal. Messages go to standard error, so that what a command prints stays its result alone.
class TerminalPrompts : public Prompts {
 public:
    void Message(std::string_view text, std::string_view title, MessageKind kind) override;
    // Anything but y or yes, the end of input too, is No.
    bool AskYesNo(std::string_view text, std::string_view title) override;
    // Every file is named on the command line: nothing is asked.
    std::optional<std::filesystem::path> AskOpenFile(const FileDialog&) override { return std::nullopt; }
    std::optional<std::filesystem::path> AskSaveFile(const FileDialog&) override { return std::nullopt; }
    void ProgressStart(std::int64_t) override {}
    void ProgressStep(std::int64_t) override {}
};

}  // namespace tallymar::cli
