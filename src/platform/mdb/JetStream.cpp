#include "platform/mdb/JetStream.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace tallymar::mdb {

namespace {

// A frame: its length without the length itself, its kind, its contents.
using Length = std::uint32_t;
constexpr std::size_t kMostFrame = 1 << 20;
constexpr char kTable = 'T';
constexpr char kRow = 'R';
constexpr char kFailure = 'F';
constexpr char kDone = '.';

constexpr std::size_t kBuffer = 1 << 16;

[[noreturn]] void Garbled() {
    throw ReaderFailure(Failure::UnrecognizedFormat, "could not be read: its reader has failed");
}

// The contents of a frame, from the front.
class Frame {
 public:
    explicit Frame(std::string_view bytes) : bytes_(bytes) {}

    template <typename T>
    T Take() {
        T value;
        const std::string_view raw = TakeBytes(sizeof value);
        std::memcpy(&value, raw.data(), sizeof value);
        return value;
    }
    std::string_view TakeBytes(std::size_t length) {
        if (bytes_.size() < length) Garbled();
        const std::string_view taken = bytes_.substr(0, length);
        bytes_.remove_prefix(length);
        return taken;
    }
    std::string_view TakeText() { return TakeBytes(Take<std::uint16_t>()); }
    void RequireEnd() const {
        if (!bytes_.empty()) Garbled();
    }

 private:
    std::string_view bytes_;
};

bool IsWhole(JetType type) {
    return type <= JetType::Currency;
}

bool IsReal(JetType type) {
    return type >= JetType::Single && type <= JetType::Date;
}

}  // namespace

void JetStreamWriter::Begin(char kind) {
    frame_ = buffer_.size();
    Put(Length{0});
    Put(kind);
}

void JetStreamWriter::End() {
    const auto length = static_cast<Length>(buffer_.size() - frame_ - sizeof(Length));
    std::memcpy(buffer_.data() + frame_, &length, sizeof length);
    if (buffer_.size() >= kBuffer) Flush();
}

void JetStreamWriter::PutText(std::string_view text) {
    Put(static_cast<std::uint16_t>(text.size()));
    Put(text.data(), text.size());
}

void JetStreamWriter::Flush() {
    std::string_view rest = buffer_;
    while (!rest.empty()) {
        const ssize_t written = write(descriptor_, rest.data(), rest.size());
        if (written < 0 && errno != EINTR) _exit(1);
        if (written > 0) rest.remove_prefix(static_cast<std::size_t>(written));
    }
    buffer_.clear();
}

void JetStreamWriter::Table(const JetTable& table) {
    Begin(kTable);
    PutText(table.Name);
    Put(table.Rows);
    Put(static_cast<std::uint16_t>(table.Columns.size()));
    types_.clear();
    for (const JetColumn& column : table.Columns) {
        PutText(column.Name);
        Put(column.Type);
        Put(static_cast<std::int32_t>(column.Size));
        types_.push_back(column.Type);
    }
    End();
}

void JetStreamWriter::Row(std::span<const JetValue> values) {
    Begin(kRow);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const JetValue& value = values[i];
        Put(value.IsNull);
        if (value.IsNull) continue;
        if (IsWhole(types_[i])) Put(value.Whole);
        if (IsReal(types_[i])) Put(value.Real);
        if (types_[i] == JetType::Text) {
            Put(value.NotInText);
            PutText(value.Text);
        }
    }
    End();
}

void JetStreamWriter::Failed(const PlatformError& failure) {
    constexpr std::size_t kMostText = 1000;
    Begin(kFailure);
    Put(static_cast<std::int32_t>(failure.Number()));
    PutText(std::string_view(failure.what()).substr(0, kMostText));
    End();
    Flush();
}

void JetStreamWriter::Done() {
    Begin(kDone);
    End();
    Flush();
}

void JetStreamReader::Take(std::string_view bytes) {
    if (!rest_.empty()) {
        rest_.append(bytes);
        bytes = rest_;
    }
    while (bytes.size() >= sizeof(Length)) {
        Length length;
        std::memcpy(&length, bytes.data(), sizeof length);
        if (length == 0 || length > kMostFrame || done_) Garbled();
        if (bytes.size() < sizeof length + length) break;
        TakeFrame(bytes.substr(sizeof length, length));
        bytes.remove_prefix(sizeof length + length);
    }
    rest_ = std::string(bytes);
}

void JetStreamReader::TakeFrame(std::string_view frame) {
    const std::string_view contents = frame.substr(1);
    switch (frame.front()) {
        case kTable:
            return TakeTable(contents);
        case kRow:
            return TakeRow(contents);
        case kFailure: {
            Frame rest(contents);
            const auto number = rest.Take<std::int32_t>();
            const bool noTable = number == static_cast<std::int32_t>(Failure::NoSuchTable);
            throw ReaderFailure(noTable ? Failure::NoSuchTable : Failure::UnrecognizedFormat, std::string(rest.TakeText()));
        }
        case kDone:
            done_ = true;
            return;
        default:
            Garbled();
    }
}

void JetStreamReader::TakeTable(std::string_view contents) {
    Frame frame(contents);
    table_ = JetTable();
    table_.Name = frame.TakeText();
    table_.Rows = frame.Take<std::int64_t>();
    const auto columns = frame.Take<std::uint16_t>();
    for (std::size_t i = 0; i < columns; ++i) {
        JetColumn column;
        column.Name = frame.TakeText();
        const auto type = frame.Take<std::uint8_t>();
        if (type > static_cast<std::uint8_t>(JetType::Other)) Garbled();
        column.Type = static_cast<JetType>(type);
        column.Size = frame.Take<std::int32_t>();
        table_.Columns.push_back(std::move(column));
    }
    frame.RequireEnd();
    values_.resize(table_.Columns.size());
    rows_.Table(table_);
}

void JetStreamReader::TakeRow(std::string_view contents) {
    if (values_.empty()) Garbled();  // of no table
    Frame frame(contents);
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const JetType type = table_.Columns[i].Type;
        JetValue& value = values_[i];
        value = JetValue();
        value.IsNull = frame.Take<char>() != 0;
        if (value.IsNull) continue;
        if (IsWhole(type)) value.Whole = frame.Take<std::int64_t>();
        if (IsReal(type)) value.Real = frame.Take<double>();
        if (type == JetType::Text) {
            value.NotInText = frame.Take<char32_t>();
            value.Text = frame.TakeText();
        }
    }
    frame.RequireEnd();
    rows_.Row(values_);
}

}  // namespace tallymar::mdb
