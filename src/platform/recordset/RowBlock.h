#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/TableDef.h"

struct sqlite3_stmt;

namespace tallymar::recordset {

// Bytes that stay where they are until Clear.
class TextArena {
 public:
    char* Take(std::size_t length) {
        if (length > left_) NextChunk(length);
        char* place = next_;
        next_ += length;
        left_ -= length;
        return place;
    }
    std::string_view Keep(std::string_view text);
    void Clear();

 private:
    struct Chunk {
        std::unique_ptr<char[]> Bytes;
        std::size_t Size;
    };

    void NextChunk(std::size_t length);

    std::vector<Chunk> chunks_;
    std::size_t used_ = 0;  // chunks begun
    char* next_ = nullptr;
    std::size_t left_ = 0;
};

// What SQLite holds in one column of one row, whatever the column's type: the file may be another program's.
struct Cell {
    enum class Kind : std::uint8_t { Null, Whole, Real, Text, Blob };

    union {
        std::int64_t Whole = 0;
        double Real;
        const char* Text;  // Windows-1252; of a blob, its bytes
    };
    std::uint32_t Length = 0;
    Kind Type = Kind::Null;

    std::string_view TextView() const { return {Text, Length}; }

    static Cell OfWhole(std::int64_t value);
    static Cell OfReal(double value);
    static Cell OfText(std::string_view value);  // borrows
};

inline Cell Cell::OfWhole(std::int64_t value) {
    Cell cell;
    cell.Type = Kind::Whole;
    cell.Whole = value;
    return cell;
}

inline Cell Cell::OfReal(double value) {
    Cell cell;
    cell.Type = Kind::Real;
    cell.Real = value;
    return cell;
}

inline Cell Cell::OfText(std::string_view value) {
    Cell cell;
    cell.Type = Kind::Text;
    cell.Text = value.data();
    cell.Length = static_cast<std::uint32_t>(value.size());
    return cell;
}

// Copies of some rows that follow each other in an order, so that SQLite's cursor need not stay open.
class RowBlock {
 public:
    void Clear(std::size_t columns);
    // The current row of a statement whose first column is the row's number.
    void Append(sqlite3_stmt* statement, const std::vector<Field>& fields);
    void Overwrite(std::size_t slot, sqlite3_stmt* statement, const std::vector<Field>& fields);

    std::size_t Size() const { return rows_.size(); }
    std::int64_t Row(std::size_t slot) const { return rows_[slot]; }
    Cell* Cells(std::size_t slot) { return cells_.data() + slot * columns_; }
    const Cell* Cells(std::size_t slot) const { return cells_.data() + slot * columns_; }
    TextArena& Texts() { return texts_; }

    // The stored bytes of a text that Windows-1252 cannot hold, else nullptr. Keys go back to SQLite as they came.
    const std::string* Unconverted(std::size_t slot, std::size_t column) const;
    void ForgetUnconverted(std::size_t slot, std::size_t column);
    bool HasUnconverted() const { return !originals_.empty(); }

 private:
    struct Original {
        std::size_t Slot;
        std::size_t Column;
        std::string Utf8;
    };

    void Read(std::size_t slot, sqlite3_stmt* statement, const std::vector<Field>& fields);

    std::size_t columns_ = 0;
    std::vector<std::int64_t> rows_;
    std::vector<Cell> cells_;
    std::vector<Original> originals_;
    TextArena texts_;
};

}  // namespace tallymar::recordset
