#include "platform/spreadsheet/NumberFormat.h"

#include <array>

namespace tallymar::sheets {

NumberMeaning MeaningOfFormat(std::string_view code) {
    constexpr std::string_view kGeneral = "general";
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    NumberMeaning meaning = NumberMeaning::Plain;
    for (std::size_t i = 0; i < code.size() && code[i] != ';'; ++i) {
        const char c = lower(code[i]);
        if (c == '"' || c == '[') {
            // Words between quotation marks, colours and currencies between brackets; [h] counts hours.
            const std::size_t end = code.find(c == '"' ? '"' : ']', i + 1);
            if (end == std::string_view::npos) break;
            const char first = lower(code[i + 1]);
            if (c == '[' && end == i + 2 && (first == 'h' || first == 'm' || first == 's')) return NumberMeaning::Date;
            i = end;
        } else if (c == '\\' || c == '_' || c == '*') {
            ++i;
        } else if (c == 'g' && code.size() - i >= kGeneral.size()) {
            i += kGeneral.size() - 1;
        } else if (c == '%') {
            meaning = NumberMeaning::Percent;
        } else if (c == 'd' || c == 'm' || c == 'y' || c == 'h' || c == 's') {
            return NumberMeaning::Date;
        }
    }
    return meaning;
}

// ECMA-376, 18.8.30: 14 to 22 and 45 to 47 everywhere, 27 to 36 and 50 to 58 in East Asian languages.
NumberMeaning MeaningOfBuiltInFormat(int number) {
    constexpr std::array<std::array<int, 2>, 4> kDates = {{{14, 22}, {27, 36}, {45, 47}, {50, 58}}};
    for (const auto& [first, last] : kDates) {
        if (number >= first && number <= last) return NumberMeaning::Date;
    }
    return number == 9 || number == 10 ? NumberMeaning::Percent : NumberMeaning::Plain;
}

}  // namespace tallymar::sheets
