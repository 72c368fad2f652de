#include "help/SourceTexts.h"

#include <cctype>

#include "support/Files.h"

namespace tallymar::test {

namespace {

bool IsWord(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// The character that an escape stands for; white space for those that end a line or a column.
char Escaped(char letter) {
    switch (letter) {
        case 'n':
        case 't':
        case 'r':
            return ' ';
        default:
            return letter;
    }
}

class Reader {
 public:
    explicit Reader(std::string code) : code_(std::move(code)) {}

    std::vector<SourceText> Read() {
        while (at_ < code_.size()) Step();
        return std::move(texts_);
    }

 private:
    bool Skip(std::string_view opening, std::string_view closing) {
        if (code_.compare(at_, opening.size(), opening) != 0) return false;
        const std::size_t end = code_.find(closing, at_ + opening.size());
        at_ = end == code_.npos ? code_.size() : end + closing.size();
        return true;
    }
    void Step() {
        if (Skip("//", "\n") || Skip("/*", "*/") || Skip("#", "\n") || Skip("R\"(", ")\"")) return;
        const char c = code_[at_];
        if (c == '"') {
            Literal();
        } else if (c == '\'' && (at_ == 0 || !std::isdigit(static_cast<unsigned char>(code_[at_ - 1])))) {
            for (++at_; code_[at_] != '\''; ++at_) at_ += code_[at_] == '\\';
            ++at_;
        } else if (IsWord(c)) {
            const std::size_t begin = at_;
            while (at_ < code_.size() && IsWord(code_[at_])) ++at_;
            word_ = code_.substr(begin, at_ - begin);
        } else {
            if (c == '(') open_.push_back(word_.empty() ? "(" : word_);
            if (c == '{' || c == '[') open_.emplace_back(1, c);
            if ((c == ')' || c == '}' || c == ']') && !open_.empty()) open_.pop_back();
            if (!std::isspace(static_cast<unsigned char>(c)) && c != ':' && c != '>') word_.clear();
            ++at_;
        }
    }
    void Literal() {
        const bool goesOn = code_.find_first_not_of(" \n\t", end_) == at_ && !texts_.empty();
        std::string text;
        for (++at_; code_[at_] != '"'; ++at_) text += code_[at_] == '\\' ? Escaped(code_[++at_]) : code_[at_];
        end_ = ++at_;
        if (goesOn) {
            texts_.back().Text += text;
            return;
        }
        SourceText found{std::move(text), {}};
        for (auto each = open_.rbegin(); each != open_.rend() && *each != "{"; ++each) found.Calls.push_back(*each);
        texts_.push_back(std::move(found));
    }

    std::string code_;
    std::size_t at_ = 0;
    std::size_t end_ = std::string::npos;  // of the literal before
    std::string word_;
    std::vector<std::string> open_;
    std::vector<SourceText> texts_;
};

}  // namespace

std::vector<SourceText> TextsOf(const std::filesystem::path& file) {
    return Reader(ReadAll(file)).Read();
}

}  // namespace tallymar::test
