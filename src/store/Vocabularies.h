#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// The code tables that company files hold by index or letter. Their order is a file format.
namespace tallymar {

enum DeprTypeIndex : std::int16_t {
    kMcrs = 0,  // modified ACRS by formula
    kXxxx = 1,  // not depreciated
    kAmrt = 2,  // amortisation
    kGenl = 3,  // general depreciation
    kAds = 4,   // Alternative Depreciation System
    kAdr = 5,   // Asset Depreciation Range
    kAcrs = 6,  // Accelerated Cost Recovery System
    kAcam = 7,  // ACRS by table files
    kMacs = 8,  // MACRS by table files
    kStck = 9,  // a stock
    kColl = 10  // a collectible
};

inline constexpr std::array<std::string_view, 11> kDeprTypes = {"MCRS", "XXXX", "AMRT", "GENL", "ADS", "ADR",
                                                                "ACRS", "ACAM", "MACS", "STCK", "COLL"};

enum DeprMethodIndex : std::int16_t {
    kDb = 0,  // declining balance at DBPercent
    kSl = 1,  // straight line
    kMi = 2,  // no computation
    kAc = 3,  // an ACRS percentage method, as are LH and UT
    kLh = 4,
    kUt = 5,
    kSy = 6,  // sum of the years' digits
    kXx = 7   // no computation
};

inline constexpr std::array<std::string_view, 8> kDeprMethods = {"DB", "SL", "MI", "AC", "LH", "UT", "SY", "XX"};

// "????" and "??" for an index outside the table.
constexpr std::string_view DeprTypeCode(int index) {
    return index >= 0 && index < static_cast<int>(kDeprTypes.size()) ? kDeprTypes[static_cast<std::size_t>(index)] : "????";
}
constexpr std::string_view DeprMethodCode(int index) {
    return index >= 0 && index < static_cast<int>(kDeprMethods.size()) ? kDeprMethods[static_cast<std::size_t>(index)] : "??";
}

// "Y" half-year, "Q" mid-quarter, "M" mid-month, "N" none (whole months count), "X" no depreciation; in the order of the edit
// list.
inline constexpr std::string_view kConventions = "YQMNX";

// "PP" personal property, "RL" real property, "IN" a third class.
inline constexpr std::array<std::string_view, 3> kAssetTypes = {"PP", "RL", "IN"};

// The declining balance percentages of the edit list; the blank after them stands for 0.
inline constexpr std::array<std::int16_t, 4> kDecliningPercents = {200, 175, 150, 125};

// State and territory codes, in the order in which they are looked for. There are sixty slots; the rest are empty.
inline constexpr std::array<std::string_view, 60> kStateCodes = {
    "AK", "AL", "AZ", "AR", "CA", "CO", "CT", "DC", "DE", "FL", "GA", "GU", "HI", "IA", "ID", "IL", "IN", "KS",
    "KY", "LA", "MA", "MD", "ME", "MI", "MN", "MO", "MS", "MT", "NC", "ND", "NE", "NH", "NJ", "NM", "NV", "NY",
    "OH", "OK", "OR", "PA", "PR", "RI", "SC", "SD", "TN", "TX", "UT", "VA", "VI", "VT", "WI", "WA", "WV", "WY"};

}  // namespace tallymar
