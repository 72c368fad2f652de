#include "platform/spreadsheet/ZipParts.h"

#include <zip.h>

#include <algorithm>
#include <string>

#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::sheets {

namespace {

constexpr std::uint64_t kMostParts = 10'000;
constexpr std::uint64_t kMostDirectory = 4 << 20;  // bytes
// The end of a zip file: its last record with the longest comment, and what a large file has before that.
constexpr std::size_t kTail = 22 + 65535 + 20 + 56;

[[noreturn]] void Refuse(const std::string& complaint) {
    throw PlatformError(Failure::UnrecognizedFormat, complaint);
}

std::uint64_t NumberAt(std::string_view bytes, std::size_t at, std::size_t length) {
    std::uint64_t number = 0;
    for (std::size_t i = length; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

// Calls each(record) for every place in the tail where a record with this signature and length may begin.
template <typename Each>
void ForEachRecord(std::string_view tail, std::string_view signature, std::size_t length, Each each) {
    for (std::size_t at = tail.find(signature); at != std::string_view::npos; at = tail.find(signature, at + 1)) {
        if (tail.size() - at >= length) each(tail.substr(at, length));
    }
}

// libzip holds the whole directory in memory. Every record that it may take for the end of the file, whichever it chooses, must
// tell of a small one.
void RequireSmallDirectory(std::string_view tail, std::uint64_t fileSize) {
    constexpr std::uint64_t kSaidElsewhere = 0xFFFFFFFF;
    bool seen = false;
    ForEachRecord(tail, "PK\x05\x06", 22, [&](std::string_view record) {
        seen = true;
        const std::uint64_t size = NumberAt(record, 12, 4);
        if (size > kMostDirectory && size != kSaidElsewhere) Refuse("has more parts than any workbook");
    });
    ForEachRecord(tail, "PK\x06\x06", 56, [](std::string_view record) {
        if (NumberAt(record, 40, 8) > kMostDirectory) Refuse("has more parts than any workbook");
    });
    ForEachRecord(tail, "PK\x06\x07", 20, [&](std::string_view record) {
        if (NumberAt(record, 8, 8) < fileSize - tail.size()) Refuse("is damaged: its directory is not at its end");
    });
    if (!seen) Refuse("is damaged: its end is missing");
}

std::string TailOf(const std::filesystem::path& path, std::uint64_t& size) {
    InputFile file(path);
    size = file.Size();
    if (size > ZipParts::kMostPacked) Refuse("is larger than any workbook of assets");
    file.GoTo(size - std::min<std::uint64_t>(size, kTail));
    std::string tail(std::min<std::uint64_t>(size, kTail), '\0');
    std::size_t length = 0;
    while (const std::size_t count = file.Read(tail.data() + length, tail.size() - length)) length += count;
    tail.resize(length);
    return tail;
}

class ZipPart : public PartStream {
 public:
    ZipPart(zip_file_t* file, std::uint64_t size) : file_(file), size_(size) {}
    ~ZipPart() override { zip_fclose(file_); }
    ZipPart(const ZipPart&) = delete;
    ZipPart& operator=(const ZipPart&) = delete;

    std::size_t Read(char* buffer, std::size_t room) override {
        const zip_int64_t count = zip_fread(file_, buffer, room);
        if (count < 0) Refuse("is damaged: a part of it cannot be unpacked");
        read_ += static_cast<std::uint64_t>(count);
        if (read_ > ZipParts::kMostUnpacked) Refuse("unpacks to more than any workbook of assets");
        if (read_ > size_ || (count == 0 && read_ < size_))
            Refuse("is damaged: a part of it is not as long as its directory says");
        return static_cast<std::size_t>(count);
    }
    double ShareRead() const override {
        return size_ == 0 ? 1.0 : std::min(1.0, static_cast<double>(read_) / static_cast<double>(size_));
    }

 private:
    zip_file_t* file_;
    std::uint64_t size_;  // as the directory has it, which may be a lie
    std::uint64_t read_ = 0;
};

}  // namespace

ZipParts::ZipParts(const std::filesystem::path& path) {
    std::uint64_t size = 0;
    const std::string tail = TailOf(path, size);
    RequireSmallDirectory(tail, size);
    archive_ = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    RequireFewParts();
}

ZipParts::ZipParts(std::string_view bytes) {
    RequireSmallDirectory(bytes.substr(bytes.size() - std::min(bytes.size(), kTail)), bytes.size());
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
    archive_ = source != nullptr ? zip_open_from_source(source, ZIP_RDONLY, nullptr) : nullptr;
    if (archive_ == nullptr) zip_source_free(source);
    RequireFewParts();
}

ZipParts::~ZipParts() {
    zip_discard(archive_);
}

void ZipParts::RequireFewParts() const {
    if (archive_ == nullptr) Refuse("is damaged: its directory cannot be read");
    if (zip_get_num_entries(archive_, 0) > static_cast<zip_int64_t>(kMostParts)) {
        zip_discard(archive_);
        Refuse("has more parts than any workbook");
    }
}

std::unique_ptr<PartStream> ZipParts::Open(const std::string& name) {
    const zip_int64_t index = zip_name_locate(archive_, name.c_str(), ZIP_FL_NOCASE);
    if (index < 0) return nullptr;
    zip_stat_t status;
    zip_stat_init(&status);
    if (zip_stat_index(archive_, static_cast<zip_uint64_t>(index), 0, &status) != 0)
        Refuse("is damaged: a part of it is missing");
    if ((status.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && status.encryption_method != ZIP_EM_NONE)
        Refuse("is protected by a password");
    zip_file_t* file = zip_fopen_index(archive_, static_cast<zip_uint64_t>(index), 0);
    if (file == nullptr) Refuse("is damaged: a part of it cannot be unpacked");
    return std::make_unique<ZipPart>(file, status.size);
}

}  // namespace tallymar::sheets
