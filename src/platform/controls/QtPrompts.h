#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressBar>

#include "platform/prompts/Prompts.h"

class QFileDialog;

namespace tallymar {

// Asks and tells by dialogs over a window, and moves that window's progress bar.
class QtPrompts : public Prompts {
 public:
    explicit QtPrompts(QWidget* window, QProgressBar* bar = nullptr) : window_(window), bar_(bar) {}

    void Message(std::string_view text, std::string_view title, MessageKind kind) override;
    void MessageWithDetails(std::string_view text, std::string_view details, std::string_view title) override;
    bool AskYesNo(std::string_view text, std::string_view title) override;
    Answer AskYesNoCancel(std::string_view text, std::string_view title) override;
    std::optional<std::filesystem::path> AskOpenFile(const FileDialog& dialog) override;
    std::optional<std::filesystem::path> AskSaveFile(const FileDialog& dialog) override;
    void ProgressStart(std::int64_t maximum) override;
    void ProgressStep(std::int64_t value) override;

    // How a dialog's wishes come out in the toolkit's terms.
    static void SetUp(QFileDialog& box, const FileDialog& dialog);

 private:
    std::optional<std::filesystem::path> AskFile(const FileDialog& dialog, bool forSaving);
    void KeepAlive();

    QPointer<QWidget> window_;
    QPointer<QProgressBar> bar_;
    QElapsedTimer sinceShown_;
};

}  // namespace tallymar
