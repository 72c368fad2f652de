#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "formoutput/FormPages.h"
#include "store/FormPageFile.h"

namespace tallymar {

// The values of a form page as cells: what its file holds from the second line on and from the third character on, which is what
// a print puts on the paper. Columns are counted from 1, the logical columns of the page, and lines from 1, the file's second.
// Text is Windows-1252.
//
// The first line and the two characters before each line's values are kept, and ToFile puts them back: a page of ours that nobody
// has changed comes out byte for byte.
class FormPageText {
 public:
    // A page without values, as when there is no file.
    explicit FormPageText(const FormPageInfo& page);
    // Failures: those of InputFile but for FileNotFound, which like an empty file gives the page without values; PathAccess for a
    // file that is no page: longer than kLongestFile, a line of more than kLongestLine, or more than kMostLines.
    static FormPageText Read(const FormPageInfo& page, const std::filesystem::path& path);
    static FormPageText Parse(std::string_view contents, std::string_view name);

    static constexpr std::size_t kLongestFile = 64 * 1024;
    static constexpr std::size_t kLongestLine = 512;
    static constexpr std::size_t kMostLines = 512;

    // The text of these cells, without the blanks at its end.
    std::string GetFieldText(int column, int line, int width) const;
    // Puts the text into `width` cells from there, filled up with blanks or cut, control characters as blanks. What lies outside
    // the page is let be.
    void SetFieldText(int column, int line, std::string_view text, int width);

    // Line 1 to LineCount, without the blanks at its end; control characters are blanks.
    std::string Line(int line) const;
    int LineCount() const { return static_cast<int>(lines_.size()); }

    // The page's file: lines that end in a blank, CR and LF, and at the end the end-of-file mark.
    std::string ToFile() const;

 private:
    struct PageLine {
        bool InFile = false;
        std::string Raw;   // as the file has it
        std::string Text;  // of the cells
    };
    FormPageText() = default;

    std::string firstLine_;  // as the file has it
    std::vector<PageLine> lines_;
};

// The lines of a values file, its first one and the end-of-file mark with what follows it left out. CR, LF and CR LF end a line.
// firstLine, where wanted, gets the first one.
std::vector<std::string_view> ValuesLines(std::string_view contents, std::string_view* firstLine = nullptr);
// The contents of a values file; PathAccess for one longer than kLongestFile.
std::string ReadValuesFile(const std::filesystem::path& path);

}  // namespace tallymar
