#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/TableFile.h"
#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

// Reads RFC 4180 strictly, one row after the other: blanks belong to their field, a stray quotation mark is refused. Lines may
// end in LF, CR LF or CR, a byte order mark is passed over, and so are empty lines. What it holds in memory is one row, whatever
// the size of the file.
class CsvReader : public TableFile {
 public:
    // No file of this program has longer fields or wider rows.
    static constexpr std::size_t kLongestField = 4096;
    static constexpr std::size_t kMostFields = 1024;

    // Failures of InputFile.
    explicit CsvReader(const std::filesystem::path& path);
    ~CsvReader() override;

    // False when no row is left. Fails with Failure::InvalidCall where the text is no CSV, with FieldTooSmall on what is longer
    // than it ever may be; each text names the file and the line. DeviceError when somebody has written to the file meanwhile.
    bool ReadRow(std::vector<TableField>& row) override;
    void Rewind() override;

    const std::string& Name() const override { return name_; }
    std::string_view RowWord() const override { return "line"; }
    double ShareRead() const override;

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
    std::size_t read_ = 0;  // of the file
    std::unique_ptr<Parser> parser_;
};

}  // namespace tallymar
