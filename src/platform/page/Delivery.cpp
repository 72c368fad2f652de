#include "platform/page/Delivery.h"

#include <array>

#include "platform/page/DetailFiles.h"
#include "platform/page/PageText.h"
#include "platform/page/PdfFile.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/FileReplacement.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

struct Extension {
    std::string_view Text;
    FileFormat Format;
};

constexpr std::array<Extension, 4> kExtensions = {{
    {".pdf", FileFormat::Pdf},
    {".txt", FileFormat::Text},
    {".csv", FileFormat::Csv},
    {".xlsx", FileFormat::Workbook},
}};

const Extension* FindExtension(const std::filesystem::path& path) {
    const std::string extension = LCase(path.extension().string());
    for (const Extension& known : kExtensions) {
        if (known.Text == extension) return &known;
    }
    return nullptr;
}

void WriteText(const PageDocument& pages, FileReplacement& file) {
    for (int page = 1; page <= pages.PageCount(); ++page) {
        if (page > 1) file.Write("\f");
        file.Write(PageText(pages, page));
    }
}

}  // namespace

FileFormat FormatOfFile(const std::filesystem::path& path) {
    const Extension* known = FindExtension(path);
    return known == nullptr ? FileFormat::Pdf : known->Format;
}

std::filesystem::path DeliveryPath(const std::filesystem::path& path) {
    if (!path.has_filename() || FindExtension(path) != nullptr) return path;
    std::error_code none;  // a device keeps its name
    if (const auto status = std::filesystem::status(path, none); std::filesystem::is_other(status)) return path;
    std::filesystem::path named = path;
    return named += ".pdf";
}

FileDelivery::FileDelivery(const std::filesystem::path& path) : path_(DeliveryPath(path)), file_(path_) {}

void FileDelivery::Write(const PageDocument& pages, const DetailTable& details) {
    const FileFormat format = FormatOfFile(path_);
    if ((format == FileFormat::Csv || format == FileFormat::Workbook) && details.Columns().empty()) {
        throw PlatformError(Failure::InvalidCall,
                            "This document has no detail rows for a spreadsheet. Choose a .pdf or .txt file.");
    }
    if (!pages.Source.empty()) RequireApart(path_, pages.Source);
    switch (format) {
        case FileFormat::Pdf:
            WritePdf(pages, file_);
            break;
        case FileFormat::Text:
            WriteText(pages, file_);
            break;
        case FileFormat::Csv:
            file_.Write(DetailCsv(details));
            break;
        case FileFormat::Workbook:
            file_.Write(DetailWorkbook(details));
            break;
    }
    file_.Finish();
}

std::filesystem::path DeliverToFile(const PageDocument& pages, const DetailTable& details, const std::filesystem::path& path) {
    FileDelivery file(path);
    file.Write(pages, details);
    file.PutInPlace();
    return file.Path();
}

}  // namespace tallymar
