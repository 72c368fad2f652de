#include "cli/TerminalPrompts.h"

#include <iostream>
#include <string>

#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

void TerminalPrompts::Message(std::string_view text, std::string_view, MessageKind) {
    std::cerr << ToUtf8(text) << '\n';
}

bool TerminalPrompts::AskYesNo(std::string_view text, std::string_view) {
    std::cerr << ToUtf8(text) << " [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    const std::string lower = LCase(Trim(answer));
    return lower == "y" || lower == "yes";
}

}  // namespace tallymar::cli
