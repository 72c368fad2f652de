#include "interchange/HeadingPairs.h"

#include <algorithm>
#include <set>

#include "interchange/CsvReader.h"
#include "interchange/CsvText.h"
#include "platform/runtime/FileReplacement.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr const char* kFileName = "HeadingPairs.csv";
constexpr std::size_t kMostSets = 50;
constexpr std::size_t kMostPairs = kMostSets * CsvReader::kMostFields;

// A line is a set's number, a heading and its column.
enum Item : std::size_t { kSet, kHeading, kColumn, kItems };

bool AreOf(const std::vector<HeadingPair>& pairs, const std::vector<std::string>& headings) {
    return std::equal(pairs.begin(), pairs.end(), headings.begin(), headings.end(),
                      [](const HeadingPair& pair, const std::string& heading) { return pair.Heading == heading; });
}

}  // namespace

HeadingPairs::HeadingPairs(const std::filesystem::path& folder) : file_(folder / kFileName) {
    // Without the file, or with one that somebody has spoiled, the headings are guessed.
    try {
        CsvReader reader(file_);
        std::vector<TableField> row;
        std::string set;
        for (std::size_t pairs = 0; pairs < kMostPairs && reader.ReadRow(row); ++pairs) {
            if (row.size() != kItems) return;
            if (sets_.empty() || row[kSet].Text != set) sets_.emplace_back();
            set = row[kSet].Text;
            sets_.back().push_back({FromUtf8(row[kHeading].Text), FromUtf8(row[kColumn].Text)});
        }
    } catch (const PlatformError&) {
    }
}

std::vector<HeadingPair> HeadingPairs::Guess(const std::vector<std::string>& headings, const Headings& known) {
    std::vector<HeadingPair> pairs;
    std::set<std::string> taken;
    // What a heading says outright goes before what another may mean.
    for (const std::string& heading : headings) {
        const auto named = known.Named(heading);
        const bool isNamed = named.size() == 1 && taken.insert(named.front()).second;
        pairs.push_back({heading, isNamed ? named.front() : std::string()});
    }
    for (HeadingPair& pair : pairs) {
        if (!pair.Column.empty()) continue;
        std::string guess = known.Guess(pair.Heading);
        if (!guess.empty() && taken.insert(guess).second) pair.Column = std::move(guess);
    }
    return pairs;
}

std::vector<HeadingPair> HeadingPairs::For(const std::vector<std::string>& headings, const Headings& known) const {
    const auto set = std::find_if(sets_.begin(), sets_.end(), [&](const Set& each) { return AreOf(each, headings); });
    if (set == sets_.end()) return Guess(headings, known);
    Set pairs = *set;
    for (HeadingPair& pair : pairs) {
        if (std::find(known.Columns().begin(), known.Columns().end(), pair.Column) == known.Columns().end()) pair.Column.clear();
    }
    return pairs;
}

void HeadingPairs::Remember(const std::vector<HeadingPair>& pairs) {
    std::erase_if(sets_, [&](const Set& set) {
        return std::equal(set.begin(), set.end(), pairs.begin(), pairs.end(),
                          [](const HeadingPair& a, const HeadingPair& b) { return a.Heading == b.Heading; });
    });
    sets_.insert(sets_.begin(), pairs);
    if (sets_.size() > kMostSets) sets_.resize(kMostSets);
    FileReplacement file(file_);
    int number = 0;
    for (const Set& set : sets_) {
        ++number;
        for (const HeadingPair& pair : set) {
            std::string line = std::to_string(number) + ",";
            AppendCsvText(pair.Heading, line);
            line += ',';
            AppendCsvText(pair.Column, line);
            file.Write(line + "\r\n");
        }
    }
    file.Commit();
}

}  // namespace tallymar
