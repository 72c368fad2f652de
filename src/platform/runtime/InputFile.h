#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace tallymar {

// An ordinary file, read from its start. What is none (a folder, a pipe, a device) is refused at once instead of being waited
// for: a program that asks for a file has its end in sight.
// Failures, each text naming the file: FileNotFound, PathNotFound, PermissionDenied, PathAccess, DeviceError.
class InputFile {
 public:
    explicit InputFile(const std::filesystem::path& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // The next bytes, at most `room`; 0 at the end.
    std::size_t Read(char* buffer, std::size_t room);
    void Rewind();
    // Goes to this byte of the file.
    void GoTo(std::uint64_t place);
    // As it was when the file was opened.
    std::size_t Size() const { return size_; }
    // False when another program has written to the file since then.
    bool IsUnchanged() const;

 private:
    std::filesystem::path path_;
    int descriptor_ = -1;
    std::size_t size_ = 0;
    std::int64_t written_ = 0;  // when, in nanoseconds
};

// The bytes of a file as they are.
std::string ReadWholeFile(const std::filesystem::path& path);

}  // namespace tallymar
