#include "formoutput/FormFields.h"

#include <charconv>
#include <string>

#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/FormPageFile.h"

namespace tallymar {

namespace {

constexpr std::size_t kRecordLength = 85;
constexpr std::size_t kMostRecords = 1 + static_cast<std::size_t>(kPageColumns) * kPageLines;

// The bytes of a record, counted from 1.
constexpr std::size_t kTypeByte = 3;
constexpr std::size_t kLineBytes = 50;
constexpr std::size_t kColumnBytes = 53;
constexpr std::size_t kWidthBytes = 56;
constexpr std::size_t kNumberLength = 3;

PlatformError Refusal(std::string_view name, const std::string& why) {
    return PlatformError(Failure::PathAccess, std::string(name) + " is no file of form fields: " + why);
}

// -1 when it is no number.
int NumberAt(std::string_view record, std::size_t byte) {
    const std::string_view text = Trim(record.substr(byte - 1, kNumberLength));
    int number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : -1;
}

}  // namespace

std::vector<FormField> ParseFormFields(std::string_view contents, std::string_view name) {
    if (contents.size() % kRecordLength == 1 && contents.ends_with(kEndOfFileMark)) contents.remove_suffix(1);
    const std::size_t records = contents.size() / kRecordLength;
    if (records == 0) throw Refusal(name, "its header is missing");
    if (records > kMostRecords)
        throw Refusal(name, "it has " + std::to_string(records - 1) + " fields, more than a page has room for");
    const std::size_t rest = contents.size() % kRecordLength;
    if (rest != 0) {
        throw Refusal(name,
                      "it is cut short, with " + std::to_string(rest) + " of 85 bytes of record " + std::to_string(records + 1));
    }
    std::vector<FormField> fields;
    fields.reserve(records - 1);
    for (std::size_t i = 1; i < records; ++i) {
        const std::string_view record = contents.substr(i * kRecordLength, kRecordLength);
        const FormField field{.IsAmount = record[kTypeByte - 1] == '$',
                              .Line = NumberAt(record, kLineBytes),
                              .Column = NumberAt(record, kColumnBytes),
                              .Width = NumberAt(record, kWidthBytes)};
        const bool isOnPage = field.Line >= 1 && field.Line <= kPageLines && field.Column >= 0 && field.Width >= 1 &&
                              field.Column + field.Width <= kPageColumns;
        if (!isOnPage) throw Refusal(name, "field " + std::to_string(i) + " does not lie on the page");
        fields.push_back(field);
    }
    return fields;
}

std::vector<FormField> ReadFormFields(const std::filesystem::path& path) {
    const std::string name = FromUtf8(path.string());
    const InputFile file(path);
    if (file.Size() > (kMostRecords + 1) * kRecordLength) throw Refusal(name, "it is too long");
    return ParseFormFields(ReadWholeFile(path), name);
}

int FieldAt(const std::vector<FormField>& fields, int column, int line) {
    int hit = -1;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const FormField& field = fields[i];
        // COMPAT: the cell behind a field belongs to it.
        if (field.Line == line && column >= field.Column && column <= field.Column + field.Width) hit = static_cast<int>(i);
    }
    return hit;
}

}  // namespace tallymar
