#include "platform/mdb/JetLibrary.h"

#include <glib.h>  // before the next, which has it inside extern "C"
#include <mdbtools.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <optional>

#include "platform/mdb/JetText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::mdb {

namespace {

constexpr unsigned long kCatalogPage = 2;
constexpr std::int64_t kTableObject = 1;
constexpr std::int64_t kMostObjects = 100000;  // far more than a database can have
constexpr int kPageInId = 0x00FFFFFF;          // an object's number holds the page of its definition

// The flags of a row's place in its page. A row that has grown out of its page leaves a pointer; where it went it is marked as a
// deleted one is, so that it is found through the pointer alone.
constexpr int kOffset = 0x1FFF;
constexpr int kPointer = 0x4000;
constexpr int kDeleted = 0x8000;

[[noreturn]] void Refuse(const std::string& complaint) {
    throw PlatformError(Failure::UnrecognizedFormat, complaint);
}

bool SameName(std::string_view a, std::string_view b) {
    return UCase(a) == UCase(b);
}

JetType TypeOf(int type) {
    switch (type) {
        case MDB_BOOL:
            return JetType::Boolean;
        case MDB_BYTE:
            return JetType::Byte;
        case MDB_INT:
            return JetType::Integer;
        case MDB_LONGINT:
            return JetType::Long;
        case MDB_MONEY:
            return JetType::Currency;
        case MDB_FLOAT:
            return JetType::Single;
        case MDB_DOUBLE:
            return JetType::Double;
        case MDB_DATETIME:
            return JetType::Date;
        case MDB_TEXT:
            return JetType::Text;
        default:
            return JetType::Other;
    }
}

template <typename T>
T Load(const unsigned char* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

struct HandleCloser {
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
};
using Handle = std::unique_ptr<MdbHandle, HandleCloser>;

// One table of an open file: its definition and its rows.
class Table {
 public:
    Table(MdbHandle* mdb, std::string name, unsigned long page) : mdb_(mdb) {
        definition_.Name = std::move(name);
        entry_.mdb = mdb;
        entry_.object_type = MDB_TABLE;
        entry_.table_pg = page;
        table_.reset(mdb_read_table(&entry_));
        if (table_ == nullptr) Refuse("is damaged or cut short: the definition of table " + definition_.Name + " cannot be read");
        ReadColumns();
        definition_.Rows = table_->num_rows;
        CheckPageMap();
    }

    const JetTable& Definition() const { return definition_; }

    // Calls each(values) for the rows there are, at most so many. Their number.
    template <typename Each>
    std::int64_t ForEachRow(std::int64_t most, Each each) {
        std::int64_t rows = 0;
        mdb_rewind_table(table_.get());
        while (mdb_read_next_dpg(table_.get()) != 0) {
            const int count = mdb_get_int16(mdb_->pg_buf, mdb_->fmt->row_count_offset);
            for (int row = 0; row < count; ++row) {
                if (!TakeRow(row)) continue;
                if (rows == most) return rows + 1;
                each(std::span<const JetValue>(values_));
                ++rows;
            }
        }
        return rows;
    }

    // The same, but for all of them or a failure. A page that cannot be read ends libmdb's walk just as the last one does.
    template <typename Each>
    void ForEveryRow(Each each) {
        const std::int64_t rows = ForEachRow(definition_.Rows, each);
        if (rows == definition_.Rows) return;
        Refuse("is damaged or cut short: table " + definition_.Name + " should have " + std::to_string(definition_.Rows) +
               " rows and gives " + (rows > definition_.Rows ? "more" : std::to_string(rows)));
    }

 private:
    struct TableFree {
        void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
    };

    void ReadColumns() {
        // libmdb leaves the table without columns when the pages of the definition break off.
        if (table_->num_cols == 0 || table_->num_cols > MDB_MAX_COLS || mdb_read_columns(table_.get()) == nullptr ||
            table_->columns->len != table_->num_cols) {
            Refuse("is damaged or cut short: the columns of table " + definition_.Name + " cannot be read");
        }
        for (unsigned i = 0; i < table_->num_cols; ++i) {
            const auto* column = static_cast<const MdbColumn*>(g_ptr_array_index(table_->columns, i));
            const std::string_view name(column->name, strnlen(column->name, sizeof column->name));
            const int width = mdb_->f->jet_version == MDB_VER_JET3 ? 1 : 2;
            definition_.Columns.push_back({FromUtf8(name), TypeOf(column->col_type), column->col_size / width});
        }
        fields_.resize(table_->num_cols);
        values_.resize(table_->num_cols);
        texts_.resize(table_->num_cols);
    }

    // A map whose first page lies near the end of the numbers would make libmdb come by the same pages for ever.
    void CheckPageMap() const {
        constexpr std::uint32_t kMostPages = 0x00FFFFFF;
        const bool bitmap = table_->map_sz >= 5 && table_->usage_map[0] == 0;
        if (table_->map_sz == 0 || (bitmap && Load<std::uint32_t>(table_->usage_map + 1) > kMostPages)) {
            Refuse("is damaged: the page map of table " + definition_.Name + " cannot be right");
        }
    }

    // Whether the row is one of the table's.
    bool TakeRow(int row) {
        int start = 0;
        std::size_t length = 0;
        if (mdb_find_row(mdb_, row, &start, &length) != 0 || (start & kDeleted) != 0) return false;
        if ((start & kPointer) == 0) return CrackRow(start & kOffset, length);
        if (length < 4) return false;
        const auto target = Load<std::uint32_t>(mdb_->pg_buf + (start & kOffset));
        if (mdb_read_alt_pg(mdb_, target >> 8) != mdb_->fmt->pg_size) return false;
        mdb_swap_pgbuf(mdb_);
        const bool taken = TakeMovedRow(static_cast<int>(target & 0xFF));
        mdb_swap_pgbuf(mdb_);
        return taken;
    }

    bool TakeMovedRow(int row) {
        int start = 0;
        std::size_t length = 0;
        if (mdb_->pg_buf[0] != MDB_PAGE_DATA || Load<std::uint32_t>(mdb_->pg_buf + 4) != entry_.table_pg) return false;
        if (mdb_find_row(mdb_, row, &start, &length) != 0 || (start & kPointer) != 0) return false;
        // The values must outlast the page.
        return CrackRow(start & kOffset, length, true);
    }

    bool CrackRow(int start, std::size_t length, bool copyText = false) {
        if (length == 0) return false;
        const int columnsInRow = mdb_crack_row(table_.get(), start, length, fields_.data());
        if (columnsInRow < 0) return false;
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            const auto* column = static_cast<const MdbColumn*>(g_ptr_array_index(table_->columns, i));
            // A row written before a column was added has no place for it.
            const bool isNull = fields_[i].is_null != 0 || column->col_num >= columnsInRow;
            if (!TakeValue(i, isNull, start, length)) return false;
            if (copyText && values_[i].Text.data() != texts_[i].data()) values_[i].Text = texts_[i].assign(values_[i].Text);
        }
        return true;
    }

    bool TakeValue(std::size_t i, bool isNull, int rowStart, std::size_t rowLength) {
        const JetType type = definition_.Columns[i].Type;
        JetValue& value = values_[i];
        value = JetValue();
        if (type == JetType::Boolean) {
            value.IsNull = false;
            value.Whole = isNull ? 0 : 1;
            return true;
        }
        if (isNull || type == JetType::Other) return true;
        const MdbField& field = fields_[i];
        const auto inRow = static_cast<std::size_t>(field.start - rowStart);
        if (field.start < rowStart || field.siz < 0 || inRow + static_cast<std::size_t>(field.siz) > rowLength) return false;
        value.IsNull = false;
        const std::string_view bytes(reinterpret_cast<const char*>(mdb_->pg_buf) + field.start,
                                     static_cast<std::size_t>(field.siz));
        if (type == JetType::Text) return TakeText(bytes, i);
        return TakeNumber(type, bytes, value);
    }

    bool TakeText(std::string_view bytes, std::size_t i) {
        if (mdb_->f->jet_version == MDB_VER_JET3) {
            values_[i].Text = bytes;
        } else {
            values_[i].NotInText = DecodeJet4Text(bytes, texts_[i]);
            values_[i].Text = texts_[i];
        }
        return true;
    }

    static bool TakeNumber(JetType type, std::string_view bytes, JetValue& value) {
        const auto take = [bytes](auto number, auto& into) {
            if (bytes.size() < sizeof number) return false;
            std::memcpy(&number, bytes.data(), sizeof number);
            into = number;
            return true;
        };
        switch (type) {
            case JetType::Byte:
                return take(std::uint8_t{}, value.Whole);
            case JetType::Integer:
                return take(std::int16_t{}, value.Whole);
            case JetType::Long:
                return take(std::int32_t{}, value.Whole);
            case JetType::Currency:
                return take(std::int64_t{}, value.Whole);
            case JetType::Single:
                return take(float{}, value.Real);
            default:
                return take(double{}, value.Real);
        }
    }

    MdbHandle* mdb_;
    MdbCatalogEntry entry_{};
    std::unique_ptr<MdbTableDef, TableFree> table_;
    JetTable definition_;
    std::vector<MdbField> fields_;
    std::vector<JetValue> values_;
    std::vector<std::string> texts_;  // what the values' texts are views of, where the page does not hold them so
};

std::size_t ColumnOf(const JetTable& table, std::string_view name) {
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
        if (SameName(table.Columns[i].Name, name)) return i;
    }
    Refuse("is damaged: its list of tables has no column " + std::string(name));
}

// The page of each table's definition. libmdb's own reading of the catalog also follows every object's properties, which nothing
// here needs and a bad file can tie into a knot.
std::vector<unsigned long> FindTables(MdbHandle* mdb, std::span<const std::string_view> names) {
    std::vector<unsigned long> pages(names.size(), 0);
    Table catalog(mdb, "MSysObjects", kCatalogPage);
    const std::size_t id = ColumnOf(catalog.Definition(), "Id");
    const std::size_t name = ColumnOf(catalog.Definition(), "Name");
    const std::size_t type = ColumnOf(catalog.Definition(), "Type");
    catalog.ForEachRow(kMostObjects, [&](std::span<const JetValue> row) {
        if (row[type].Whole != kTableObject) return;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (SameName(row[name].Text, names[i])) pages[i] = static_cast<unsigned long>(row[id].Whole & kPageInId);
        }
    });
    std::string missing;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (pages[i] == 0) missing += (missing.empty() ? "has no table " : " and no table ") + std::string(names[i]);
    }
    if (!missing.empty()) throw PlatformError(Failure::NoSuchTable, missing);
    return pages;
}

void ReadTables(const Handle& handle, std::span<const std::string_view> tables, JetRows& rows) {
    if (handle == nullptr) Refuse("is damaged: its first page cannot be read");
    const std::vector<unsigned long> pages = FindTables(handle.get(), tables);
    for (std::size_t i = 0; i < tables.size(); ++i) {
        Table table(handle.get(), std::string(tables[i]), pages[i]);
        rows.Table(table.Definition());
        table.ForEveryRow([&rows](std::span<const JetValue> row) { rows.Row(row); });
    }
}

}  // namespace

void ReadTables(const std::filesystem::path& path, std::span<const std::string_view> tables, JetRows& rows) {
    ReadTables(Handle(mdb_open(path.c_str(), MDB_NOFLAGS)), tables, rows);
}

void ReadTables(std::span<char> bytes, std::span<const std::string_view> tables, JetRows& rows) {
    ReadTables(Handle(mdb_open_buffer(bytes.data(), bytes.size(), MDB_NOFLAGS)), tables, rows);
}

}  // namespace tallymar::mdb
