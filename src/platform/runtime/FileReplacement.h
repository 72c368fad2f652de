#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tallymar {

// New contents of a file, written beside it while they come and put in its place, whole, by Commit; without Commit the earlier
// file stays as it was. What cannot be replaced, such as a printer's device, is written directly. A link is followed; owner-set
// permissions of an earlier file stay. The constructor already fails where nothing can be written, so that a long computation
// need not run first; it also removes what runs that died have left in the folder.
//
// A command that changes the company too takes Commit in two steps: Finish, then the company's own commit, then PutInPlace. What
// can fail for want of room has failed by then.
// Failures, each text naming the file: PathNotFound, PermissionDenied, PathAccess, DiskFull, DeviceError.
class FileReplacement {
 public:
    explicit FileReplacement(const std::filesystem::path& path);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    void Write(std::string_view contents);
    void Finish();      // whole and flushed to the disk, beside its place still; nothing can be written any more
    void PutInPlace();  // after Finish
    void Commit();      // both

 private:
    struct Target;

    void Flush();

    std::unique_ptr<Target> target_;
    std::string buffer_;
};

}  // namespace tallymar
