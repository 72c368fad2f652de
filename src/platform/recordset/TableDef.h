#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallymar::recordset {

enum class FieldType {
    Text,      // at most Size characters of Windows-1252
    Date,      // days from 1899-12-30, a real
    Currency,  // ten-thousandths, an integer
    Integer,   // signed 16 bits
    Boolean    // -1 and 0
};

inline constexpr int kDefaultTextSize = 255;

struct Field {
    std::string Name;
    FieldType Type = FieldType::Text;
    int Size = kDefaultTextSize;   // texts only
    bool AllowZeroLength = false;  // texts only

    friend bool operator==(const Field&, const Field&) = default;
};

struct Index {
    std::string Name;
    std::vector<std::string> Fields;  // all ascending
    bool Primary = false;             // then also unique
    bool Required = false;            // no key field may be Null; of a primary index none may in any case

    friend bool operator==(const Index&, const Index&) = default;
};

// The definition of a table, built up before it is appended to a database, or read back from one.
struct TableDef {
    std::string Name;
    std::vector<Field> Fields;
    std::vector<Index> Indexes;

    const Field* FindField(std::string_view name) const;  // names without regard to letter case; nullptr when there is none
    const Index* FindIndex(std::string_view name) const;

    friend bool operator==(const TableDef&, const TableDef&) = default;
};

}  // namespace tallymar::recordset
