#include "interchange/CsvText.h"

#include "platform/runtime/Windows1252.h"

namespace tallymar {

void AppendCsvText(std::string_view text, std::string& line) {
    // An empty text is quoted to tell it from Null, blanks at an end because some programs would drop them.
    const bool plain =
        !text.empty() && text.find_first_of(",\"\r\n") == std::string_view::npos && text.front() != ' ' && text.back() != ' ';
    if (plain) return AppendUtf8(text, line);
    line += '"';
    for (std::size_t quote = text.find('"'); quote != std::string_view::npos; quote = text.find('"')) {
        AppendUtf8(text.substr(0, quote + 1), line);
        line += '"';
        text.remove_prefix(quote + 1);
    }
    AppendUtf8(text, line);
    line += '"';
}

}  // namespace tallymar
