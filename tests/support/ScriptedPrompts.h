#pragma once

#include <deque>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/prompts/Prompts.h"

namespace tallymar::test {

// Answers a command from a script and records what it asked. A question that the script has no answer for fails the test.
class ScriptedPrompts : public Prompts {
 public:
    std::deque<bool> YesNo;
    std::deque<std::optional<std::filesystem::path>> OpenFiles;
    std::deque<std::optional<std::filesystem::path>> SaveFiles;

    struct Said {
        std::string Text;
        std::string Title;
    };
    std::vector<Said> Messages;
    std::vector<Said> Questions;
    std::vector<FileDialog> Dialogs;
    std::vector<std::int64_t> ProgressMaxima;
    std::vector<std::int64_t> ProgressValues;

    void Message(std::string_view text, std::string_view title, MessageKind) override {
        Messages.push_back({std::string(text), std::string(title)});
    }
    bool AskYesNo(std::string_view text, std::string_view title) override {
        Questions.push_back({std::string(text), std::string(title)});
        return Next(YesNo, Questions.back().Text);
    }
    std::optional<std::filesystem::path> AskOpenFile(const FileDialog& dialog) override {
        Dialogs.push_back(dialog);
        return Next(OpenFiles, dialog.Title);
    }
    std::optional<std::filesystem::path> AskSaveFile(const FileDialog& dialog) override {
        Dialogs.push_back(dialog);
        return Next(SaveFiles, dialog.Title);
    }
    void ProgressStart(std::int64_t maximum) override { ProgressMaxima.push_back(maximum); }
    void ProgressStep(std::int64_t value) override { ProgressValues.push_back(value); }

 private:
    template <typename T>
    static T Next(std::deque<T>& answers, const std::string& question) {
        if (answers.empty()) throw std::logic_error("the script has no answer for: " + question);
        T answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

}  // namespace tallymar::test
