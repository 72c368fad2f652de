#include "formoutput/PrintBuffer.h"

#include <algorithm>
#include <functional>
#include <string>

#include "formoutput/FormPageText.h"

namespace tallymar {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kFormFeed = "\f";

void ForEachPart(const std::filesystem::path& values, const std::function<void(std::string_view)>& take) {
    std::string contents;
    try {
        contents = ReadValuesFile(values);
    } catch (const PlatformError& failure) {
        if (failure.Code() != Failure::FileNotFound) throw;
        return;
    }
    for (const std::string_view line : ValuesLines(contents)) {
        take(line.size() > kDroppedByPrinting ? line.substr(kDroppedByPrinting) : line);
        take(kLineEnd);
    }
    take(kFormFeed);
}

}  // namespace

void PrintBuffer::Append(std::string_view bytes) {
    const std::size_t length = std::min(bytes.size(), kSize - count_);
    std::copy_n(bytes.begin(), length, bytes_.begin() + static_cast<std::ptrdiff_t>(count_));
    count_ += length;
    if (length < bytes.size()) throw PlatformError(Failure::SubscriptOutOfRange);
}

void PrintBuffer::Fill(const std::filesystem::path& values) {
    ForEachPart(values, [this](std::string_view part) { Append(part); });
}

void PrintBuffer::Clear() {
    bytes_.fill('\0');
    count_ = 0;
}

std::size_t PrintedLength(const std::filesystem::path& values) {
    std::size_t length = 0;
    ForEachPart(values, [&](std::string_view part) { length += part.size(); });
    return length;
}

}  // namespace tallymar
