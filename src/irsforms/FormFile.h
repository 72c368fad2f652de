#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/FileReplacement.h"

namespace tallymar {

// A page being written: lines of fields at logical columns, as on a typewriter. Every line ends in one blank. Logical column c
// above 0 stands at character c + 2 of its line, since printing drops the first two characters; column 0 is the first character.
//
// What is written takes the place of an earlier page only by PutInPlace; a page that is given up leaves the earlier one as it
// was.
class FormFile {
 public:
    explicit FormFile(std::filesystem::path path) : path_(std::move(path)) {}

    // False, without a message, when nothing can be written there: the caller passes the page over.
    bool OpenFormFile();
    // Ends the page, with the end-of-file mark when that is asked for, and brings it whole to the disk, beside its place.
    void CloseFormFile();
    void PutInPlace();

    // Whether CloseFormFile writes the end-of-file mark.
    bool EndOfFile = false;

    // Writes the text at the column and ends `advance` lines. A column above 0 is raised by 2 in the caller's variable. A column
    // left of where the line stands begins a new line; an empty text still moves to its column.
    void WriteTextField(int& column, std::string_view text, int advance);
    // The same with the amount under the mask; an empty mask becomes kDefaultMask in the caller's variable. Zero rule 'Y':
    // always, 'N': unless the amount is 0; with any other nothing is written. What is not written still ends its lines.
    void WriteAmountField(int& column, const CurrencyAmount& amount, std::string& mask, char zeroRule, int advance);
    // Ends so many lines; below 1 none, so that the next field may follow on the line.
    void SkipFormLines(int count);

    const std::filesystem::path& Path() const { return path_; }

    static constexpr std::string_view kDefaultMask = "##########.##";

 private:
    void MoveTo(int column);

    std::filesystem::path path_;
    std::unique_ptr<FileReplacement> file_;
    std::string contents_;
    std::size_t lineStart_ = 0;
};

}  // namespace tallymar
