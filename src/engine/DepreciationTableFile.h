#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// A table of percentages (33.33 meaning 33.33%) by fiscal month in service and year of life, as it lies beside the program: a
// comma-delimited text of the count of years less one, four texts that tell what the table is, and for each of the twelve months
// the percentages of all years.
class DepreciationTableFile {
 public:
    static constexpr int kLastMonth = 12;
    static constexpr int kLastYear = 50;

    // "MACSDB05.DPP" for type MACS, method DB, Period 5 and asset type PP. A Period with a fraction is rounded, halves up: 27.5
    // years are "28".
    static std::string NameFor(std::string_view typeCode, std::string_view methodCode, CurrencyAmount period,
                               std::string_view assetType);

    // The whole years that the name tells of a Period: 28 of 27.5.
    static std::int64_t YearsInName(CurrencyAmount period);

    // Failures: InputPastEnd when the file ends early, TypeMismatch when an item is no number or no percentage from 0 to 100,
    // SubscriptOutOfRange when it tells of more than 50 years; those of the platform when it cannot be read. Each text names the
    // file.
    explicit DepreciationTableFile(const std::filesystem::path& path);

    // 0 after the last year of the file. Failure: SubscriptOutOfRange for a month outside 0 to 12 or a year outside 0 to 50.
    CurrencyAmount Percentage(int month, int year) const;

 private:
    std::array<std::array<CurrencyAmount, kLastYear + 1>, kLastMonth + 1> percentages_{};
};

}  // namespace tallymar
