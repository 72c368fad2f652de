#include "platform/runtime/JsonWriter.h"

#include "platform/runtime/Windows1252.h"

namespace tallymar {

void AppendJsonText(std::string_view windows1252, std::string& out) {
    constexpr std::string_view kHex = "0123456789abcdef";
    out += '"';
    for (const char& c : windows1252) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte < 0x20) {
            out += "\\u00";
            out += kHex[byte >> 4];
            out += kHex[byte & 15];
        } else {
            AppendUtf8(std::string_view(&c, 1), out);
        }
    }
    out += '"';
}

void JsonWriter::Separate(std::string_view key) {
    if (!levels_.empty()) {
        Level& level = levels_.back();
        if (!level.Empty) out_ += level.OnOneLine ? ", " : ",";
        level.Empty = false;
        if (!level.OnOneLine) out_.append("\n").append(levels_.size(), ' ');
    }
    if (key.empty()) return;
    AppendJsonText(key, out_);
    out_ += ": ";
}

void JsonWriter::Begin(std::string_view key, char kind) {
    const bool row = !levels_.empty() && (levels_.back().OnOneLine || (levels_.back().Kind == '[' && kind == '{'));
    Separate(key);
    levels_.push_back({.Kind = kind, .Empty = true, .OnOneLine = row});
    out_ += kind;
}

void JsonWriter::End() {
    const Level level = levels_.back();
    levels_.pop_back();
    if (!level.OnOneLine && !level.Empty) out_.append("\n").append(levels_.size(), ' ');
    out_ += level.Kind == '{' ? '}' : ']';
    if (levels_.empty()) out_ += '\n';
}

void JsonWriter::Text(std::string_view key, std::string_view windows1252) {
    Separate(key);
    AppendJsonText(windows1252, out_);
}

void JsonWriter::Number(std::string_view key, std::int64_t number) {
    Separate(key);
    out_ += std::to_string(number);
}

}  // namespace tallymar
