#include "platform/runtime/PlatformError.h"

#include <array>
#include <utility>

namespace tallymar {

namespace {

constexpr auto kTexts = std::to_array<std::pair<Failure, std::string_view>>({
    {Failure::InvalidCall, "Invalid procedure call or argument"},
    {Failure::Overflow, "Overflow"},
    {Failure::SubscriptOutOfRange, "Subscript out of range"},
    {Failure::TypeMismatch, "Type mismatch"},
    {Failure::BadFileName, "Bad file name or number"},
    {Failure::FileNotFound, "File not found"},
    {Failure::DeviceError, "Device I/O error"},
    {Failure::FileExists, "File already exists"},
    {Failure::DiskFull, "Disk full"},
    {Failure::InputPastEnd, "Input past end of file"},
    {Failure::PermissionDenied, "Permission denied"},
    {Failure::PathAccess, "Path/File access error"},
    {Failure::PathNotFound, "Path not found"},
    {Failure::InvalidUseOfNull, "Invalid use of Null"},
    {Failure::NoCurrentIndex, "No current index"},
    {Failure::UpdateWithoutEdit, "Update without AddNew or Edit"},
    {Failure::NoCurrentRecord, "No current record"},
    {Failure::DuplicateKey, "The key of this record is already in use by another record"},
    {Failure::CannotOpenFile, "The database file cannot be found or opened"},
    {Failure::NullKey, "A key field cannot hold Null"},
    {Failure::NoSuchTable, "The database has no such table"},
    {Failure::InvalidBookmark, "Not a valid bookmark"},
    {Failure::FieldTooSmall, "The field is too small for this amount of data"},
    {Failure::FileInUse, "The file is in use by another program"},
    {Failure::RecordLocked, "The database is locked by another program"},
    {Failure::ItemNotFound, "Item not found in this collection"},
    {Failure::ZeroLengthNotAllowed, "The field cannot be a zero-length string"},
    {Failure::UnrecognizedFormat, "Unrecognized database format"},
    {Failure::DatabaseReadOnly, "The database is read-only"},
});

}  // namespace

std::string_view FailureText(Failure failure) {
    for (const auto& [code, text] : kTexts) {
        if (code == failure) return text;
    }
    return "Unknown failure";
}

PlatformError::PlatformError(Failure failure) : PlatformError(failure, std::string(FailureText(failure))) {}

PlatformError::PlatformError(Failure failure, const std::string& text) : std::runtime_error(text), failure_(failure) {}

PlatformError PlatformError::About(Failure failure, std::string_view what) {
    return PlatformError(failure, std::string(FailureText(failure)).append(": ").append(what));
}

PlatformError PlatformError::WithPrefix(std::string_view prefix) const {
    return PlatformError(failure_, std::string(prefix) + what());
}

}  // namespace tallymar
