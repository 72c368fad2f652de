#include "platform/mdb/JetText.h"

#include "platform/runtime/Windows1252.h"

namespace tallymar::mdb {

namespace {

constexpr char32_t kNoCharacter = 0xFFFD;

// Not for ASCII.
std::string Utf8Of(char32_t character) {
    const auto following = [character](int place) { return static_cast<char>(0x80 | ((character >> (6 * place)) & 0x3F)); };
    if (character < 0x800) return {static_cast<char>(0xC0 | (character >> 6)), following(0)};
    if (character < 0x10000) return {static_cast<char>(0xE0 | (character >> 12)), following(1), following(0)};
    return {static_cast<char>(0xF0 | (character >> 18)), following(2), following(1), following(0)};
}

char32_t ByteAt(std::string_view stored, std::size_t at) {
    return static_cast<unsigned char>(stored[at]);
}

class Decoder {
 public:
    Decoder(std::string_view stored, std::string& text) : stored_(stored), text_(text) { text_.clear(); }

    char32_t Run() {
        bool compressed = stored_.starts_with("\xFF\xFE");
        const bool switches = compressed;
        if (compressed) at_ = 2;
        while (at_ < stored_.size()) {
            // In a compressed text a zero byte where a character would begin changes between one byte a character (which is its
            // code point, not a byte of any code page) and UTF-16.
            if (switches && stored_[at_] == 0) {
                compressed = !compressed;
                ++at_;
            } else if (compressed) {
                Append(ByteAt(stored_, at_++));
            } else {
                Append(WideCharacter());
            }
        }
        return foreign_;
    }

 private:
    static bool IsFirstHalf(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
    static bool IsSecondHalf(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

    char32_t Unit(std::size_t at) const { return ByteAt(stored_, at) | (ByteAt(stored_, at + 1) << 8); }

    char32_t WideCharacter() {
        if (at_ + 2 > stored_.size()) {
            at_ = stored_.size();
            return kNoCharacter;
        }
        const char32_t unit = Unit(at_);
        at_ += 2;
        if (IsFirstHalf(unit) && at_ + 2 <= stored_.size() && IsSecondHalf(Unit(at_))) {
            const char32_t second = Unit(at_);
            at_ += 2;
            return 0x10000 + ((unit - 0xD800) << 10) + (second - 0xDC00);
        }
        return IsFirstHalf(unit) || IsSecondHalf(unit) ? kNoCharacter : unit;
    }

    void Append(char32_t character) {
        if (character < 0x80) {
            text_ += static_cast<char>(character);
            return;
        }
        text_ += FromUtf8(Utf8Of(character));
        if (foreign_ == 0 && !IsInWindows1252(character)) foreign_ = character;
    }

    std::string_view stored_;
    std::string& text_;
    std::size_t at_ = 0;
    char32_t foreign_ = 0;
};

}  // namespace

char32_t DecodeJet4Text(std::string_view stored, std::string& text) {
    return Decoder(stored, text).Run();
}

}  // namespace tallymar::mdb
