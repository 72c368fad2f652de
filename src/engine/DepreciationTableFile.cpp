#include "engine/DepreciationTableFile.h"

#include "platform/runtime/Format.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/SequentialFile.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

constexpr CurrencyAmount kHalf = CurrencyAmount::FromTenThousandths(CurrencyAmount::kScale / 2);

// Stricter than the leading number of a text: a damaged table must stop the run, not count as zero percent.
CurrencyAmount ReadNumber(SequentialReader& file) {
    const std::string item = file.ReadText();
    const auto number = CurrencyAmount::Parse(Trim(item));
    if (!number) throw PlatformError(Failure::TypeMismatch, "Type mismatch: \"" + item + "\" is no number");
    return *number;
}

CurrencyAmount ReadPercentage(SequentialReader& file) {
    const CurrencyAmount percentage = ReadNumber(file);
    if (percentage < CurrencyAmount() || percentage > Units(100)) {
        throw PlatformError(Failure::TypeMismatch, "Type mismatch: " + percentage.ToText() + " is no percentage from 0 to 100");
    }
    return percentage;
}

int ReadYears(SequentialReader& file) {
    const CurrencyAmount yearsLessOne = ReadNumber(file);
    if (yearsLessOne >= Units(DepreciationTableFile::kLastYear)) {
        throw PlatformError(Failure::SubscriptOutOfRange, "Subscript out of range: more than 50 years");
    }
    if (yearsLessOne < CurrencyAmount() || yearsLessOne != CurrencyAmount::FromInteger(yearsLessOne.WholePart())) {
        throw PlatformError(Failure::TypeMismatch, "Type mismatch: " + yearsLessOne.ToText() + " is no count of years");
    }
    return static_cast<int>(yearsLessOne.WholePart()) + 1;
}

}  // namespace

std::string DepreciationTableFile::NameFor(std::string_view typeCode, std::string_view methodCode, CurrencyAmount period,
                                           std::string_view assetType) {
    std::string name(typeCode);
    name.append(methodCode).append(Format(static_cast<long long>(YearsInName(period)), "00")).append(".D").append(assetType);
    return name;
}

std::int64_t DepreciationTableFile::YearsInName(CurrencyAmount period) {
    return (period + kHalf).WholePart();
}

DepreciationTableFile::DepreciationTableFile(const fs::path& path) try {
    SequentialReader file(path);
    const int years = ReadYears(file);
    for (int header = 0; header < 4; ++header) file.ReadText();
    for (std::size_t month = 1; month < percentages_.size(); ++month) {
        for (int year = 1; year <= years; ++year) percentages_[month][static_cast<std::size_t>(year)] = ReadPercentage(file);
    }
} catch (const PlatformError& failure) {
    throw failure.WithPrefix(path.filename().string() + ": ");
}

CurrencyAmount DepreciationTableFile::Percentage(int month, int year) const {
    if (month < 0 || month > kLastMonth || year < 0 || year > kLastYear) throw PlatformError(Failure::SubscriptOutOfRange);
    return percentages_[static_cast<std::size_t>(month)][static_cast<std::size_t>(year)];
}

}  // namespace tallymar
