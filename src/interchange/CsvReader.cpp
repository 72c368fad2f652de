#include "interchange/CsvReader.h"

#include <csv.h>

#include <utility>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The first line with its end, whichever of the three that is.
std::string_view FirstLine(std::string_view text) {
    std::size_t end = text.find_first_of("\r\n");
    if (end == std::string_view::npos) return text;
    if (text.substr(end).starts_with("\r\n")) ++end;
    return text.substr(0, end + 1);
}

}  // namespace

// The library pushes fields; fed one line at a time it can end at most one row a call, which makes rows to be pulled.
struct CsvReader::Parser {
    csv_parser State{};
    std::vector<CsvField>* Row = nullptr;
    std::size_t Fields = 0;
    int Line = 0;
    int FieldLine = 0;
    bool InRow = false;
    bool RowEnded = false;

    Parser() {
        if (csv_init(&State, CSV_STRICT | CSV_STRICT_FINI | CSV_EMPTY_IS_NULL) != 0) throw std::bad_alloc();
        csv_set_space_func(&State, [](unsigned char) { return 0; });
    }
    ~Parser() { csv_free(&State); }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    static void OnField(void* text, std::size_t size, void* self) {
        Parser& parser = *static_cast<Parser*>(self);
        // Fields are used again from row to row for the sake of their buffers.
        if (parser.Fields == parser.Row->size()) parser.Row->emplace_back();
        CsvField& field = (*parser.Row)[parser.Fields++];
        field.IsNull = text == nullptr;
        field.Text.assign(field.IsNull ? "" : static_cast<const char*>(text), size);
        field.Line = parser.FieldLine;
        parser.FieldLine = parser.Line;
    }
    static void OnRow(int, void* self) { static_cast<Parser*>(self)->RowEnded = true; }
};

CsvReader::CsvReader(std::string_view contents, std::string name)
    : rest_(contents), name_(std::move(name)), parser_(std::make_unique<Parser>()) {
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
}

CsvReader::~CsvReader() = default;

bool CsvReader::ReadRow(std::vector<CsvField>& row) {
    Parser& parser = *parser_;
    parser.Row = &row;
    parser.Fields = 0;
    parser.RowEnded = false;
    while (!rest_.empty() && !parser.RowEnded) {
        const std::string_view line = FirstLine(rest_);
        rest_.remove_prefix(line.size());
        ++parser.Line;
        if (!parser.InRow) parser.FieldLine = parser.Line;
        if (csv_parse(&parser.State, line.data(), line.size(), Parser::OnField, Parser::OnRow, &parser) != line.size()) {
            if (csv_error(&parser.State) != CSV_EPARSE) throw std::bad_alloc();
            throw PlatformError(Failure::InvalidCall,
                                name_ + ", line " + std::to_string(parser.Line) + ": a quotation mark stands where none belongs");
        }
        if (line.find_first_not_of("\r\n") != std::string_view::npos) parser.InRow = true;
        if (parser.RowEnded) parser.InRow = false;
    }
    if (!parser.RowEnded && csv_fini(&parser.State, Parser::OnField, Parser::OnRow, &parser) != 0) {
        throw PlatformError(Failure::InvalidCall, name_ + ", line " + std::to_string(parser.FieldLine) +
                                                      ": the field in quotation marks that starts here never ends");
    }
    if (!parser.RowEnded) return false;
    row.resize(parser.Fields);
    return true;
}

}  // namespace tallymar
