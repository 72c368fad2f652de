#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tallymar {

// A command's characters but its number, as one value: PclKey("&lO"), PclKey("(X"), PclKey("E").
constexpr std::uint32_t PclKey(std::string_view characters) {
    std::uint32_t key = 0;
    for (const char c : characters) key = key << 8 | static_cast<unsigned char>(c);
    return key;
}

struct PclCommand {
    std::uint32_t Key = 0;
    double Value = 0;     // 0 when none is given
    bool Signed = false;  // a move from where the cursor stands
    std::string_view Data;

    int Whole() const { return static_cast<int>(Value); }
};

// Takes a stream apart into characters and escape sequences, combined ones (ESC&l0e66f0L) into their commands.
class PclScanner {
 public:
    explicit PclScanner(std::string_view stream) : stream_(stream) {}

    enum class Token : std::uint8_t { Character, Command, End };
    Token Next();

    char Character() const { return character_; }
    const PclCommand& Command() const { return command_; }
    // Where the escape sequence of the last command begins.
    std::size_t SequenceStart() const { return sequenceStart_; }
    std::size_t Position() const { return at_; }
    // Goes on elsewhere, at the next token.
    void GoTo(std::size_t position) {
        at_ = position;
        prefixLength_ = 0;
    }
    // Does the stream end inside a command?
    bool IsCutShort() const { return cutShort_; }
    std::string_view Stream() const { return stream_; }

 private:
    Token Sequence();
    Token Parameter();
    void ReadValue();
    Token CutShort();

    std::string_view stream_;
    std::size_t at_ = 0;
    std::size_t sequenceStart_ = 0;
    std::uint32_t prefix_ = 0;  // of the sequence that more parameters may follow
    int prefixLength_ = 0;
    char character_ = 0;
    PclCommand command_;
    bool cutShort_ = false;
};

}  // namespace tallymar
