#include "platform/pcl/PclScanner.h"

#include <algorithm>

namespace tallymar {

namespace {

constexpr char kEscape = '\x1B';
constexpr double kGreatestValue = 1e6;

constexpr bool IsBetween(char c, char from, char to) {
    return c >= from && c <= to;
}

// How much of a command's value counts bytes behind it.
std::size_t DataLength(std::uint32_t key, double value) {
    const bool hasData = (key & 0xFF) == 'W' || key == PclKey("*bV") || key == PclKey("&pX");
    return hasData && value > 0 ? static_cast<std::size_t>(value) : 0;
}

}  // namespace

PclScanner::Token PclScanner::CutShort() {
    cutShort_ = true;
    at_ = stream_.size();
    prefixLength_ = 0;
    return Token::End;
}

PclScanner::Token PclScanner::Next() {
    if (prefixLength_ > 0) return Parameter();
    if (at_ >= stream_.size()) return Token::End;
    if (stream_[at_] == kEscape) return Sequence();
    character_ = stream_[at_++];
    return Token::Character;
}

PclScanner::Token PclScanner::Sequence() {
    sequenceStart_ = at_;
    if (at_ + 1 >= stream_.size()) return CutShort();
    const char first = stream_[at_ + 1];
    if (IsBetween(first, '0', '~')) {
        at_ += 2;
        command_ = {.Key = static_cast<unsigned char>(first), .Value = 0, .Signed = false, .Data = {}};
        return Token::Command;
    }
    if (!IsBetween(first, '!', '/')) {
        // An escape alone: what follows is no command.
        ++at_;
        return Next();
    }
    at_ += 2;
    prefix_ = static_cast<unsigned char>(first);
    prefixLength_ = 1;
    if (at_ < stream_.size() && IsBetween(stream_[at_], '`', '~')) {
        prefix_ = prefix_ << 8 | static_cast<unsigned char>(stream_[at_++]);
        prefixLength_ = 2;
    }
    return Parameter();
}

void PclScanner::ReadValue() {
    command_.Value = 0;
    command_.Signed = false;
    bool negative = false;
    double scale = 1;
    bool fraction = false;
    for (; at_ < stream_.size(); ++at_) {
        const char c = stream_[at_];
        if (c == '+' || c == '-') {
            command_.Signed = true;
            negative = c == '-';
        } else if (c == '.') {
            fraction = true;
        } else if (IsBetween(c, '0', '9')) {
            if (fraction) {
                scale /= 10;
                command_.Value += (c - '0') * scale;
            } else {
                command_.Value = std::min(command_.Value * 10 + (c - '0'), kGreatestValue);
            }
        } else if (c != ' ') {
            break;
        }
    }
    if (negative) command_.Value = -command_.Value;
}

PclScanner::Token PclScanner::Parameter() {
    ReadValue();
    if (at_ >= stream_.size()) return CutShort();
    char final = stream_[at_];
    const bool more = IsBetween(final, '`', '~');
    if (!more && !IsBetween(final, '@', '^')) {
        // No command ends like this: what follows is read as it stands.
        prefixLength_ = 0;
        return Next();
    }
    ++at_;
    if (more) final = static_cast<char>(final - ('a' - 'A'));
    command_.Key = prefix_ << 8 | static_cast<unsigned char>(final);
    const std::size_t length = DataLength(command_.Key, command_.Value);
    command_.Data = {};
    if (!more) prefixLength_ = 0;
    if (length > stream_.size() - at_) return CutShort();
    command_.Data = stream_.substr(at_, length);
    at_ += length;
    return Token::Command;
}

}  // namespace tallymar
