#include "formoutput/FormPageText.h"

#include <algorithm>

#include "formoutput/FormFields.h"
#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string CellsOf(std::string_view raw) {
    return raw.size() > kDroppedByPrinting ? std::string(RTrim(raw.substr(kDroppedByPrinting))) : std::string();
}

PlatformError Refusal(std::string_view name, std::string_view why) {
    return PlatformError(Failure::PathAccess, std::string(name) + " is no form page: " + std::string(why));
}

}  // namespace

std::vector<std::string_view> ValuesLines(std::string_view contents, std::string_view* firstLine) {
    contents = contents.substr(0, contents.find(kEndOfFileMark));
    std::vector<std::string_view> lines;
    while (!contents.empty()) {
        const std::size_t length = std::min(contents.find_first_of("\r\n"), contents.size());
        lines.push_back(contents.substr(0, length));
        contents.remove_prefix(length);
        if (contents.starts_with("\r\n")) {
            contents.remove_prefix(2);
        } else if (!contents.empty()) {
            contents.remove_prefix(1);
        }
    }
    if (firstLine) *firstLine = lines.empty() ? std::string_view() : lines.front();
    if (!lines.empty()) lines.erase(lines.begin());
    return lines;
}

std::string ReadValuesFile(const std::filesystem::path& path) {
    if (InputFile(path).Size() > FormPageText::kLongestFile) throw Refusal(FromUtf8(path.string()), "it is too long");
    return ReadWholeFile(path);
}

FormPageText::FormPageText(const FormPageInfo& page) : firstLine_(FirstLineOfPage(page.Code) + " ") {}

FormPageText FormPageText::Parse(std::string_view contents, std::string_view name) {
    if (contents.size() > kLongestFile) throw Refusal(name, "it is too long");
    FormPageText page;
    std::string_view first;
    const std::vector<std::string_view> lines = ValuesLines(contents, &first);
    if (lines.size() > kMostLines) throw Refusal(name, "it has too many lines");
    page.firstLine_ = first;
    for (const std::string_view line : lines) {
        if (RTrim(line).size() > kLongestLine) throw Refusal(name, "a line of it is too long");
        page.lines_.push_back({true, std::string(line), CellsOf(line)});
    }
    return page;
}

FormPageText FormPageText::Read(const FormPageInfo& page, const std::filesystem::path& path) {
    try {
        const std::string contents = ReadValuesFile(path);
        // A file that was cut to nothing has no first line to keep.
        if (contents.empty() || contents.front() == kEndOfFileMark) return FormPageText(page);
        return Parse(contents, FromUtf8(path.string()));
    } catch (const PlatformError& failure) {
        if (failure.Code() != Failure::FileNotFound) throw;
        return FormPageText(page);
    }
}

std::string FormPageText::Line(int line) const {
    if (line < 1 || line > LineCount()) return {};
    std::string text = lines_[static_cast<std::size_t>(line) - 1].Text;
    std::replace_if(text.begin(), text.end(), IsControl, ' ');
    text.resize(RTrim(text).size());
    return text;
}

std::string FormPageText::GetFieldText(int column, int line, int width) const {
    const std::string text = Line(line);
    const auto start = static_cast<std::size_t>(std::max(column, 1)) - 1;
    if (start >= text.size() || width < 1) return {};
    return std::string(RTrim(std::string_view(text).substr(start, static_cast<std::size_t>(width))));
}

void FormPageText::SetFieldText(int column, int line, std::string_view text, int width) {
    if (column < 1 || line < 1 || line > kPageLines || width < 1 || column + width - 1 > kPageColumns) return;
    if (GetFieldText(column, line, width) == RTrim(text.substr(0, static_cast<std::size_t>(width)))) return;
    if (line > LineCount()) lines_.resize(static_cast<std::size_t>(line));
    std::string& cells = lines_[static_cast<std::size_t>(line) - 1].Text;
    const auto start = static_cast<std::size_t>(column) - 1;
    const auto length = static_cast<std::size_t>(width);
    if (cells.size() < start + length) cells.resize(start + length, ' ');
    std::string put(text.substr(0, length));
    put.resize(length, ' ');
    std::replace_if(put.begin(), put.end(), IsControl, ' ');  // a line end in a field would tear its line apart
    cells.replace(start, length, put);
    cells.resize(RTrim(cells).size());
}

std::string FormPageText::ToFile() const {
    std::string file = firstLine_ + std::string(kLineEnd);
    for (const PageLine& line : lines_) {
        // A field's own blanks stand at the end of many lines, so a line that is as it was is put back as it was.
        if (line.InFile && CellsOf(line.Raw) == line.Text) {
            file += line.Raw;
        } else {
            std::string before = line.Raw.substr(0, kDroppedByPrinting);
            before.resize(kDroppedByPrinting, ' ');
            // Every line is ended by a blank of its own.
            before += line.Text;
            file.append(RTrim(before)).append(1, ' ');
        }
        file += kLineEnd;
    }
    return file + kEndOfFileMark;
}

}  // namespace tallymar
