#include "irsforms/FormatPicture.h"

#include <algorithm>
#include <cstdint>

namespace tallymar {

namespace {

constexpr int kAmountDecimals = 4;

bool IsDigitPlace(char c) {
    return c == '#' || c == '0';
}

enum class Ties { ToEven, AwayFromZero };

// An amount as the digits that a mask takes.
struct Digits {
    bool Negative = false;  // after rounding: what rounds to nothing has no sign
    std::string Whole;      // "0" for nothing at all, empty for a fraction below one
    std::string Decimals;
};

Digits Rounded(CurrencyAmount amount, int decimals, Ties ties) {
    const std::int64_t count = amount.TenThousandths();
    std::uint64_t size = count < 0 ? 0 - static_cast<std::uint64_t>(count) : static_cast<std::uint64_t>(count);
    std::uint64_t unit = 1;
    for (int i = std::min(decimals, kAmountDecimals); i < kAmountDecimals; ++i) unit *= 10;
    const std::uint64_t rest = size % unit;
    size /= unit;
    if (rest * 2 > unit || (rest * 2 == unit && (ties == Ties::AwayFromZero || size % 2 == 1))) ++size;

    Digits digits{.Negative = count < 0 && size != 0, .Whole = std::to_string(size), .Decimals = {}};
    const std::size_t kept = static_cast<std::size_t>(std::min(decimals, kAmountDecimals));
    if (kept > 0) {
        if (digits.Whole.size() < kept) digits.Whole.insert(0, kept - digits.Whole.size(), '0');
        digits.Decimals = digits.Whole.substr(digits.Whole.size() - kept);
        digits.Whole.resize(digits.Whole.size() - kept);
        digits.Decimals.append(static_cast<std::size_t>(decimals) - kept, '0');
        if (size == 0) digits.Whole = "0";
    }
    return digits;
}

// Fills a copy of the mask from the right; Place counts from 1, and none are left below that.
class Filler {
 public:
    Filler(std::string_view mask, std::size_t place) : mask_(mask), result_(mask), place_(static_cast<int>(place)) {}

    void LayWhole(std::string_view digits) {
        for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
            while (place_ > 0 && !IsDigitPlace(At(place_))) --place_;
            if (place_ > 0) {
                Set(place_, *digit);
            } else {
                Set(1, '%');
            }
            --place_;
        }
    }
    void LaySign() {
        if (place_ > 0) Set(place_--, '-');
    }
    // The zero before the point of an amount below one.
    void LayZero() {
        if (place_ > 0 && At(place_) == '#') Set(place_, '0');
        --place_;
    }
    void BlankTheRest() {
        while (place_ > 0 && (At(place_) == '#' || At(place_) == ',')) Set(place_--, ' ');
    }
    void Set(int place, char c) { result_.at(static_cast<std::size_t>(place - 1)) = c; }

    int Place() const { return place_; }
    std::string Result() { return std::move(result_); }

 private:
    char At(int place) const { return mask_[static_cast<std::size_t>(place - 1)]; }

    std::string_view mask_;
    std::string result_;
    int place_;
};

}  // namespace

std::string FormatPicture(CurrencyAmount amount, std::string_view mask) {
    if (mask.empty()) return "*ERROR*";
    const std::size_t point = mask.find('.');
    std::size_t decimals = 0;
    if (point != std::string_view::npos) {
        while (point + decimals + 1 < mask.size() && IsDigitPlace(mask[point + decimals + 1])) ++decimals;
    }
    // A whole-dollar column must show 1,234.50 as the 1,235 that its total is reckoned from.
    const bool endsInPoint = point != std::string_view::npos && decimals == 0;
    const Digits digits = Rounded(amount, static_cast<int>(decimals), endsInPoint ? Ties::AwayFromZero : Ties::ToEven);

    const std::size_t lastPlace = point != std::string_view::npos ? point : mask.find_last_of("#0") + 1;
    Filler filler(mask, lastPlace);
    for (std::size_t i = 0; i < decimals; ++i) filler.Set(static_cast<int>(point + i) + 2, digits.Decimals[i]);
    filler.LayWhole(digits.Whole);
    if (digits.Negative) filler.LaySign();
    const bool nothingLaid = point != std::string_view::npos && filler.Place() == static_cast<int>(point);
    if (nothingLaid) filler.LayZero();
    filler.BlankTheRest();
    return filler.Result();
}

}  // namespace tallymar
