#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "platform/mdb/JetFile.h"
#include "platform/runtime/PlatformError.h"

// What is read, as bytes on its way from the reading process to the one that asked. Both are the same program, so numbers lie as
// in memory; but the reader may have been taken over by the file it read, so nothing that comes is believed.
namespace tallymar::mdb {

// What the reading process came to, or that it has said what no reader says.
class ReaderFailure : public PlatformError {
 public:
    using PlatformError::PlatformError;
};

// Writes to a descriptor. Ends the process when nobody listens any more.
class JetStreamWriter : public JetRows {
 public:
    explicit JetStreamWriter(int descriptor) : descriptor_(descriptor) {}

    void Table(const JetTable& table) override;
    void Row(std::span<const JetValue> values) override;
    void Failed(const PlatformError& failure);
    void Done();

 private:
    void Begin(char kind);
    void End();
    void Put(const void* bytes, std::size_t length) { buffer_.append(static_cast<const char*>(bytes), length); }
    template <typename T>
    void Put(T number) {
        Put(&number, sizeof number);
    }
    void PutText(std::string_view text);
    void Flush();

    int descriptor_;
    std::string buffer_;
    std::size_t frame_ = 0;  // where the frame being written begins
    std::vector<JetType> types_;
};

// Takes the bytes as they come and gives what they say.
class JetStreamReader {
 public:
    explicit JetStreamReader(JetRows& rows) : rows_(rows) {}

    // Fails with ReaderFailure, and with what `rows` throws.
    void Take(std::string_view bytes);
    bool IsDone() const { return done_; }

 private:
    void TakeFrame(std::string_view frame);
    void TakeTable(std::string_view frame);
    void TakeRow(std::string_view frame);

    JetRows& rows_;
    std::string rest_;  // of a frame that has not come whole
    JetTable table_;
    std::vector<JetValue> values_;
    bool done_ = false;
};

}  // namespace tallymar::mdb
