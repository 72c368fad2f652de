#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/pcl/PclDrawing.h"
#include "platform/runtime/FileReplacement.h"

namespace tallymar {

// What a form page prints, under the code that a reader of the PDF finds it by.
struct FormSheet {
    std::string Label;  // "245621"; a second sheet of the same drawing is labelled "245621-2"
    PclDrawing Drawing;
};

// All sheets as one PDF, in the same manner as the PDF of a report (PdfFile.h): what can be read is text, at the places where the
// printer puts it; each page is labelled by its code. Failures: those of writing the file; DeviceError when a font is missing.
void WriteFormPdf(const std::vector<FormSheet>& sheets, std::string_view title, FileReplacement& file);

}  // namespace tallymar
