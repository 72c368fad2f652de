#include "platform/runtime/SequentialFile.h"

#include <algorithm>

#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr char kDosEndOfFile = '\x1A';

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

}  // namespace

SequentialReader::SequentialReader(const std::filesystem::path& path) : contents_(ReadWholeFile(path)) {
    // Today's editors save as UTF-8 with a mark; files of the DOS days end in a Ctrl-Z.
    isMarked_ = contents_.starts_with(kUtf8Mark);
    if (isMarked_) contents_ = FromUtf8(std::string_view(contents_).substr(kUtf8Mark.size()), &hasLostLetters_);
    while (!contents_.empty() && contents_.back() == kDosEndOfFile) contents_.pop_back();
}

double SequentialReader::ShareRead() const {
    return contents_.empty() ? 1 : static_cast<double>(position_) / static_cast<double>(contents_.size());
}

bool SequentialReader::AtEnd() const {
    return !itemPending_ && contents_.find_first_not_of(" \t\r\n", position_) == std::string::npos;
}

bool SequentialReader::HasLine() const {
    return position_ < contents_.size();
}

void SequentialReader::BeginItem() {
    if (position_ == contents_.size() && !itemPending_) throw PlatformError(Failure::InputPastEnd);
    itemPending_ = false;
    PassBlanks();
}

void SequentialReader::PassBlanks() {
    while (position_ < contents_.size() && IsBlank(contents_[position_])) ++position_;
}

// One line end of any kind; nothing when there is none here.
void SequentialReader::PassLineEnd() {
    if (position_ < contents_.size() && contents_[position_] == '\r') {
        ++position_;
        if (position_ < contents_.size() && contents_[position_] == '\n') ++position_;
    } else if (position_ < contents_.size() && contents_[position_] == '\n') {
        ++position_;
    }
}

void SequentialReader::PassDelimiter() {
    PassBlanks();
    if (position_ < contents_.size() && contents_[position_] == ',') {
        ++position_;
        itemPending_ = true;  // even at the very end: "1," holds two items
    } else {
        PassLineEnd();
    }
}

std::string_view SequentialReader::TakeUntil(std::string_view delimiters) {
    const std::size_t end = std::min(contents_.find_first_of(delimiters, position_), contents_.size());
    const std::string_view taken = std::string_view(contents_).substr(position_, end - position_);
    position_ = end;
    return taken;
}

// From after the opening quote; what stands between the closing one and the delimiter is dropped, so that a stray quote spoils
// its own item and none of those after it.
std::string_view SequentialReader::TakeQuoted() {
    ++position_;
    const std::string_view text = TakeUntil("\"");
    if (position_ < contents_.size()) ++position_;
    TakeUntil(",\r\n");
    return text;
}

bool SequentialReader::AtQuote() const {
    return position_ < contents_.size() && contents_[position_] == '"';
}

std::string SequentialReader::ReadText() {
    BeginItem();
    std::string text(AtQuote() ? TakeQuoted() : TakeUntil(",\r\n"));
    PassDelimiter();
    return text;
}

double SequentialReader::ReadNumber() {
    BeginItem();
    const double number = Val(AtQuote() ? TakeQuoted() : TakeUntil(", \t\r\n"));
    PassDelimiter();
    return number;
}

int SequentialReader::ReadInteger() {
    return ToInteger(ReadNumber());
}

std::string SequentialReader::ReadLine() {
    if (!HasLine()) throw PlatformError(Failure::InputPastEnd);
    itemPending_ = false;
    std::string line(TakeUntil("\r\n"));
    PassLineEnd();
    return line;
}

SequentialWriter::SequentialWriter(std::filesystem::path path) : path_(std::filesystem::absolute(path)) {}

SequentialWriter::~SequentialWriter() = default;

void SequentialWriter::WriteQuotedLine(std::string_view text) {
    CheckOpen();
    contents_.append(1, '"').append(text).append(1, '"').append(kLineEnd);
}

void SequentialWriter::WriteLine(std::string_view text) {
    CheckOpen();
    contents_.append(text).append(kLineEnd);
}

void SequentialWriter::Close() {
    if (!open_) return;
    ReplaceFile(path_, contents_);
    open_ = false;
    contents_ = std::string();
}

void SequentialWriter::CheckOpen() const {
    if (!open_) throw PlatformError(Failure::BadFileName);
}

}  // namespace tallymar
