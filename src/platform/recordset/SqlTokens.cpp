#include "platform/recordset/SqlTokens.h"

#include <algorithm>

#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset::sql {

namespace {

// Inside a statement it is a blank to SQLite.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsWordCharacter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '$' || byte >= 0x80;
}

}  // namespace

void Tokens::Advance() {
    SkipBlanks();
    token_ = Token();
    if (position_ >= text_.size()) return;
    const char c = text_[position_];
    if (c == '"' || c == '`' || c == '[' || c == '\'') {
        ReadQuoted(c == '[' ? ']' : c);
    } else if (IsWordCharacter(c)) {
        const std::size_t start = position_;
        while (position_ < text_.size() && IsWordCharacter(text_[position_])) ++position_;
        token_ = {Token::Kind::Word, std::string(text_.substr(start, position_ - start))};
    } else {
        token_ = {Token::Kind::Mark, std::string(1, c)};
        ++position_;
    }
}

bool Tokens::Take(std::string_view word) {
    if (!token_.Is(word)) return false;
    Advance();
    return true;
}

bool Tokens::TakeMark(char c) {
    if (!token_.IsMark(c)) return false;
    Advance();
    return true;
}

bool Tokens::TakeName(std::string& name) {
    if (!token_.IsName()) return false;
    name = token_.Text;
    Advance();
    return true;
}

void Tokens::SkipBlanks() {
    while (position_ < text_.size()) {
        if (std::string_view(" \t\r\n\f").find(text_[position_]) != std::string_view::npos) {
            ++position_;
        } else if (text_.substr(position_, kByteOrderMark.size()) == kByteOrderMark) {
            position_ += kByteOrderMark.size();
        } else if (text_.substr(position_, 2) == "/*") {
            const std::size_t end = text_.find("*/", position_ + 2);
            const std::string_view comment =
                text_.substr(position_ + 2, end == std::string_view::npos ? end : end - position_ - 2);
            if (Trim(comment) == kRequiredMark) required_ = true;
            position_ = end == std::string_view::npos ? text_.size() : end + 2;
        } else if (text_.substr(position_, 2) == "--") {
            position_ = std::min(text_.size(), text_.find('\n', position_));
        } else {
            return;
        }
    }
}

void Tokens::ReadQuoted(char close) {
    token_.Type = Token::Kind::Quoted;
    for (++position_; position_ < text_.size(); ++position_) {
        if (text_[position_] == close) {
            ++position_;
            if (close == ']' || position_ >= text_.size() || text_[position_] != close) return;
        }
        token_.Text += text_[position_];
    }
}

}  // namespace tallymar::recordset::sql
