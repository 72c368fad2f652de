#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Database files of the Jet engine, versions 3 and 4: read, never written.
namespace tallymar::mdb {

enum class JetType : std::uint8_t { Boolean, Byte, Integer, Long, Currency, Single, Double, Date, Text, Other };

struct JetColumn {
    std::string Name;  // Windows-1252
    JetType Type = JetType::Other;
    int Size = 0;  // the most characters that a text may have
};

struct JetTable {
    std::string Name;
    std::vector<JetColumn> Columns;  // in the order of their creation
    std::int64_t Rows = 0;           // as the table's definition counts them
};

// One value of a column's type.
struct JetValue {
    bool IsNull = true;      // never of a Boolean
    std::int64_t Whole = 0;  // Boolean (0, 1), Byte, Integer, Long; Currency: ten-thousandths
    double Real = 0.0;       // Single, Double; Date: days from 1899-12-30, the fraction being the time
    std::string_view Text;   // Windows-1252, "?" for each character that it does not have
    char32_t NotInText = 0;  // the first of those characters; 0 when there is none. U+FFFD: bytes that are no character at all
};

// Takes what is read. What it throws ends the reading.
class JetRows {
 public:
    virtual ~JetRows() = default;
    virtual void Table(const JetTable& table) = 0;           // before its rows
    virtual void Row(std::span<const JetValue> values) = 0;  // in the order of the table's columns; good for this call only
};

// Whether the file says in its header that it is a Jet database, of whatever version. False when it cannot be read.
// Not for a file that this process has open as a company: closing it here would drop the locks that are held on it.
bool IsJetFile(const std::filesystem::path& path);

// Gives the rows of each named table, in the order in which the names are given; within a table as they lie, deleted rows left
// out. Names are compared without regard to letter case.
//
// The file may be somebody's attack: it is read in a process of its own, bounded in memory and time, whose end is a failure here
// and nothing worse. A table is given out whole or ends in a failure: the rows are counted against its definition,
// and the file must not have been written to meanwhile.
// Failures, each text beginning with the file's name: UnrecognizedFormat (no Jet file, a version not known, a password, encoded
// pages, a code page other than 1252, damaged or cut short, changed while it was read), NoSuchTable, those of opening a file.
void ReadJetTables(const std::filesystem::path& path, std::span<const std::string_view> tables, JetRows& rows);

}  // namespace tallymar::mdb
