#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallymar {

// A Windows-1252 text as a JSON string, in UTF-8 and with its quotes.
void AppendJsonText(std::string_view windows1252, std::string& out);

// Writes one JSON value, members and elements in the order of the calls. A key is empty for an element of an array and for the
// outermost value. Objects within an array stand on a line each, so that the text can be read and compared by lines.
class JsonWriter {
 public:
    void BeginObject(std::string_view key = {}) { Begin(key, '{'); }
    void BeginArray(std::string_view key = {}) { Begin(key, '['); }
    void End();  // of the object or array that was begun last

    void Text(std::string_view key, std::string_view windows1252);
    void Number(std::string_view key, std::int64_t number);

    const std::string& Result() const { return out_; }

 private:
    struct Level {
        char Kind;
        bool Empty = true;
        bool OnOneLine = false;
    };

    void Begin(std::string_view key, char kind);
    void Separate(std::string_view key);

    std::string out_;
    std::vector<Level> levels_;
};

}  // namespace tallymar
