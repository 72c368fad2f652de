#include "forms/BlankForm.h"

namespace tallymar::tools {

namespace {

constexpr std::size_t kRecordSize = 85;
constexpr std::size_t kKindAt = 2;
constexpr std::size_t kPlaceAt = 49;
constexpr int kPlaceWidth = 3;

std::string Record(std::string_view what) {
    std::string record(kRecordSize - 2, ' ');
    record += "\r\n";  // so that an editor shows a record a line
    record.replace(0, what.size(), what);
    return record;
}

std::string Digits(int number) {
    const std::string text = std::to_string(number);
    return std::string(kPlaceWidth - text.size(), ' ') + text;
}

}  // namespace

std::string LaserPage(const BlankForm& form) {
    PclWriter page;
    page.BeginPage();
    for (const BlankRect& rect : form.Rects) {
        const DotBox& box = rect.Box;
        page.Fill(box.Left, box.Top, box.Right - box.Left, box.Bottom - box.Top, rect.Grey);
    }
    for (const BlankWord& word : form.Words) {
        page.InkWhite(word.White);
        page.SelectFont(word.Font->Printer);
        page.Text(word.Left, word.Baseline, word.Text);
    }
    page.EndPage();
    return page.Bytes();
}

std::string FieldRecords(const BlankForm& form) {
    std::string records = Record("  " + form.Code);
    for (const BlankField& field : form.Fields) {
        std::string record = Record("");
        record[kKindAt] = field.IsAmount ? '$' : 'T';
        // The program counts a page's lines without the one that names it, and its columns from 0.
        record.replace(kPlaceAt, 3 * kPlaceWidth, Digits(field.Line - 1) + Digits(field.Column - 1) + Digits(field.Width));
        records += record;
    }
    return records;
}

}  // namespace tallymar::tools
