#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "interchange/AssetLoad.h"
#include "interchange/Headings.h"

namespace tallymar {

// What the headings of a user's tables stand for: guessed for those that are new, and remembered from one table to the next with
// the very same headings, in a file of the installation's folder.
class HeadingPairs {
 public:
    explicit HeadingPairs(const std::filesystem::path& folder);

    // A pair for each heading, in their order. No column is taken twice.
    static std::vector<HeadingPair> Guess(const std::vector<std::string>& headings, const Headings& known);
    // As they were last remembered, else guessed. A column that is not there any more is none.
    std::vector<HeadingPair> For(const std::vector<std::string>& headings, const Headings& known) const;
    // The sets that have been used longest ago are forgotten. Failures of FileReplacement.
    void Remember(const std::vector<HeadingPair>& pairs);

 private:
    using Set = std::vector<HeadingPair>;

    std::filesystem::path file_;
    std::vector<Set> sets_;  // the latest first
};

}  // namespace tallymar
