#include "interchange/CsvReader.h"

#include <csv.h>

#include <algorithm>
#include <utility>

#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kBuffer = 1 << 16;

bool IsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

}  // namespace

// The library pushes fields; fed at most one line at a time it can end at most one row a call, which makes rows to be pulled.
struct CsvReader::Parser {
    csv_parser State{};
    std::vector<TableField>* Row = nullptr;
    std::size_t Fields = 0;
    int Line = 0;  // 0: before the file
    int FieldLine = 0;
    bool LineEnded = true;
    bool InRow = false;
    bool RowEnded = false;
    bool TooLong = false;

    Parser() {
        if (csv_init(&State, CSV_STRICT | CSV_STRICT_FINI | CSV_EMPTY_IS_NULL) != 0) throw std::bad_alloc();
        csv_set_space_func(&State, [](unsigned char) { return 0; });
    }
    ~Parser() { csv_free(&State); }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    static void OnField(void* text, std::size_t size, void* self) {
        Parser& parser = *static_cast<Parser*>(self);
        if (size > kLongestField || parser.Fields == kMostFields) {
            parser.TooLong = true;
            return;
        }
        // Fields are used again from row to row for the sake of their buffers.
        if (parser.Fields == parser.Row->size()) parser.Row->emplace_back();
        TableField& field = (*parser.Row)[parser.Fields++];
        field.IsNull = text == nullptr;
        field.Text.assign(field.IsNull ? "" : static_cast<const char*>(text), size);
        field.Line = parser.FieldLine;
        parser.FieldLine = parser.Line;
    }
    static void OnRow(int, void* self) { static_cast<Parser*>(self)->RowEnded = true; }
};

CsvReader::CsvReader(const std::filesystem::path& path)
    : file_(path), name_(FromUtf8(path.filename().string())), buffer_(kBuffer) {
    Rewind();
}

CsvReader::~CsvReader() = default;

void CsvReader::Rewind() {
    file_.Rewind();
    begin_ = end_ = read_ = 0;
    parser_ = std::make_unique<Parser>();
    while (end_ < kByteOrderMark.size() && Fill()) continue;
    if (std::string_view(buffer_.data(), end_).starts_with(kByteOrderMark)) begin_ = kByteOrderMark.size();
}

void CsvReader::Fail(Failure failure, int line, const std::string& complaint) const {
    throw PlatformError(failure, name_ + ", line " + std::to_string(line) + ": " + complaint);
}

// More of the file after what is there; false when there is no more.
bool CsvReader::Fill() {
    if (begin_ > 0) {
        std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_), buffer_.begin() + static_cast<std::ptrdiff_t>(end_),
                  buffer_.begin());
        end_ -= begin_;
        begin_ = 0;
    }
    const std::size_t count = file_.Read(buffer_.data() + end_, buffer_.size() - end_);
    end_ += count;
    read_ += count;
    return count > 0;
}

double CsvReader::ShareRead() const {
    return file_.Size() == 0 ? 1.0 : std::min(1.0, static_cast<double>(read_) / static_cast<double>(file_.Size()));
}

std::string_view CsvReader::NextPiece() {
    for (bool more = true;;) {
        const std::string_view rest(buffer_.data() + begin_, end_ - begin_);
        std::size_t ending = rest.find_first_of("\r\n");
        // CR LF is one end, wherever the file has been cut.
        const bool cut = ending == std::string_view::npos || (rest[ending] == '\r' && ending + 1 == rest.size());
        if (cut && more && rest.size() < buffer_.size()) {
            more = Fill();
            continue;
        }
        if (ending != std::string_view::npos && rest.substr(ending).starts_with("\r\n")) ++ending;
        const std::string_view piece = rest.substr(0, ending == std::string_view::npos ? ending : ending + 1);
        begin_ += piece.size();
        return piece;
    }
}

bool CsvReader::ReadRow(std::vector<TableField>& row) {
    Parser& parser = *parser_;
    parser.Row = &row;
    parser.Fields = 0;
    parser.RowEnded = false;
    while (!parser.RowEnded) {
        const std::string_view piece = NextPiece();
        if (piece.empty()) break;
        if (parser.LineEnded) ++parser.Line;
        parser.LineEnded = IsLineEnd(piece.back());
        if (!parser.InRow) parser.FieldLine = parser.Line;
        const std::size_t parsed = csv_parse(&parser.State, piece.data(), piece.size(), Parser::OnField, Parser::OnRow, &parser);
        if (parser.TooLong || parser.State.entry_pos > kLongestField) {
            Fail(Failure::FieldTooSmall, parser.FieldLine, "a field or a row is longer than any that belongs in a company");
        }
        if (parsed != piece.size()) {
            if (csv_error(&parser.State) != CSV_EPARSE) throw std::bad_alloc();
            Fail(Failure::InvalidCall, parser.Line, "a quotation mark stands where none belongs");
        }
        if (!IsLineEnd(piece.front())) parser.InRow = true;
        if (parser.RowEnded) parser.InRow = false;
    }
    // Half of what is being saved may look like all of it.
    if (!parser.RowEnded && !file_.IsUnchanged())
        throw PlatformError(Failure::DeviceError,
                            name_ + " was changed while it was read; it must be closed in every other program");
    if (!parser.RowEnded && csv_fini(&parser.State, Parser::OnField, Parser::OnRow, &parser) != 0) {
        Fail(Failure::InvalidCall, parser.FieldLine, "the field in quotation marks that starts here never ends");
    }
    if (!parser.RowEnded) return false;
    row.resize(parser.Fields);
    return true;
}

}  // namespace tallymar
