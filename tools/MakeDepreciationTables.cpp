// Turns data/tables/percentages.txt into the files that the depreciation engine reads, one a table.
// Usage: make_depreciation_tables SOURCE OUTPUT_FOLDER. Run by the build; a fault in the source ends it with file and line.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/CurrencyAmount.h"

namespace {

using tallymar::CurrencyAmount;
using tallymar::Units;

constexpr std::size_t kMonths = 12;
constexpr int kLastYear = 50;  // what the engine has room for
constexpr std::array<std::string_view, 4> kHeaderKeys = {"title", "source", "convention", "service"};

using YearRow = std::array<CurrencyAmount, kMonths>;

struct Block {
    std::vector<std::string> Names;
    std::map<std::string, std::string, std::less<>> Headers;
    std::map<int, YearRow> Years;
    std::string Rule;
    std::vector<int> Lives;
};

[[noreturn]] void Fail(const std::string& what) {
    throw std::runtime_error(what);
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

CurrencyAmount Percentage(const std::string& word) {
    const auto value = CurrencyAmount::Parse(word);
    if (!value || *value < CurrencyAmount() || *value > Units(100)) Fail("\"" + word + "\" is no percentage");
    return *value;
}

int WholeNumber(std::string_view word) {
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size()) Fail("\"" + std::string(word) + "\" is no whole number");
    return value;
}

YearRow SameForEveryMonth(CurrencyAmount value) {
    YearRow row;
    row.fill(value);
    return row;
}

void AddYear(Block& block, int year, const YearRow& row) {
    if (year < 1 || year > kLastYear) Fail("year " + std::to_string(year) + " is outside 1 to 50");
    if (!block.Years.emplace(year, row).second) Fail("year " + std::to_string(year) + " is told twice");
}

// "7", "2-9" or "10-26/2".
void AddRange(Block& block, const std::vector<std::string>& words) {
    std::string_view range = words.front();
    int step = 1;
    if (const auto slash = range.find('/'); slash != std::string_view::npos) {
        step = WholeNumber(range.substr(slash + 1));
        range = range.substr(0, slash);
    }
    const auto dash = range.find('-');
    const int first = WholeNumber(range.substr(0, dash));
    const int last = dash == std::string_view::npos ? first : WholeNumber(range.substr(dash + 1));
    if (step < 1 || last < first || (last - first) % step != 0) Fail("\"" + words.front() + "\" is no range of years");

    YearRow row{};
    if (words.size() == 2) {
        row = SameForEveryMonth(Percentage(words[1]));
    } else if (words.size() == 1 + kMonths) {
        std::transform(words.begin() + 1, words.end(), row.begin(), Percentage);
    } else {
        Fail("a year has one figure, or one for each of twelve months");
    }
    for (int year = first; year <= last; year += step) AddYear(block, year, row);
}

void TakeLine(Block& block, const std::string& line) {
    const std::vector<std::string> words = Words(line);
    const std::string& key = words.front();
    if (std::find(kHeaderKeys.begin(), kHeaderKeys.end(), key) != kHeaderKeys.end()) {
        const std::string text = line.size() > key.size() ? line.substr(key.size() + 1) : "";
        if (text.empty() || text.find('"') != std::string::npos) Fail("a header needs a text without quotes");
        if (!block.Headers.emplace(key, text).second) Fail(key + " is told twice");
    } else if (key == "years") {
        for (std::size_t year = 1; year < words.size(); ++year) {
            AddYear(block, static_cast<int>(year), SameForEveryMonth(Percentage(words[year])));
        }
    } else if (key == "rule") {
        block.Rule = line.substr(5);
    } else if (key == "lives") {
        std::transform(words.begin() + 1, words.end(), std::back_inserter(block.Lives), WholeNumber);
    } else {
        AddRange(block, words);
    }
}

// a x b / c rounded half up to a multiple of unit, all in ten-thousandths; exact.
std::int64_t RoundedRatio(std::int64_t a, std::int64_t b, std::int64_t c, std::int64_t unit) {
    return (2 * a * b + c * unit) / (2 * c * unit) * unit;
}

// A half-year table by rule, in hundredths or thousandths of a percent. declining: the declining balance percentage, 0 for none.
std::map<int, YearRow> ByRule(int life, int declining) {
    const std::int64_t unit = life < 20 ? 100 : 10;
    const std::int64_t whole = Units(100).TenThousandths();
    std::map<int, YearRow> years;
    std::int64_t left = whole;
    for (int year = 1; year <= life + 1; ++year) {
        std::int64_t figure = left;
        if (year == 1) {
            figure = RoundedRatio(whole, std::max(declining, 100), 200LL * life, unit);
        } else if (year <= life) {
            const std::int64_t straightLine =
                RoundedRatio(left, 2, 2LL * (life - year) + 3, unit);  // over life - year + 1.5 years
            figure = std::max(straightLine, RoundedRatio(left, declining, 100LL * life, unit));
        }
        left -= figure;
        years.emplace(year, SameForEveryMonth(CurrencyAmount::FromTenThousandths(figure)));
    }
    return years;
}

std::string TwoDigits(int number) {
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string WithLife(std::string text, const std::string& life) {
    if (const auto at = text.find("{}"); at != std::string::npos) text.replace(at, 2, life);
    return text;
}

class TableWriter {
 public:
    explicit TableWriter(std::filesystem::path folder) : folder_(std::move(folder)) {}

    void WriteBlock(const Block& block) {
        for (const std::string_view key : kHeaderKeys) {
            if (!block.Headers.contains(key)) Fail("the table has no " + std::string(key));
        }
        if (block.Rule.empty()) return WriteTable(block, block.Years, std::nullopt);
        if (block.Lives.empty() || !block.Years.empty()) Fail("a rule goes with lives and without figures");
        const std::vector<std::string> rule = Words(block.Rule);
        int declining = 0;
        if (rule.size() == 2 && rule[0] == "declining") {
            declining = WholeNumber(rule[1]);
        } else if (rule.size() != 1 || rule[0] != "straight-line") {
            Fail("\"" + block.Rule + "\" is no rule");
        }
        for (const int life : block.Lives) WriteTable(block, ByRule(life, declining), life);
    }

    // Tables of an earlier build that the source no longer tells.
    void RemoveOthers() const {
        const std::set<std::string> endings = {".DPP", ".DRL", ".DIN"};
        std::vector<std::filesystem::path> others;
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            const std::filesystem::path& path = entry.path();
            if (endings.contains(path.extension().string()) && !written_.contains(path.filename().string()))
                others.push_back(path);
        }
        for (const std::filesystem::path& path : others) std::filesystem::remove(path);
    }

    std::size_t Count() const { return written_.size(); }

 private:
    void WriteTable(const Block& block, const std::map<int, YearRow>& years, std::optional<int> life) {
        if (years.empty() || years.rbegin()->first != static_cast<int>(years.size())) Fail("the years have a gap");
        YearRow sums{};
        for (const auto& [year, row] : years) {
            for (std::size_t month = 0; month < kMonths; ++month) sums[month] += row[month];
        }
        for (std::size_t month = 0; month < kMonths; ++month) {
            if (sums[month] != Units(100)) Fail("month " + std::to_string(month + 1) + " comes to " + sums[month].ToText());
        }

        std::string contents = std::to_string(years.size() - 1);
        for (const std::string_view key : kHeaderKeys) {
            const std::string text = block.Headers.find(key)->second;
            contents += ",\"" + (life ? WithLife(text, std::to_string(*life)) : text) + "\"";
        }
        contents += "\r\n";
        for (std::size_t month = 0; month < kMonths; ++month) {
            for (const auto& [year, row] : years) {
                if (year > 1) contents += ',';
                contents += row[month].ToText();
            }
            contents += "\r\n";
        }
        for (const std::string& name : block.Names) Write(life ? WithLife(name, TwoDigits(*life)) : name, contents);
    }

    void Write(const std::string& name, const std::string& contents) {
        if (!written_.insert(name).second) Fail(name + " is told twice");
        std::ofstream file(folder_ / name, std::ios::binary);
        file << contents;
        file.close();
        if (!file) Fail("cannot write " + (folder_ / name).string());
    }

    std::filesystem::path folder_;
    std::set<std::string> written_;
};

void MakeTables(const std::filesystem::path& sourcePath, const std::filesystem::path& folder) {
    std::ifstream source(sourcePath);
    if (!source) Fail("cannot read " + sourcePath.string());
    std::filesystem::create_directories(folder);
    TableWriter writer(folder);
    std::optional<Block> block;
    std::string line;
    int lineNumber = 0;
    try {
        while (std::getline(source, line)) {
            ++lineNumber;
            const std::vector<std::string> words = Words(line);
            if (words.empty() || line.front() == '#') continue;
            if (words.front() == "table") {
                if (block) writer.WriteBlock(*block);
                block.emplace();
                block->Names.assign(words.begin() + 1, words.end());
                if (block->Names.empty()) Fail("a table needs a file name");
            } else if (block) {
                TakeLine(*block, line);
            } else {
                Fail("the first block has no \"table\" line");
            }
        }
        if (block) writer.WriteBlock(*block);
    } catch (const std::exception& fault) {
        Fail(sourcePath.string() + ": block that ends at or before line " + std::to_string(lineNumber) + ": " + fault.what());
    }
    if (writer.Count() == 0) Fail(sourcePath.string() + " holds no table");
    writer.RemoveOthers();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_depreciation_tables SOURCE OUTPUT_FOLDER\n";
        return EXIT_FAILURE;
    }
    try {
        MakeTables(argv[1], argv[2]);
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
