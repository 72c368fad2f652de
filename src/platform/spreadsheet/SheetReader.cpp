#include "platform/spreadsheet/SheetReader.h"

#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "platform/spreadsheet/OdsBook.h"
#include "platform/spreadsheet/XlsxBook.h"
#include "platform/spreadsheet/ZipParts.h"

namespace tallymar::sheets {

namespace {

constexpr std::size_t kPiece = 1 << 15;
constexpr std::string_view kZip("PK\x03\x04", 4);
constexpr std::string_view kOlder("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);  // .xls, and an .xlsx with a password

std::string FirstBytes(const std::filesystem::path& path) {
    InputFile file(path);
    std::string bytes(kOlder.size(), '\0');
    bytes.resize(file.Read(bytes.data(), bytes.size()));
    return bytes;
}

std::unique_ptr<Parts> OpenParts(const std::filesystem::path& path) {
    if (FirstBytes(path) == kOlder)
        RefuseWorkbook("is an .xls workbook, or one with a password; save it as an .xlsx or .ods without a password");
    return std::make_unique<ZipParts>(path);
}

}  // namespace

struct SheetReader::State {
    explicit State(std::unique_ptr<Parts> parts) : All(std::move(parts)) {
        if (All->Open(kOdsContent) != nullptr) {
            Styles = ReadOdsStyles(*All);
            return;
        }
        Book.emplace(XlsxBook::Read(*All));
        SheetName = Book->SheetName;
    }

    void Rewind() {
        Xml.reset();
        Part = All->Open(Book ? Book->SheetPart : kOdsContent);
        if (Part == nullptr) RefuseWorkbook("is damaged: its sheet is missing");
        Sheet = Book ? ParseXlsxSheet(*Book) : ParseOdsSheet(Styles, [this](std::string_view name) { SheetName = name; });
        Xml.emplace(*Sheet);
        Ended = false;
    }

    bool ReadRow(SheetRow& row) {
        while (!Sheet->Rows().Pop(row)) {
            if (Ended) return false;
            const std::size_t count = Part->Read(Piece.data(), Piece.size());
            Ended = count == 0;
            // After the sheet the part is unpacked all the same: its checksum comes last.
            if (!Sheet->IsDone()) Xml->Take({Piece.data(), count}, Ended);
        }
        return true;
    }

    std::unique_ptr<Parts> All;
    std::optional<XlsxBook> Book;  // none: an .ods
    PercentStyles Styles;          // of an .ods
    std::string SheetName;
    std::unique_ptr<PartStream> Part;
    std::unique_ptr<SheetParser> Sheet;
    std::optional<XmlParser> Xml;
    bool Ended = false;
    std::array<char, kPiece> Piece;
};

// The body's failures are told with the file's name before them.
template <typename Body>
auto SheetReader::Named(Body body) const {
    try {
        return body();
    } catch (const PlatformError& failure) {
        const bool ofContents = failure.Code() == Failure::UnrecognizedFormat || failure.Code() == Failure::FieldTooSmall;
        throw ofContents ? failure.WithPrefix(name_ + " ") : failure;
    }
}

SheetReader::SheetReader(const std::filesystem::path& path) : name_(FromUtf8(path.filename().string())) {
    Named([&] {
        state_ = std::make_unique<State>(OpenParts(path));
        state_->Rewind();
    });
}

SheetReader::SheetReader(std::unique_ptr<Parts> parts, std::string name) : name_(std::move(name)) {
    Named([&] {
        state_ = std::make_unique<State>(std::move(parts));
        state_->Rewind();
    });
}

SheetReader::~SheetReader() = default;

bool SheetReader::ReadRow(SheetRow& row) {
    return Named([&] { return state_->ReadRow(row); });
}

void SheetReader::Rewind() {
    Named([&] { state_->Rewind(); });
}

double SheetReader::ShareRead() const {
    return state_->Part->ShareRead();
}

const std::string& SheetReader::SheetName() const {
    return state_->SheetName;
}

bool SheetReader::Recognizes(const std::filesystem::path& path) {
    const std::string bytes = FirstBytes(path);
    return bytes.starts_with(kZip) || bytes == kOlder;
}

}  // namespace tallymar::sheets
