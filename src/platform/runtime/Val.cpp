#include "platform/runtime/Val.h"

#include <charconv>
#include <string>
#include <system_error>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

// The characters of a text without its blanks, one at a time.
class Scanner {
 public:
    explicit Scanner(std::string_view text) : text_(text) { PassBlanks(); }

    char Peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }
    char Take() {
        const char c = text_[position_++];
        PassBlanks();
        return c;
    }

 private:
    void PassBlanks() {
        while (position_ < text_.size() && (text_[position_] == ' ' || text_[position_] == '\t' || text_[position_] == '\n')) {
            ++position_;
        }
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

int DigitOf(char c) {
    if (IsDigit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return 16;
}

double TakeWithRadix(Scanner& scanner) {
    const char mark = scanner.Peek();
    const bool hexadecimal = mark == 'H' || mark == 'h';
    const int radix = hexadecimal ? 16 : 8;
    if (hexadecimal || mark == 'O' || mark == 'o') scanner.Take();
    double value = 0;
    while (DigitOf(scanner.Peek()) < radix) value = value * radix + DigitOf(scanner.Take());
    return value;
}

void TakeDigits(Scanner& scanner, std::string& number) {
    while (IsDigit(scanner.Peek())) number += scanner.Take();
}

}  // namespace

double Val(std::string_view text) {
    Scanner scanner(text);
    if (scanner.Peek() == '&') {
        scanner.Take();
        return TakeWithRadix(scanner);
    }

    std::string number;
    if (scanner.Peek() == '-' || scanner.Peek() == '+') {
        if (scanner.Take() == '-') number += '-';
    }
    const std::size_t signLength = number.size();
    TakeDigits(scanner, number);
    if (scanner.Peek() == '.') {
        number += scanner.Take();
        TakeDigits(scanner, number);
    }
    if (number.find_first_of("0123456789") == std::string::npos) return 0;
    if (number[signLength] == '.') number.insert(signLength, 1, '0');

    const char mark = scanner.Peek();
    if (mark == 'E' || mark == 'e' || mark == 'D' || mark == 'd') {
        scanner.Take();
        std::string exponent = "e";
        if (scanner.Peek() == '-' || scanner.Peek() == '+') exponent += scanner.Take();
        const std::size_t before = exponent.size();
        TakeDigits(scanner, exponent);
        if (exponent.size() > before) number += exponent;
    }

    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range) {
        // The same error stands for a number too small to be told from 0, which is no failure.
        const std::size_t exponent = number.find('e');
        const bool tiny = exponent != std::string::npos ? number[exponent + 1] == '-' : number[signLength] == '0';
        if (!tiny) throw PlatformError(Failure::Overflow);
        return 0;
    }
    return value;
}

}  // namespace tallymar
