// The conversion of a large company file of the old program, against three floors: libmdb walking that file's rows without a look
// at a value, the same with each value made a text, and the walk with as many rows of a company inserted by bare SQLite calls.
// Usage: convert_bench [rows]

#include <glib.h>  // before the next, which has it inside extern "C"
#include <mdbtools.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "BenchCompany.h"
#include "Floor.h"
#include "interchange/ConvertCompany.h"

namespace {

using namespace tallymar;
using namespace tallymar::bench;

// Nothing that can be had writes Jet files, so the large one is the sample company's (Jet 4): its pages of assets again and
// again, each row under a number of its own, and the table's count and page map to fit.
class LargeFile {
 public:
    static constexpr std::size_t kPage = 4096;

    explicit LargeFile(const std::filesystem::path& sample) {
        std::ifstream in(sample, std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(in), {});
        const std::size_t asset =
            bytes_.find(std::string("0\0"
                                    "0\0"
                                    "0\0"
                                    "1\0"
                                    "0\0"
                                    "1\0",
                                    12));
        definition_ = Number<std::uint32_t>(asset / kPage * kPage + 4);
        for (std::size_t page = 0; page < bytes_.size() / kPage; ++page) {
            if (bytes_[page * kPage] == 1 && Number<std::uint32_t>(page * kPage + 4) == definition_) data_.push_back(page);
        }
    }

    void Write(const std::filesystem::path& path, int rows) {
        const std::vector<std::size_t> sample = data_;
        for (int row = 0; row < rows;) {
            for (std::size_t i = 0; i < sample.size() && row < rows; ++i) row = AddPage(sample[i], row, rows);
        }
        // Those of the sample itself are no longer the table's.
        data_.erase(data_.begin(), data_.begin() + static_cast<std::ptrdiff_t>(sample.size()));
        SetNumber(definition_ * kPage + 16, static_cast<std::uint32_t>(rows));
        WriteMap();
        std::ofstream(path, std::ios::binary) << bytes_;
    }

 private:
    template <typename T>
    T Number(std::size_t at) const {
        T number;
        std::memcpy(&number, bytes_.data() + at, sizeof number);
        return number;
    }
    template <typename T>
    void SetNumber(std::size_t at, T number) {
        std::memcpy(bytes_.data() + at, &number, sizeof number);
    }
    std::size_t NewPage() {
        bytes_.resize(bytes_.size() + kPage);
        return bytes_.size() / kPage - 1;
    }

    int AddPage(std::size_t model, int row, int rows) {
        const std::size_t page = NewPage() * kPage;
        bytes_.replace(page, kPage, bytes_, model * kPage, kPage);
        const auto count = Number<std::uint16_t>(page + 12);
        std::size_t end = kPage;
        for (std::size_t i = 0; i < count; ++i) {
            const auto place = Number<std::uint16_t>(page + 14 + 2 * i);
            if (row == rows) {
                SetNumber(page + 14 + 2 * i, static_cast<std::uint16_t>(place | 0xC000));
            } else if ((place & 0xC000) == 0) {
                Renumber(page + place, page + end, AssetNumber(ShuffledNumber(row++, rows)));
            }
            end = place & 0x1FFF;
        }
        data_.push_back(page / kPage);
        return row;
    }

    // The number is the first of the texts: the last of the offsets that stand before their count and the null mask.
    void Renumber(std::size_t start, std::size_t end, const std::string& number) {
        const std::size_t mask = (Number<std::uint16_t>(start) + 7U) / 8U;
        const std::size_t text = start + Number<std::uint16_t>(end - mask - 4);
        for (std::size_t i = 0; i < number.size(); ++i) bytes_[text + 2 * i] = number[i];
    }

    void WriteMap() {
        const auto pointer = Number<std::uint32_t>(definition_ * kPage + 55);
        const std::size_t page = (pointer >> 8) * kPage;
        const std::size_t map = page + (Number<std::uint16_t>(page + 14 + 2 * (pointer & 0xFF)) & 0x1FFFU);
        bytes_.replace(map, 69, 69, '\0');
        bytes_[map] = 1;
        constexpr std::size_t kBits = (kPage - 4) * 8;
        for (std::size_t first = 0, entry = 0; first < bytes_.size() / kPage; first += kBits, ++entry) {
            const std::size_t bits = NewPage();
            bytes_[bits * kPage] = 5;
            bytes_[bits * kPage + 1] = 1;
            for (const std::size_t one : data_) {
                if (one < first || one >= first + kBits) continue;
                char& byte = bytes_[bits * kPage + 4 + (one - first) / 8];
                byte = static_cast<char>(byte | 1 << (one - first) % 8);
            }
            SetNumber(map + 1 + 4 * entry, static_cast<std::uint32_t>(bits));
        }
    }

    std::string bytes_;
    std::size_t definition_ = 0;
    std::vector<std::size_t> data_;
};

// libmdb's own way over the rows of Assets; with each value made a text, as its export does, too.
int WalkRows(const std::filesystem::path& path, bool asText, const std::function<void()>& each) {
    MdbHandle* mdb = mdb_open(path.c_str(), MDB_NOFLAGS);
    std::string name = "Assets";
    MdbTableDef* table = mdb_read_table_by_name(mdb, name.data(), MDB_TABLE);
    mdb_read_columns(table);
    std::vector<std::string> texts(table->num_cols, std::string(MDB_BIND_SIZE, '\0'));
    for (unsigned i = 0; asText && i < table->num_cols; ++i) {
        mdb_bind_column(table, static_cast<int>(i) + 1, texts[i].data(), nullptr);
    }
    mdb_rewind_table(table);
    int rows = 0;
    for (; mdb_fetch_row(table) != 0; ++rows) each();
    mdb_free_tabledef(table);
    mdb_close(mdb);
    return rows;
}

// The walk, and for each row a row as the conversion makes it, with the indexes made where it makes them.
double ReadAndInsert(const std::filesystem::path& old, const std::filesystem::path& made, const ModelRow& model,
                     const std::filesystem::path& target, int rows) {
    std::filesystem::remove(target);
    std::ofstream(target).close();
    const Bare bare(target);
    std::vector<std::string> indexes;
    {
        const Bare source(made);
        sqlite3_stmt* schema = source.Prepare("SELECT type, name, sql FROM sqlite_schema ORDER BY _rowid_");
        while (sqlite3_step(schema) == SQLITE_ROW) {
            const auto text = [schema](int i) {
                return std::string(reinterpret_cast<const char*>(sqlite3_column_text(schema, i)));
            };
            if (text(0) == "table" || text(1) == "Assets_AssetNum") {
                bare.Run(text(2));
            } else {
                indexes.push_back(text(2));
            }
        }
        sqlite3_finalize(schema);
    }
    bare.Run("BEGIN IMMEDIATE");
    sqlite3_stmt* insert = bare.Prepare(model.InsertSql());
    int row = 0;
    WalkRows(old, false, [&] {
        const std::string number = AssetNumber(ShuffledNumber(row++, rows));
        model.Bind(insert);
        sqlite3_bind_text(insert, model.Parameter("AssetNum"), number.c_str(), -1, SQLITE_STATIC);
        bare.Write(insert);
    });
    sqlite3_finalize(insert);
    bare.Run("COMMIT");
    for (const std::string& index : indexes) bare.Run(index);
    return row;
}

}  // namespace

int main(int argc, char** argv) {
    const int rows = argc > 1 ? std::atoi(argv[1]) : 100000;
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tallymar-convert-bench";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const std::filesystem::path old = folder / "old.mdb";
    LargeFile(TALLYMAR_SOURCE_DIR "/tests/legacy/sample.mdb").Write(old, rows);

    const auto read = [&](bool asText) { return double(WalkRows(old, asText, [] {})); };
    if (read(false) != rows) return 1;
    SilentPrompts prompts;
    const auto convert = [&](int) {
        std::filesystem::remove(folder / "new.mdb");
        const ConvertedCompany made = ConvertCompany({.Old = old, .New = folder / "new.mdb"}, prompts);
        if (!made.Agrees || made.Assets != rows) std::abort();
        return static_cast<double>(made.Assets);
    };
    convert(0);
    std::filesystem::rename(folder / "new.mdb", folder / "model.mdb");
    const ModelRow model(folder / "model.mdb");
    PrintHead(rows);
    Pair(
        "convert : libmdb, rows", rows, [&](int) { return read(false); }, convert);
    Pair(
        "convert : libmdb, rows, and bare inserts", rows,
        [&](int) { return ReadAndInsert(old, folder / "model.mdb", model, folder / "floor.mdb", rows); }, convert);
    Pair(
        "convert : libmdb, text", rows, [&](int) { return read(true); }, convert);
    std::filesystem::remove_all(folder);
    return 0;
}
