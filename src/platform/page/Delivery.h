#pragma once

#include <filesystem>
#include <memory>

#include "platform/page/DetailTable.h"
#include "platform/page/PageDocument.h"
#include "platform/runtime/FileReplacement.h"

// What becomes of a finished document. This header is for bodies and doors alike: it needs no Qt.
namespace tallymar {

enum class OutputTarget { Preview = 1, File = 3, Printer = 5 };

// A finished document: what was drawn, and the same rows as data. Tables without columns have no rows to give.
struct PrintedDocument {
    PageDocument Pages;
    DetailTable Details;
};

enum class FileFormat { Pdf, Text, Csv, Workbook };

// .pdf, .txt, .csv and .xlsx in any letter case; every other name, and one without an extension, is a PDF's.
FileFormat FormatOfFile(const std::filesystem::path& path);
// The name that the document is delivered under: the path itself or, when its name has none of the four extensions, with ".pdf"
// added to it ("Report 12.31" becomes "Report 12.31.pdf").
std::filesystem::path DeliveryPath(const std::filesystem::path& path);

// A document on its way into DeliveryPath(path), in the two steps of a FileReplacement: the pages as PDF or fixed-pitch text, or
// the detail rows as .csv or .xlsx. Failures: those of FileReplacement, the constructor's too; DeviceError when a font is
// missing; InvalidCall for a .csv or .xlsx of a document without detail rows;
// PathAccess for the file that the document was made from.
class FileDelivery {
 public:
    explicit FileDelivery(const std::filesystem::path& path);

    void Write(const PageDocument& pages, const DetailTable& details);  // whole on the disk, beside its place
    void PutInPlace() { file_.PutInPlace(); }
    const std::filesystem::path& Path() const { return path_; }

 private:
    std::filesystem::path path_;
    FileReplacement file_;
};

// Both steps at once. The file appears whole or not at all; an earlier one stays until then. Returns the path written.
std::filesystem::path DeliverToFile(const PageDocument& pages, const DetailTable& details, const std::filesystem::path& path);

}  // namespace tallymar
