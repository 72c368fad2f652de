#include "loans/LoanFile.h"

#include <algorithm>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/SequentialFile.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

namespace fs = std::filesystem;

constexpr char kQuote = '"';
// Every box at its longest and full of quotes lies well below.
constexpr std::uintmax_t kLargestFile = 65536;

std::string NameOf(const fs::path& file) {
    return FromUtf8(file.string());
}

PlatformError NoLoanFile(const fs::path& file) {
    return PlatformError(Failure::UnrecognizedFormat, NameOf(file) + " is no loan file");
}

// Before anything is read. What is no ordinary file is refused in reading it.
void RequireLoanSize(const fs::path& file) {
    std::error_code ignored;
    if (fs::is_regular_file(file, ignored) && fs::file_size(file, ignored) > kLargestFile) throw NoLoanFile(file);
}

std::string Quoted(std::string_view text) {
    std::string doubled;
    for (const char c : text) doubled.append(c == kQuote ? 2 : 1, c);
    return doubled;
}

std::string NextText(SequentialReader& reader, const fs::path& file) {
    const PlatformError cutShort = PlatformError::About(Failure::InputPastEnd, NameOf(file));
    if (!reader.HasLine()) throw cutShort;
    const std::string contents = reader.ReadLine();
    const std::string_view line = Trim(contents);
    if (!line.starts_with(kQuote) || std::any_of(line.begin(), line.end(), IsControl)) throw NoLoanFile(file);
    if (line.size() < 2 || line.back() != kQuote) throw reader.HasLine() ? NoLoanFile(file) : cutShort;
    std::string text;
    // A lone quote within the text stays: other programs do not double them.
    for (std::size_t i = 1; i + 1 < line.size(); ++i) {
        text += line[i];
        if (line[i] == kQuote && line[i + 1] == kQuote && i + 2 < line.size()) ++i;
    }
    if (text.size() > kLongestLoanText) throw NoLoanFile(file);
    return text;
}

}  // namespace

FileDialog LoanFileDialog(std::string_view title, const fs::path& folder) {
    return {.Title = std::string(title),
            .Filters = {{"All Files (*.*)", "*"}, {"Loan Files (*.lon)", "*.lon"}},
            .InitialFolder = folder,
            .FileName = {},
            .DefaultExtension = "lon",
            .AsksToOverwrite = false};
}

bool IsLoanFileName(const std::filesystem::path& file) {
    return UCase(file.extension().string()) == ".LON";
}

LoanTexts OpenLoanFile(const fs::path& file) {
    RequireLoanSize(file);
    SequentialReader reader(file);
    LoanTexts texts;
    for (std::string& text : texts) text = NextText(reader, file);
    if (!reader.AtEnd()) throw NoLoanFile(file);
    return texts;
}

bool CloseLoanFile(const fs::path& file, const LoanTexts& texts, Prompts& prompts) {
    std::error_code ignored;
    const fs::file_status status = fs::status(file, ignored);
    if (fs::exists(status) && !prompts.AskYesNo("Overwrite existing file?", "Save Loan")) return false;
    try {
        if (fs::exists(status) && !fs::is_regular_file(status)) throw PlatformError(Failure::PathAccess);
        SequentialWriter writer(file);
        for (const std::string& text : texts) writer.WriteQuotedLine(Quoted(text));
        writer.Close();
    } catch (const PlatformError& failure) {
        throw PlatformError(failure.Code(), "Error occurred while trying to close file" + NameOf(file) + ",   please retry.");
    }
    return true;
}

}  // namespace tallymar
