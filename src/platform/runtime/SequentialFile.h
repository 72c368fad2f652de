#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// Comma-delimited text files as the program has always read and written them, in Windows-1252.
// Failures: FileNotFound, PathNotFound, PermissionDenied, PathAccess on opening; InputPastEnd when an item is asked for behind the last one; DiskFull or
// DeviceError when writing or closing does not reach the disk.

// Reads one item after the other. Items are apart by commas or line ends; blanks before an item are passed over; an item in double
// quotes may hold commas and line ends. CR, LF and CR LF all end a line.
class SequentialReader {
 public:
    explicit SequentialReader(const std::filesystem::path& path);

    bool AtEnd();  // no item is left
    std::string ReadText();
    double ReadNumber();  // Val of the item
    CurrencyAmount ReadCurrency() { return CurrencyAmount::FromDouble(ReadNumber()); }
    int ReadInteger();  // ties to even, 16 bits
    std::string ReadLine();  // the rest of the current line, without its end

 private:
    std::string contents_;
    std::size_t position_ = 0;
};

// Writes lines of quoted texts. Nothing of an earlier file of the name is harmed before Close has succeeded: the new contents are
// written beside it and take its place whole.
class SequentialWriter {
 public:
    explicit SequentialWriter(std::filesystem::path path);
    ~SequentialWriter();  // without Close: the earlier file stays
    SequentialWriter(const SequentialWriter&) = delete;
    SequentialWriter& operator=(const SequentialWriter&) = delete;

    void WriteQuotedLine(std::string_view text);  // "text" and CR LF
    void WriteLine(std::string_view text);        // text and CR LF
    void Close();

 private:
    std::filesystem::path path_;
    std::string contents_;
};

// Puts contents in the file of that path, whole or not at all: written beside it, flushed to the disk, renamed over it. A link is followed; owner-set permissions of an earlier file stay.
void ReplaceFile(const std::filesystem::path& path, std::string_view contents);

}  // namespace tallymar
