#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

struct CsvField {
    std::string Text;    // the bytes as they stand in the file
    bool IsNull = true;  // nothing between the commas; a quoted "" is an empty text
    int Line = 0;        // of the file, from 1, where the field starts
};

// Reads RFC 4180 strictly, one row after the other: blanks belong to their field, a stray quotation mark is refused. Lines may
// end in LF, CR LF or CR, a byte order mark is passed over, and so are empty lines. What it holds in memory is one row, whatever
// the size of the file.
class CsvReader {
 public:
    // No file of this program has longer fields or wider rows.
    static constexpr std::size_t kLongestField = 4096;
    static constexpr std::size_t kMostFields = 1024;

    // Failures of InputFile.
    explicit CsvReader(const std::filesystem::path& path);
    ~CsvReader();

    // False when no row is left. Fails with Failure::InvalidCall where the text is no CSV, with FieldTooSmall on what is longer
    // than it ever may be; each text names the file and the line.
    bool ReadRow(std::vector<CsvField>& row);
    // Back to before the first row.
    void Rewind();

    // The file's name, as it stands before every complaint.
    const std::string& Name() const { return name_; }

 private:
    struct Parser;

    // The rest of the line that is being read, with its end, or as much of it as there is room for; empty at the end of the file.
    std::string_view NextPiece();
    bool Fill();
    [[noreturn]] void Fail(Failure failure, int line, const std::string& complaint) const;

    InputFile file_;
    std::string name_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;  // of what has been read and not yet parsed
    std::size_t end_ = 0;
    std::unique_ptr<Parser> parser_;
};

}  // namespace tallymar
