#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

#include "platform/spreadsheet/Parts.h"

struct zip;

namespace tallymar::sheets {

// The parts of a zip file. It may be somebody's attack: its directory is bounded before it is read, a part is given out as it is
// unpacked and never kept, and ends in a failure when it grows beyond what any workbook of assets has.
// Failures, their texts the second half of a sentence that begins with the file's name: UnrecognizedFormat; DeviceError.
class ZipParts : public Parts {
 public:
    // Most bytes of the file, and of one part unpacked.
    static constexpr std::uint64_t kMostPacked = std::uint64_t{512} << 20;
    static constexpr std::uint64_t kMostUnpacked = std::uint64_t{4} << 30;

    explicit ZipParts(const std::filesystem::path& path);  // an ordinary file
    explicit ZipParts(std::string_view bytes);             // of a file; must outlive this
    ~ZipParts() override;
    ZipParts(const ZipParts&) = delete;
    ZipParts& operator=(const ZipParts&) = delete;

    std::unique_ptr<PartStream> Open(const std::string& name) override;

 private:
    void RequireFewParts() const;

    zip* archive_ = nullptr;
};

}  // namespace tallymar::sheets
