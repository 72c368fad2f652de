#pragma once

#include <filesystem>
#include <functional>

#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

// The companies that the benchmarks work on.
namespace tallymar::bench {

// Nobody is there to be told or asked: every question is answered No.
class SilentPrompts : public Prompts {
 public:
    void Message(std::string_view, std::string_view, MessageKind) override {}
    bool AskYesNo(std::string_view, std::string_view) override { return false; }
    std::optional<std::filesystem::path> AskOpenFile(const FileDialog&) override { return std::nullopt; }
    std::optional<std::filesystem::path> AskSaveFile(const FileDialog&) override { return std::nullopt; }
    void ProgressStart(std::int64_t) override {}
    void ProgressStep(std::int64_t) override {}
};

// A new company at path, in place of any other one there, whose books all end their year on 12/31/2003. It holds asset(0) to
// asset(rows - 1) and stays open.
void BuildCompany(CompanySession& session, const std::filesystem::path& path, int rows,
                  const std::function<AssetRecord(int row)>& asset);

// An asset such as a register lists: amounts in all books, every fiftieth sold.
AssetRecord RegisterAsset(int row);

}  // namespace tallymar::bench
