#pragma once

#include <filesystem>
#include <optional>

#include "platform/prompts/Prompts.h"

namespace tallymar::cli {

// Answers the file dialogs of a command with what stands on the command line; a file that would be replaced is asked about. With
// `yes` every question is answered.
class FilePrompts : public Prompts {
 public:
    FilePrompts(Prompts& prompts, std::filesystem::path open, std::optional<std::filesystem::path> save, bool yes)
        : prompts_(prompts), open_(std::move(open)), save_(std::move(save)), yes_(yes) {}

    void Message(std::string_view text, std::string_view title, MessageKind kind) override;
    bool AskYesNo(std::string_view text, std::string_view title) override;
    std::optional<std::filesystem::path> AskOpenFile(const FileDialog& dialog) override;  // FileNotFound when there is none
    // Without a file of its own: the one that the dialog offers.
    std::optional<std::filesystem::path> AskSaveFile(const FileDialog& dialog) override;
    void ProgressStart(std::int64_t maximum) override { prompts_.ProgressStart(maximum); }
    void ProgressStep(std::int64_t value) override { prompts_.ProgressStep(value); }

 private:
    Prompts& prompts_;
    std::filesystem::path open_;
    std::optional<std::filesystem::path> save_;
    bool yes_;
};

}  // namespace tallymar::cli
