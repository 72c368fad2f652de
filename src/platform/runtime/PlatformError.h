#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tallymar {

// The failures that messages quote by number. The numbers are those that accountants' notes and support letters have used for
// this program since its first release, so they never change.
enum class Failure : int {
    InvalidCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    BadFileName = 52,
    FileNotFound = 53,
    DeviceError = 57,
    FileExists = 58,
    DiskFull = 61,
    InputPastEnd = 62,
    PermissionDenied = 70,
    PathAccess = 75,
    PathNotFound = 76,
    InvalidUseOfNull = 94,
    NoCurrentIndex = 3019,
    UpdateWithoutEdit = 3020,
    NoCurrentRecord = 3021,
    DuplicateKey = 3022,
    CannotOpenFile = 3024,
    NullKey = 3058,
    NoSuchTable = 3078,
    InvalidBookmark = 3159,
    FieldTooSmall = 3163,
    FileInUse = 3045,
    RecordLocked = 3260,
    ItemNotFound = 3265,
    ZeroLengthNotAllowed = 3315,
    UnrecognizedFormat = 3343,
    DatabaseReadOnly = 3027,
};

// The plain text of a failure, such as "Overflow".
std::string_view FailureText(Failure failure);

// A failure of the platform beneath the program: it ends the command that met it, never the program. what() is the text that the
// user is shown; it names the file or item where that helps.
class PlatformError : public std::runtime_error {
 public:
    explicit PlatformError(Failure failure);
    PlatformError(Failure failure, const std::string& text);

    // "Disk full: /home/ann/elm.mdb": the failure's text and what it is about.
    static PlatformError About(Failure failure, std::string_view what);

    Failure Code() const { return failure_; }
    int Number() const { return static_cast<int>(failure_); }

    // The same failure with more said before it ("Asset 000123, Federal: ").
    PlatformError WithPrefix(std::string_view prefix) const;

 private:
    Failure failure_;
};

}  // namespace tallymar
