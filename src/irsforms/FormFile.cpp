#include "irsforms/FormFile.h"

#include "irsforms/FormatPicture.h"
#include "platform/runtime/PlatformError.h"
#include "store/FormPageFile.h"

namespace tallymar {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

bool FormFile::OpenFormFile() {
    contents_.clear();
    lineStart_ = 0;
    try {
        file_ = std::make_unique<FileReplacement>(path_);
        return true;
    } catch (const PlatformError&) {
        file_.reset();
        return false;
    }
}

void FormFile::CloseFormFile() {
    if (EndOfFile) contents_ += kEndOfFileMark;
    file_->Write(contents_);
    file_->Finish();
}

void FormFile::PutInPlace() {
    file_->PutInPlace();
}

void FormFile::MoveTo(int column) {
    const std::size_t position = column > 1 ? static_cast<std::size_t>(column - 1) : 0;
    if (contents_.size() - lineStart_ > position) {
        contents_ += kLineEnd;
        lineStart_ = contents_.size();
    }
    contents_.append(position - (contents_.size() - lineStart_), ' ');
}

void FormFile::WriteTextField(int& column, std::string_view text, int advance) {
    if (column > 0) column += kDroppedByPrinting;
    MoveTo(column);
    contents_ += text;
    SkipFormLines(advance);
}

void FormFile::WriteAmountField(int& column, const CurrencyAmount& amount, std::string& mask, char zeroRule, int advance) {
    if (mask.empty()) mask = kDefaultMask;
    if (column > 0) column += kDroppedByPrinting;
    if (zeroRule == 'Y' || (zeroRule == 'N' && !amount.IsZero())) {
        MoveTo(column);
        contents_ += FormatPicture(amount, mask);
    }
    SkipFormLines(advance);
}

void FormFile::SkipFormLines(int count) {
    for (int i = 0; i < count; ++i) {
        contents_ += ' ';
        contents_ += kLineEnd;
    }
    if (count > 0) lineStart_ = contents_.size();
}

}  // namespace tallymar
