// What comes from the process that reads an old company file, when that file has taken it over.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/mdb/JetStream.h"

namespace {

class NoRows : public tallymar::mdb::JetRows {
 public:
    void Table(const tallymar::mdb::JetTable&) override {}
    void Row(std::span<const tallymar::mdb::JetValue> values) override {
        if (values.empty()) std::abort();
        for (const auto& value : values) {
            for (const char c : value.Text) seen_ = seen_ + static_cast<unsigned char>(c);
        }
    }

 private:
    volatile unsigned seen_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    NoRows rows;
    tallymar::mdb::JetStreamReader reader(rows);
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    try {
        // In two parts, as a pipe may give it.
        reader.Take(bytes.substr(0, size / 2));
        reader.Take(bytes.substr(size / 2));
    } catch (const tallymar::PlatformError&) {
    }
    return 0;
}
