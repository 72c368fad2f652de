#include "irsforms/WorkFile.h"

#include <algorithm>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

WorkFile::WorkFile(std::string_view read) : reads_(true), text_(read) {}

void WorkFile::Separate() {
    if (lineBegun_) {
        if (!reads_) {
            text_ += ',';
        } else {
            if (position_ >= text_.size()) throw PlatformError(Failure::InputPastEnd);
            if (text_[position_] != ',') throw PlatformError(Failure::TypeMismatch);
            ++position_;
        }
    }
    lineBegun_ = true;
    if (reads_ && position_ >= text_.size()) throw PlatformError(Failure::InputPastEnd);
}

void WorkFile::Item(std::string& text) {
    Separate();
    if (!reads_) {
        text_ += '"';
        for (const char c : text) text_.append(c == '"' ? 2 : 1, c);
        text_ += '"';
        return;
    }
    if (text_[position_] != '"') throw PlatformError(Failure::TypeMismatch);
    text.clear();
    for (++position_;; ++position_) {
        if (position_ >= text_.size()) throw PlatformError(Failure::InputPastEnd);
        if (text_[position_] == '"') {
            ++position_;
            if (position_ >= text_.size() || text_[position_] != '"') return;
        }
        text += text_[position_];
    }
}

void WorkFile::Item(CurrencyAmount& amount) {
    Separate();
    if (!reads_) {
        text_ += amount.ToText();
        return;
    }
    const std::size_t end = std::min(text_.find_first_of(",\r", position_), text_.size());
    const auto read = CurrencyAmount::Parse(std::string_view(text_).substr(position_, end - position_));
    if (!read) throw PlatformError(Failure::TypeMismatch);
    amount = *read;
    position_ = end;
}

void WorkFile::EndLine() {
    lineBegun_ = false;
    if (!reads_) {
        text_ += kLineEnd;
        return;
    }
    if (text_.compare(position_, kLineEnd.size(), kLineEnd) != 0) throw PlatformError(Failure::InputPastEnd);
    position_ += kLineEnd.size();
}

}  // namespace tallymar
