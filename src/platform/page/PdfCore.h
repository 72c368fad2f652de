#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/fonts/FontMetrics.h"
#include "platform/page/PageFontFile.h"
#include "platform/runtime/FileReplacement.h"

namespace tallymar {

// What every PDF of the program is made of, whatever stands on its pages: numbered objects, embedded subsets of the page fonts,
// pages with their contents, labels and properties. PDF 1.4; the same calls give the same bytes, and one page is in memory at
// a time. Fonts come before the pages, so that a missing one is told before anything is drawn.
class PdfCore {
 public:
    explicit PdfCore(FileReplacement& file);
    ~PdfCore();
    PdfCore(const PdfCore&) = delete;
    PdfCore& operator=(const PdfCore&) = delete;

    // A page font and the bytes of Windows-1252 drawn in it; its number, for FontName. Failure::DeviceError when it is missing.
    int AddFont(const FontMetrics& metrics, const UsedBytes& used);
    // Dots that are painted where a bit is set (rows of whole bytes); their number, for DotsName.
    int AddDots(int width, int height, std::string_view rows);
    // A page of a size in points. Its label is what readers show for a page number; without labels pages are numbered from 1.
    void AddPage(std::string_view contents, double width, double height, std::string_view label = {});
    void Finish(std::string_view title);

 private:
    class Objects;

    std::unique_ptr<Objects> objects_;
    int catalog_ = 0;
    int info_ = 0;
    int pageTree_ = 0;
    int resources_ = 0;
    std::vector<int> fonts_;  // their objects
    std::vector<int> dots_;
    std::string kids_;
    std::string labels_;
    int pages_ = 0;
};

// A page's contents, operator by operator. Numbers are written to a hundredth of the unit, and differences are those of rounded
// places: they stay exact, however many are added up.
class PdfContents {
 public:
    void Number(double value);    // and a blank
    void Hundredths(long value);  // the same of a measure in hundredths
    void Write(std::string_view text) { text_ += text; }
    void FontName(int font);             // "/F0 "
    void DotsName(int dots);             // "/D0 "
    void String(std::string_view text);  // Windows-1252, as FontMetrics' DrawnAs draws it, in parentheses
    const std::string& Text() const { return text_; }
    void Clear() { text_.clear(); }

    static long ToHundredths(double value);

 private:
    std::string text_;
};

}  // namespace tallymar
