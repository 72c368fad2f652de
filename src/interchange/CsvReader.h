#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tallymar {

struct CsvField {
    std::string Text;    // the bytes as they stand in the file
    bool IsNull = true;  // nothing between the commas; a quoted "" is an empty text
    int Line = 0;        // of the file, from 1, where the field starts
};

// Reads RFC 4180 strictly, one row after the other: blanks belong to their field, a stray quotation mark is refused. Lines may
// end in LF, CR LF or CR, a byte order mark is passed over, and so are empty lines.
class CsvReader {
 public:
    // contents must outlive the reader. name stands before every complaint.
    CsvReader(std::string_view contents, std::string name);
    ~CsvReader();

    // False when no row is left. Fails with Failure::InvalidCall where the text is no CSV, naming the line.
    bool ReadRow(std::vector<CsvField>& row);

 private:
    struct Parser;

    std::string_view rest_;
    std::string name_;
    std::unique_ptr<Parser> parser_;
};

}  // namespace tallymar
