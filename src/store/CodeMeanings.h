#pragma once

#include <array>
#include <string_view>

// What the codes of the vocabularies mean, in a few words, for the lists that they are chosen from. The codes themselves, their
// order and what is stored for them stand in Vocabularies.h.
namespace tallymar {

struct CodeMeaning {
    std::string_view Code;
    std::string_view Meaning;
};

inline constexpr std::array<CodeMeaning, 2> kNewUsedMeanings = {
    {{"New", "first used by this company"}, {"Used", "used by another before"}}};

inline constexpr std::array<CodeMeaning, 3> kAssetTypeMeanings = {
    {{"PP", "personal property"}, {"RL", "real property"}, {"IN", "third class, amortized"}}};

inline constexpr std::array<CodeMeaning, 11> kDeprTypeMeanings = {{{"MCRS", "MACRS by formula"},
                                                                   {"XXXX", "not depreciated"},
                                                                   {"AMRT", "amortization"},
                                                                   {"GENL", "general depreciation"},
                                                                   {"ADS", "Alternative Depreciation System"},
                                                                   {"ADR", "Asset Depreciation Range"},
                                                                   {"ACRS", "Accelerated Cost Recovery System"},
                                                                   {"ACAM", "ACRS percentage table"},
                                                                   {"MACS", "MACRS percentage table"},
                                                                   {"STCK", "stock"},
                                                                   {"COLL", "collectible"}}};

inline constexpr std::array<CodeMeaning, 8> kDeprMethodMeanings = {{{"DB", "declining balance"},
                                                                    {"SL", "straight line"},
                                                                    {"MI", "no computation"},
                                                                    {"AC", "ACRS percentages"},
                                                                    {"LH", "ACRS percentages"},
                                                                    {"UT", "ACRS percentages"},
                                                                    {"SY", "sum of the years' digits"},
                                                                    {"XX", "no computation"}}};

inline constexpr std::array<CodeMeaning, 5> kDecliningPercentMeanings = {{{"200", "double declining"},
                                                                          {"175", "175% declining"},
                                                                          {"150", "150% declining"},
                                                                          {"125", "125% declining"},
                                                                          {"", "no declining balance"}}};

inline constexpr std::array<CodeMeaning, 5> kConventionMeanings = {
    {{"Y", "half-year"}, {"Q", "mid-quarter"}, {"M", "mid-month"}, {"N", "none: whole months"}, {"X", "no depreciation"}}};

}  // namespace tallymar
