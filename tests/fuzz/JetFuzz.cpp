// Old company files with bytes changed. An input is the number of a file below and a list of changes: where (three bytes), how
// many, the bytes. So inputs stay small, and every file gets past its header.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "platform/mdb/JetHeader.h"
#include "platform/mdb/JetLibrary.h"
#include "platform/runtime/PlatformError.h"
#include "support/Files.h"

namespace {

using namespace tallymar;

struct Base {
    const char* File;
    std::vector<std::string_view> Tables;
};

const Base kBases[] = {
    {"sample-jet3.mdb", {"Company", "Assets"}},
    {"old-release.mdb", {"Company", "Assets"}},
    {"access97.mdb", {"Table1"}},
    {"not-a-company.mdb", {"Customers"}},
};

// Looks at every byte that is given out. A few rows show what all of them do.
class LookingRows : public mdb::JetRows {
 public:
    void Table(const mdb::JetTable& table) override { width_ = table.Columns.size(); }
    void Row(std::span<const mdb::JetValue> values) override {
        if (values.size() != width_) std::abort();
        if (++rows_ > kMostRows) throw PlatformError(Failure::Overflow);
        for (const mdb::JetValue& value : values) {
            for (const char c : value.Text) seen_ = seen_ + static_cast<unsigned char>(c);
            seen_ = seen_ + static_cast<unsigned>(value.Whole);
        }
    }

 private:
    static constexpr int kMostRows = 12;

    std::size_t width_ = 0;
    int rows_ = 0;
    volatile unsigned seen_ = 0;
};

const std::string& Contents(std::size_t base) {
    static std::array<std::string, std::size(kBases)> contents;
    if (contents[base].empty()) {
        contents[base] = test::ReadAll(std::string(TALLYMAR_SOURCE_DIR "/tests/legacy/") + kBases[base].File);
        if (contents[base].empty()) std::abort();
    }
    return contents[base];
}

std::string Changed(std::string file, const std::uint8_t* data, std::size_t size) {
    while (size > 4) {
        const std::size_t at = (data[0] | data[1] << 8 | data[2] << 16) % file.size();
        const std::size_t length = std::min({static_cast<std::size_t>(data[3]) + 1, size - 4, file.size() - at});
        file.replace(at, length, reinterpret_cast<const char*>(data + 4), length);
        data += 4 + length;
        size -= 4 + length;
    }
    return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t base = data[0] % std::size(kBases);
    std::string file = Changed(Contents(base), data + 1, size - 1);
    const auto header = mdb::JetHeader::Parse(file);
    if (!header || !mdb::RefusalOf(*header, file.size()).empty()) return 0;
    LookingRows rows;
    try {
        mdb::ReadTables(std::span<char>(file), kBases[base].Tables, rows);
    } catch (const PlatformError&) {
        // The failure that a damaged file should be.
    }
    return 0;
}
