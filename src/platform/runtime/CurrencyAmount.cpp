#include "platform/runtime/CurrencyAmount.h"

#include <limits>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"

namespace tallymar {

namespace {

__extension__ using Wide = __int128;

constexpr Wide kMin = std::numeric_limits<std::int64_t>::min();
constexpr Wide kMax = std::numeric_limits<std::int64_t>::max();

std::int64_t Narrow(Wide value) {
    if (value < kMin || value > kMax) throw PlatformError(Failure::Overflow);
    return static_cast<std::int64_t>(value);
}

Wide FloorDivide(Wide value, Wide divisor) {
    Wide quotient = value / divisor;
    if (value % divisor < 0) --quotient;
    return quotient;
}

Wide DivideTiesToEven(Wide value, Wide divisor) {
    const Wide below = FloorDivide(value, divisor);
    const Wide twice = (value - below * divisor) * 2;
    if (twice < divisor) return below;
    if (twice > divisor) return below + 1;
    return below % 2 == 0 ? below : below + 1;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

CurrencyAmount CurrencyAmount::FromInteger(std::int64_t units) {
    return CurrencyAmount(Narrow(Wide(units) * kScale));
}

CurrencyAmount CurrencyAmount::FromDouble(double value) {
    const double count = RoundTiesToEven(value * 10000.0);
    // 2^63 itself is the first double that does not fit.
    if (!(count >= -0x1p63 && count < 0x1p63)) throw PlatformError(Failure::Overflow);
    return CurrencyAmount(static_cast<std::int64_t>(count));
}

std::optional<CurrencyAmount> CurrencyAmount::Parse(std::string_view text) {
    std::size_t i = 0;
    const bool negative = i < text.size() && text[i] == '-';
    if (negative || (i < text.size() && text[i] == '+')) ++i;
    Wide count = 0;
    int digits = 0;
    int decimals = 0;
    for (; i < text.size() && IsDigit(text[i]); ++i, ++digits) {
        count = count * 10 + (text[i] - '0');
        if (count > kMax) return std::nullopt;
    }
    Wide tail = 0;
    Wide tailScale = 1;
    if (i < text.size() && text[i] == '.') {
        for (++i; i < text.size() && IsDigit(text[i]); ++i, ++digits) {
            if (decimals < 4) {
                count = count * 10 + (text[i] - '0');
                ++decimals;
            } else if (tailScale < Wide(1'000'000'000'000'000'000)) {
                tail = tail * 10 + (text[i] - '0');
                tailScale *= 10;
            } else if (text[i] != '0' && tail % 10 == 0) {
                ++tail;  // what lies beyond the digits kept still breaks a tie
            }
        }
    }
    if (digits == 0 || i != text.size()) return std::nullopt;
    for (; decimals < 4; ++decimals) count *= 10;
    if (tail * 2 > tailScale || (tail * 2 == tailScale && count % 2 != 0)) ++count;
    if (negative) count = -count;
    if (count < kMin || count > kMax) return std::nullopt;
    return CurrencyAmount(static_cast<std::int64_t>(count));
}

std::string CurrencyAmount::ToText() const {
    const std::uint64_t magnitude = count_ < 0 ? 0 - static_cast<std::uint64_t>(count_) : static_cast<std::uint64_t>(count_);
    std::string text = count_ < 0 ? "-" : "";
    text += std::to_string(magnitude / kScale);
    if (const std::uint64_t part = magnitude % kScale; part != 0) {
        std::string decimals = std::to_string(kScale + part);
        decimals.front() = '.';
        while (decimals.back() == '0') decimals.pop_back();
        text += decimals;
    }
    return text;
}

std::int64_t CurrencyAmount::WholePart() const {
    return static_cast<std::int64_t>(FloorDivide(count_, kScale));
}

CurrencyAmount CurrencyAmount::operator-() const {
    return CurrencyAmount(Narrow(-Wide(count_)));
}

CurrencyAmount& CurrencyAmount::operator+=(CurrencyAmount other) {
    count_ = Narrow(Wide(count_) + other.count_);
    return *this;
}

CurrencyAmount& CurrencyAmount::operator-=(CurrencyAmount other) {
    count_ = Narrow(Wide(count_) - other.count_);
    return *this;
}

CurrencyAmount operator*(CurrencyAmount a, CurrencyAmount b) {
    return CurrencyAmount(Narrow(DivideTiesToEven(Wide(a.count_) * b.count_, CurrencyAmount::kScale)));
}

std::int64_t WholePartOfProduct(CurrencyAmount amount, CurrencyAmount factor) {
    constexpr Wide kSquare = Wide(CurrencyAmount::kScale) * CurrencyAmount::kScale;
    return Narrow(FloorDivide(Wide(amount.TenThousandths()) * factor.TenThousandths() + kSquare / 2, kSquare));
}

}  // namespace tallymar
