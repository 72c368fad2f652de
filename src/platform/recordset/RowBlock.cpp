#include "platform/recordset/RowBlock.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset {

namespace {

constexpr std::size_t kChunkSize = 16 * 1024;

bool IsAscii(const unsigned char* bytes, std::size_t length) {
    std::uint64_t seen = 0;
    for (; length >= sizeof seen; bytes += sizeof seen, length -= sizeof seen) {
        std::uint64_t word;
        std::memcpy(&word, bytes, sizeof word);
        seen |= word;
    }
    unsigned char rest = 0;
    for (; length > 0; --length) rest |= *bytes++;
    return (seen & 0x8080808080808080U) == 0 && (rest & 0x80U) == 0;
}

}  // namespace

void TextArena::NextChunk(std::size_t length) {
    while (used_ < chunks_.size() && chunks_[used_].Size < length) {
        chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(used_));
    }
    if (used_ == chunks_.size()) {
        const std::size_t size = std::max(kChunkSize, length);
        chunks_.push_back({std::make_unique_for_overwrite<char[]>(size), size});
    }
    next_ = chunks_[used_].Bytes.get();
    left_ = chunks_[used_].Size;
    ++used_;
}

std::string_view TextArena::Keep(std::string_view text) {
    char* place = Take(text.size());
    std::copy(text.begin(), text.end(), place);
    return {place, text.size()};
}

void TextArena::Clear() {
    used_ = 0;
    next_ = nullptr;
    left_ = 0;
}

void RowBlock::Clear(std::size_t columns) {
    columns_ = columns;
    rows_.clear();
    cells_.clear();
    originals_.clear();
    texts_.Clear();
}

void RowBlock::Append(sqlite3_stmt* statement, const std::vector<Field>& fields) {
    rows_.emplace_back();
    cells_.resize(cells_.size() + columns_);
    Read(rows_.size() - 1, statement, fields);
}

void RowBlock::Overwrite(std::size_t slot, sqlite3_stmt* statement, const std::vector<Field>& fields) {
    std::erase_if(originals_, [slot](const Original& original) { return original.Slot == slot; });
    Read(slot, statement, fields);
}

void RowBlock::Read(std::size_t slot, sqlite3_stmt* statement, const std::vector<Field>& fields) {
    rows_[slot] = sqlite3_column_int64(statement, 0);
    Cell* cell = Cells(slot);
    for (std::size_t column = 0; column < columns_; ++column, ++cell) {
        // The connection has no mutex, so a column's value may be looked at directly; that is measurably faster on rows this
        // wide.
        sqlite3_value* value = sqlite3_column_value(statement, static_cast<int>(column) + 1);
        const int type = sqlite3_value_type(value);
        switch (type) {
            case SQLITE_INTEGER:
                *cell = Cell::OfWhole(sqlite3_value_int64(value));
                break;
            case SQLITE_FLOAT:
                *cell = Cell::OfReal(sqlite3_value_double(value));
                break;
            case SQLITE_NULL:
                *cell = Cell();
                break;
            case SQLITE_BLOB:
                if (fields[column].Type != FieldType::Text) {
                    const void* bytes = sqlite3_value_blob(value);
                    const auto length = static_cast<std::size_t>(sqlite3_value_bytes(value));
                    *cell = Cell::OfText(texts_.Keep({static_cast<const char*>(bytes), length}));
                    cell->Type = Cell::Kind::Blob;
                    break;
                }
                [[fallthrough]];
            default: {
                const unsigned char* utf8 = sqlite3_value_text(value);
                const auto length = static_cast<std::size_t>(sqlite3_value_bytes(value));
                const std::string_view text(reinterpret_cast<const char*>(utf8), utf8 == nullptr ? 0 : length);
                if (IsAscii(utf8, text.size()) && type == SQLITE_TEXT) {
                    *cell = Cell::OfText(texts_.Keep(text));
                } else {
                    bool lossy = false;
                    *cell = Cell::OfText(texts_.Keep(FromUtf8(text, &lossy)));
                    if (lossy || type == SQLITE_BLOB) originals_.push_back({slot, column, std::string(text)});
                }
            }
        }
    }
}

const std::string* RowBlock::Unconverted(std::size_t slot, std::size_t column) const {
    for (const Original& original : originals_) {
        if (original.Slot == slot && original.Column == column) return &original.Utf8;
    }
    return nullptr;
}

void RowBlock::ForgetUnconverted(std::size_t slot, std::size_t column) {
    std::erase_if(originals_, [&](const Original& original) { return original.Slot == slot && original.Column == column; });
}

}  // namespace tallymar::recordset
