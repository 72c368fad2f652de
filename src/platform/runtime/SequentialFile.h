#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

// Comma-delimited text files in Windows-1252.
// Failures: FileNotFound, PathNotFound, PermissionDenied, PathAccess on opening; InputPastEnd when an item is asked for after
// the last one; DiskFull or DeviceError when writing or closing does not reach the disk. Their texts name the file.

// Reads one item after the other. Items are separated by commas or line ends; blanks before an item are passed over; an item in
// double quotes may hold commas and line ends, but no quote: it ends at the next one. CR, LF and CR LF all end a line, and the
// last line needs no end. An empty line is an empty item, as is what stands after a comma at the end of a line.
class SequentialReader {
 public:
    explicit SequentialReader(const std::filesystem::path& path);

    // A file that begins with the mark of UTF-8 is read as such. Has it characters that Windows-1252 has not ("?" now)?
    bool HasLostLetters() const { return hasLostLetters_; }
    // Is it UTF-8 all the same, though no mark tells? It is read as Windows-1252. Goes over the whole file.
    bool LooksUtf8() const { return !isMarked_ && LooksLikeUtf8(contents_); }

    bool AtEnd() const;        // nothing but blank lines is left
    double ShareRead() const;  // of the file, 0 to 1
    std::string ReadText();
    double ReadNumber();  // Val of the item; without quotes, a blank ends a number too
    CurrencyAmount ReadCurrency() { return CurrencyAmount::FromDouble(ReadNumber()); }
    int ReadInteger();  // ties to even, 16 bits

    bool HasLine() const;    // ReadLine has something to read, be it a blank line
    std::string ReadLine();  // the rest of the current line, without its end

 private:
    void BeginItem();
    void PassBlanks();
    void PassLineEnd();
    void PassDelimiter();
    bool AtQuote() const;
    std::string_view TakeUntil(std::string_view delimiters);
    std::string_view TakeQuoted();

    bool isMarked_ = false;
    bool hasLostLetters_ = false;
    std::string contents_;
    std::size_t position_ = 0;
    bool itemPending_ = false;  // the last item ended in a comma
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
    // Fails as ReplaceFile does; it may then be tried again. Writing after it has succeeded fails with Failure::BadFileName.
    void Close();

 private:
    void CheckOpen() const;

    std::filesystem::path path_;
    std::string contents_;
    bool open_ = true;
};

// Puts contents in the file of that path, whole or not at all (FileReplacement).
void ReplaceFile(const std::filesystem::path& path, std::string_view contents);

}  // namespace tallymar
