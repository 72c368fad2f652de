#include "engine/DeprStatus.h"

#include <array>
#include <string_view>

#include "platform/runtime/DateText.h"

namespace tallymar {

namespace {

enum class Shown : std::uint8_t { Nothing, DateSold, InService };

struct StatusText {
    std::int16_t Number;
    std::string_view Before;
    Shown Date = Shown::Nothing;
    std::string_view After{};
};

constexpr auto kStatusTexts = std::to_array<StatusText>({
    {1, "< ERROR - Invalid Date Format"},
    {2, "< ERROR - NOT Fiscal End-of-Year"},
    {3, "< ERROR - NOT Previous year"},
    {4, "< ERROR - Invalid SOLD Date"},
    {5, "< SOLD ", Shown::DateSold, " - NO Depr. this Year"},
    {6, "< CURRENT - In Service ", Shown::InService},
    {7, "< WARNING - NOT Current Month/Year"},
    {8, "< ERROR - NOT ACRS & AC, SL, LH or UT"},
    {9, "< ERROR - PERIOD is Zero"},
    {10, "< ASSET is Fully Depreciated"},
    {11, "< ERROR - SWITCHOVER with NO Basis"},
    {12, "< ERROR - SWITCHOVER Year Error"},
    {13, "< ERROR - Deprec. Table NOT Found"},
    {14, "< ERROR - Incorrect Deprec. Type"},
    {15, "< ERROR - Incorrect Deprec. Method"},
    {16, "< ERROR - Invalid Placed-In-Service"},
    {17, "< ASSET is NON-Depreciable"},
    {18, "< ASSET was 100% Expensed"},
    {19, "< ASSET Depreciation Period Completed"},
    {20, "< ERROR - Invalid Sold Date"},
});
constexpr StatusText kUnknownStatus = {0, "< ERROR   - "};

// The statuses of a disposal within the year, which tell an abandonment from a sale.
constexpr auto kAbandonedTexts = std::to_array<StatusText>({
    {51, "< ABANDONED - Depreciated to ", Shown::DateSold},
    {52, "< ABANDONED - NO Depr. this Month/Year"},
});
constexpr auto kSoldTexts = std::to_array<StatusText>({
    {51, "< SOLD - Depreciated to ", Shown::DateSold},
    {52, "< SOLD - NO Depr. this Month/Year"},
});

template <std::size_t N>
const StatusText* Find(const std::array<StatusText, N>& texts, int status) {
    for (const StatusText& text : texts) {
        if (text.Number == status) return &text;
    }
    return nullptr;
}

const StatusText& TextOf(int status, bool abandoned) {
    const StatusText* found = Find(kStatusTexts, status);
    if (found == nullptr) found = abandoned ? Find(kAbandonedTexts, status) : Find(kSoldTexts, status);
    return found != nullptr ? *found : kUnknownStatus;
}

}  // namespace

std::string DeprStatusText(int status, bool abandoned, Date dateSold, Date inService) {
    const StatusText& found = TextOf(status, abandoned);
    std::string text(found.Before);
    if (found.Date != Shown::Nothing) text += FormatShortDate(found.Date == Shown::DateSold ? dateSold : inService);
    return text.append(found.After);
}

bool IsErrorStatus(int status) {
    return status != kStatusNone && TextOf(status, false).Before.starts_with("< ERROR");
}

std::string_view PlainStatusText(std::string_view statusText) {
    for (const std::string_view mark : {"< ERROR - ", "< "}) {
        if (statusText.starts_with(mark)) return statusText.substr(mark.size());
    }
    return statusText;
}

}  // namespace tallymar
