#include "formoutput/PrintBuffer.h"

#include <algorithm>

#include "formoutput/FormPageText.h"

namespace tallymar {

std::string PrintedValues(const std::filesystem::path& values) {
    std::string contents;
    try {
        contents = ReadValuesFile(values);
    } catch (const PlatformError& failure) {
        if (failure.Code() != Failure::FileNotFound) throw;
        return {};
    }
    std::string printed;
    for (const std::string_view line : ValuesLines(contents)) {
        printed += line.size() > kDroppedByPrinting ? line.substr(kDroppedByPrinting) : line;
        printed += "\r\n";
    }
    return printed + "\f";
}

void PrintBuffer::Fill(const std::filesystem::path& values) {
    const std::string bytes = PrintedValues(values);
    const std::size_t length = std::min(bytes.size(), kSize - count_);
    std::copy_n(bytes.begin(), length, bytes_.begin() + static_cast<std::ptrdiff_t>(count_));
    count_ += length;
    if (length < bytes.size()) throw PlatformError(Failure::SubscriptOutOfRange);
}

void PrintBuffer::Clear() {
    bytes_.fill('\0');
    count_ = 0;
}

}  // namespace tallymar
