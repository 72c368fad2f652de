#include "platform/runtime/Format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "platform/runtime/Clock.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

// A number as the decimal digits it is exactly: 0.DDDD x 10^Point, without leading or trailing zeros; no digits is zero.
struct Decimal {
    std::array<char, 24> Digits;
    int Count = 0;
    int Point = 0;
    bool Negative = false;

    // The digit that counts 10^power.
    char At(int power) const {
        const int i = Point - 1 - power;
        return i >= 0 && i < Count ? Digits[static_cast<std::size_t>(i)] : '0';
    }

    void DropTrailingZeros() {
        while (Count > 0 && Digits[static_cast<std::size_t>(Count) - 1] == '0') --Count;
    }

    // Keeps so many decimals, halves away from zero.
    void Round(int decimals) {
        const int keep = Point + decimals;
        if (keep >= Count) return;
        const bool up = keep >= 0 && Digits[static_cast<std::size_t>(keep)] >= '5';
        Count = std::max(keep, 0);
        if (!up) {
            DropTrailingZeros();
            if (Count == 0) Point = 0;
            return;
        }
        while (Count > 0 && Digits[static_cast<std::size_t>(Count) - 1] == '9') --Count;
        if (Count > 0) {
            ++Digits[static_cast<std::size_t>(Count) - 1];
        } else {
            Digits[0] = '1';
            Count = 1;
            ++Point;
        }
    }
};

Decimal DecimalOf(std::uint64_t magnitude, int decimals, bool negative) {
    Decimal number;
    number.Negative = negative;
    if (magnitude == 0) return number;
    const auto result = std::to_chars(number.Digits.data(), number.Digits.data() + number.Digits.size(), magnitude);
    number.Count = static_cast<int>(result.ptr - number.Digits.data());
    number.Point = number.Count - decimals;
    number.DropTrailingZeros();
    return number;
}

std::uint64_t MagnitudeOf(std::int64_t value) {
    return value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
}

Decimal DecimalOf(double value) {
    if (!std::isfinite(value)) throw PlatformError(Failure::Overflow);
    Decimal number;
    number.Negative = value < 0;
    if (value == 0) return number;
    std::array<char, 32> text;
    const auto result = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value), std::chars_format::scientific);
    const char* const mark = std::find(text.data(), result.ptr, 'e');
    for (const char* c = text.data(); c != mark; ++c) {
        if (*c != '.') number.Digits[static_cast<std::size_t>(number.Count++)] = *c;
    }
    int exponent = 0;
    std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, result.ptr, exponent);
    number.Point = exponent + 1;
    number.DropTrailingZeros();
    return number;
}

// Plain digits where they are readable, else 1.5E+16. Fifteen digits: what a double holds beyond them is noise of its arithmetic
// (0.1 + 0.2 is "0.3").
std::string PlainText(Decimal number) {
    if (number.Count == 0) return "0";
    number.Round(15 - number.Point);
    std::string text = number.Negative ? "-" : "";
    const std::string_view digits(number.Digits.data(), static_cast<std::size_t>(number.Count));
    if (number.Point > 15 || number.Point < -4) {
        text += digits[0];
        if (digits.size() > 1) text.append(1, '.').append(digits.substr(1));
        const int exponent = number.Point - 1;
        text += exponent < 0 ? "E-" : "E+";
        if (std::abs(exponent) < 10) text += '0';
        return text += std::to_string(std::abs(exponent));
    }
    if (number.Point <= 0) text += '0';
    for (int power = number.Point - 1; power >= 0; --power) text += number.At(power);
    if (number.Count > number.Point) {
        text += '.';
        for (int power = -1; power >= number.Point - number.Count; --power) text += number.At(power);
    }
    return text;
}

// Calls at(c, literal) for each character of a section, quotes and backslashes resolved.
template <typename At>
void ForEachCharacter(std::string_view picture, const At& at) {
    bool quoted = false;
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const char c = picture[i];
        if (c == '"') {
            quoted = !quoted;
        } else if (!quoted && c == '\\') {
            if (++i < picture.size()) at(picture[i], true);
        } else {
            at(c, quoted);
        }
    }
}

// Up to four sections of a picture; the fourth, for missing values, is never printed.
struct Sections {
    std::array<std::string_view, 4> Items;
    std::size_t Count = 0;
};

Sections SplitSections(std::string_view picture) {
    Sections sections;
    bool quoted = false;
    std::size_t start = 0;
    const auto endSection = [&](std::size_t end) {
        if (sections.Count < sections.Items.size()) sections.Items[sections.Count++] = picture.substr(start, end - start);
        start = end + 1;
    };
    for (std::size_t i = 0; i < picture.size(); ++i) {
        if (picture[i] == '"') {
            quoted = !quoted;
        } else if (!quoted && picture[i] == '\\') {
            ++i;
        } else if (!quoted && picture[i] == ';') {
            endSection(i);
        }
    }
    endSection(picture.size());
    return sections;
}

bool IsPlace(char c) {
    return c == '0' || c == '#';
}

// What the places of a section ask for.
struct Places {
    int Whole = 0;       // places before the point
    int LeastWhole = 0;  // digits that are printed even when they are zeros
    int Decimals = 0;
    int LeastDecimals = 0;
    bool Thousands = false;
    int Scale = 0;  // powers of ten that "%" and trailing commas move the value by
};

Places PlacesOf(std::string_view section) {
    Places places;
    bool behindPoint = false;
    int pendingCommas = 0;
    const auto closeWhole = [&] {
        places.Scale -= 3 * pendingCommas;
        pendingCommas = 0;
    };
    ForEachCharacter(section, [&](char c, bool literal) {
        if (literal) return;
        if (c == '%') {
            places.Scale += 2;
        } else if (c == '.' && !behindPoint) {
            behindPoint = true;
            closeWhole();
        } else if (c == ',' && !behindPoint && places.Whole > 0) {
            ++pendingCommas;
        } else if (IsPlace(c) && behindPoint) {
            ++places.Decimals;
            if (c == '0') places.LeastDecimals = places.Decimals;
        } else if (IsPlace(c)) {
            if (pendingCommas > 0) places.Thousands = true;
            pendingCommas = 0;
            ++places.Whole;
            if (c == '0' || places.LeastWhole > 0) ++places.LeastWhole;
        }
    });
    closeWhole();
    return places;
}

class SectionWriter {
 public:
    SectionWriter(const Decimal& number, const Places& places, std::string& out)
        : number_(number), places_(places), out_(out), wholeLeft_(places.Whole) {
        wholeDigits_ = std::max(number.Count > 0 ? number.Point : 0, places.LeastWhole);
        decimals_ = std::max(number.Count - number.Point, places.LeastDecimals);
    }

    void Write(char c, bool literal) {
        if (literal) {
            out_ += c;
        } else if (c == '.' && !behindPoint_) {
            if (places_.Whole == 0) WriteWhole(0);
            behindPoint_ = true;
            out_ += c;
        } else if (c == ',' && !behindPoint_ && places_.Whole > 0 && wholeLeft_ < places_.Whole) {
            return;  // its meaning is in Places
        } else if (IsPlace(c) && behindPoint_) {
            if (++decimalsDone_ <= decimals_) out_ += number_.At(-decimalsDone_);
        } else if (IsPlace(c)) {
            --wholeLeft_;
            WriteWhole(wholeLeft_);
        } else {
            out_ += c;
        }
    }

 private:
    // The whole digits not yet written, down to that of 10^power.
    void WriteWhole(int power) {
        if (!started_) next_ = std::max(wholeDigits_ - 1, power);
        started_ = true;
        for (; next_ >= power; --next_) {
            if (next_ >= wholeDigits_) continue;
            out_ += number_.At(next_);
            if (places_.Thousands && next_ > 0 && next_ % 3 == 0) out_ += ',';
        }
    }

    const Decimal& number_;
    const Places& places_;
    std::string& out_;
    int wholeLeft_;
    int wholeDigits_;
    int decimals_;
    int decimalsDone_ = 0;
    int next_ = 0;
    bool started_ = false;
    bool behindPoint_ = false;
};

std::string FormatNumber(Decimal number, std::string_view picture) {
    const Sections sections = SplitSections(picture);
    const auto given = [&sections](std::size_t i) { return i < sections.Count && !sections.Items[i].empty(); };
    std::string_view section = sections.Items[0];
    bool sign = number.Negative;
    if (number.Negative && given(1)) {
        section = sections.Items[1];
        sign = false;
    } else if (number.Count == 0 && given(2)) {
        section = sections.Items[2];
    }

    const Places places = PlacesOf(section);
    if (number.Count > 0) number.Point += places.Scale;
    number.Round(places.Decimals);

    std::string out;
    out.reserve(section.size() + 24);
    if (sign) out += '-';
    SectionWriter writer(number, places, out);
    ForEachCharacter(section, [&writer](char c, bool literal) { writer.Write(c, literal); });
    return out;
}

// "@" asks for the text of whatever the value is.
bool AsksForText(std::string_view picture) {
    return picture.empty() || picture == "@";
}

constexpr std::array<std::string_view, 12> kMonthNames = {"January", "February", "March",     "April",   "May",      "June",
                                                          "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> kDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};

void AppendNumber(std::string& out, int value, int width) {
    std::array<char, 12> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    const auto length = result.ptr - digits.data();
    if (length < width) out.append(static_cast<std::size_t>(width - length), '0');
    out.append(digits.data(), result.ptr);
}

class DateWriter {
 public:
    DateWriter(const Clock& clock, std::string_view picture) : clock_(clock), picture_(picture) {
        for (std::size_t i = 0; i < picture.size(); ++i) {
            if (HalfMarkAt(i)) twelveHours_ = true;
        }
    }

    std::string Write() {
        for (std::size_t i = 0; i < picture_.size();) {
            if (picture_[i] == '"') {
                const std::size_t end = std::min(picture_.find('"', i + 1), picture_.size());
                out_.append(picture_.substr(i + 1, end - i - 1));
                i = end + 1;
            } else if (picture_[i] == '\\') {
                if (i + 1 < picture_.size()) out_ += picture_[i + 1];
                i += 2;
            } else if (HalfMarkAt(i)) {
                const bool lower = picture_[i] == 'a';
                out_ += clock_.Hour < 12 ? (lower ? "am" : "AM") : (lower ? "pm" : "PM");
                i += 5;
            } else {
                i += WriteRun(i);
            }
        }
        return out_;
    }

 private:
    // "AM/PM" starts here.
    bool HalfMarkAt(std::size_t i) const { return ToLower(picture_[i]) == 'a' && UCase(picture_.substr(i, 5)) == "AM/PM"; }

    // A run of one letter, or a single other character. Returns how much of the picture it took.
    std::size_t WriteRun(std::size_t i) {
        const char letter = ToLower(picture_[i]);
        std::size_t run = 1;
        while (i + run < picture_.size() && ToLower(picture_[i + run]) == letter) ++run;
        const auto take = [&run](std::size_t longest) { return static_cast<int>(run = std::min(run, longest)); };
        const bool minutes = letter == 'n' || (letter == 'm' && afterHour_);
        if (letter >= 'a' && letter <= 'z') afterHour_ = letter == 'h';

        if (minutes) {
            AppendNumber(out_, clock_.Minute, take(2));
        } else if (letter == 'm') {
            WriteNamed(take(4), clock_.Month, kMonthNames[static_cast<std::size_t>(clock_.Month) - 1]);
        } else if (letter == 'd') {
            const int width = take(4);
            WriteNamed(width, clock_.Day, kDayNames[static_cast<std::size_t>(clock_.Weekday) - 1]);
        } else if (letter == 'y') {
            const int width = take(4);
            if (width == 1) {
                AppendNumber(out_, clock_.DayOfYear, 1);
            } else if (width == 2) {
                AppendNumber(out_, clock_.Year % 100, 2);
            } else {
                AppendNumber(out_, clock_.Year, 4);
            }
        } else if (letter == 'h') {
            AppendNumber(out_, twelveHours_ ? (clock_.Hour + 11) % 12 + 1 : clock_.Hour, take(2));
        } else if (letter == 's') {
            AppendNumber(out_, clock_.Second, take(2));
        } else {
            out_.append(picture_.substr(i, run));
        }
        return run;
    }

    // Width 1 and 2 are the number, 3 the first letters of the name, 4 the name.
    void WriteNamed(int width, int number, std::string_view name) {
        if (width <= 2) {
            AppendNumber(out_, number, width);
        } else {
            out_.append(width == 3 ? name.substr(0, 3) : name);
        }
    }

    const Clock& clock_;
    std::string_view picture_;
    std::string out_;
    bool twelveHours_ = false;
    bool afterHour_ = false;
};

}  // namespace

std::string Format(CurrencyAmount value, std::string_view picture) {
    if (AsksForText(picture)) return value.ToText();
    const std::int64_t count = value.TenThousandths();
    return FormatNumber(DecimalOf(MagnitudeOf(count), 4, count < 0), picture);
}

std::string Format(long long value, std::string_view picture) {
    if (AsksForText(picture)) return std::to_string(value);
    return FormatNumber(DecimalOf(MagnitudeOf(value), 0, value < 0), picture);
}

std::string Format(double value, std::string_view picture) {
    const Decimal number = DecimalOf(value);
    return AsksForText(picture) ? PlainText(number) : FormatNumber(number, picture);
}

std::string Format(Date value, std::string_view picture) {
    if (AsksForText(picture)) return FormatShortDate(value);
    return DateWriter(ClockOf(value), picture).Write();
}

std::string Format(std::string_view value, std::string_view picture) {
    if (picture == ">") return UCase(value);
    if (picture == "<") return LCase(value);
    return std::string(value);
}

}  // namespace tallymar
