#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/recordset/Names.h"

namespace tallymar::recordset::sql {

// The comment in an index's definition that says that none of its keys may be Null.
inline constexpr std::string_view kRequiredMark = "required";

struct Token {
    enum class Kind { Word, Quoted, Mark, End };

    Kind Type = Kind::End;
    std::string Text;  // of a quoted one without the quotes; UTF-8

    bool Is(std::string_view word) const { return Type == Kind::Word && SameName(Text, word); }
    bool IsMark(char c) const { return Type == Kind::Mark && Text[0] == c; }
    bool IsName() const { return Type == Kind::Word || Type == Kind::Quoted; }
};

// As much of SQLite's tokens as the definition of a table or an index can hold.
class Tokens {
 public:
    explicit Tokens(std::string_view text) : text_(text) { Advance(); }

    const Token& Current() const { return token_; }
    bool AtEnd() const { return token_.Type == Token::Kind::End; }
    bool SawRequiredMark() const { return required_; }

    void Advance();
    bool Take(std::string_view word);
    bool TakeMark(char c);
    bool TakeName(std::string& name);

 private:
    void SkipBlanks();
    void ReadQuoted(char close);

    std::string_view text_;
    std::size_t position_ = 0;
    Token token_;
    bool required_ = false;
};

}  // namespace tallymar::recordset::sql
