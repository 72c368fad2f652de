// One asset a file below regressions/: its entries, and after each "compute" what must come out. A file is named for the rule or
// the mistake that it holds fast.
//
//     # why it is here
//     DeprType ACRS                        an entry: a column's name and its value
//
//     SwitchBasis 5147.07
//     compute 1995-12-31                   up to the next blank line follow the figures
//     CurrDepr 857.84
//     Status 0
//
// "compute DATE mid-quarter" and "compute DATE month 6" do what they say; "years DATE" computes as many years from DATE on as
// CurrDepr has figures, each amount moving on into PrevDepr. What a computation has changed stays so for the next one.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <sstream>

#include "Assets.h"
#include "platform/runtime/DateText.h"

namespace tallymar {
namespace {

using test::Money;

const std::filesystem::path kFolder = std::filesystem::path(TALLYMAR_SOURCE_DIR) / "tests/engine/regressions";

Date DateOf(const std::string& text) {
    int year = 0, month = 0, day = 0;
    return std::sscanf(text.c_str(), "%d-%d-%d", &year, &month, &day) == 3 ? Date::FromYmd(year, month, day) : Date();
}

template <typename Codes>
std::int16_t PlaceOf(const Codes& codes, const std::string& code) {
    const auto found = std::find(codes.begin(), codes.end(), code);
    if (found == codes.end()) throw std::invalid_argument(code);
    return static_cast<std::int16_t>(found - codes.begin());
}

class Regression {
 public:
    void Run(const std::filesystem::path& path) {
        std::ifstream in(path);
        for (std::string line; std::getline(in, line);) {
            ++lineNumber_;
            SCOPED_TRACE(path.filename().string() + ":" + std::to_string(lineNumber_));
            if (line.empty()) Check();
            if (line.empty() || line.front() == '#') continue;
            const std::size_t blank = line.find(' ');
            const std::string name = line.substr(0, blank);
            const std::string value = line.substr(blank + 1);
            if (name == "compute" || name == "years") {
                command_ = line;
            } else if (!command_.empty()) {
                expected_[name] = value;
            } else {
                Enter(name, value);
            }
        }
        Check();
        EXPECT_GT(checked_, 0);
    }

 private:
    using Amounts = std::map<std::string, CurrencyAmount*>;

    Amounts AmountsOfBook() {
        AssetRecord& r = record_;
        return {{"Period", &r.Period[book_]},         {"Basis", &r.Basis[book_]},
                {"Salvage", &r.Salvage[book_]},       {"PrevDepr", &r.PrevDepr[book_]},
                {"CurrDepr", &r.CurrDepr[book_]},     {"AddlDepr", &r.AddlDepr[book_]},
                {"ADPct", &r.ADPct[book_]},           {"TaxCredit", &r.TaxCredit[book_]},
                {"Section179", &r.Section179[book_]}, {"SwitchBasis", &r.SwitchBasis[book_]},
                {"DeprLimit", &r.DeprLimit[book_]},   {"BusinessUse", &r.BusinessUse},
                {"ClassLife", &r.ClassLife},          {"SoldAmount", &r.SoldAmount}};
    }

    void Enter(const std::string& name, const std::string& value) {
        AssetRecord& r = record_;
        const std::map<std::string, std::int16_t*> numbers = {
            {"DBPercent", &r.DBPercent[book_]}, {"SwitchYear", &r.SwitchYear[book_]}, {"SwitchPeriod", &r.SwitchPeriod[book_]}};
        const std::map<std::string, bool*> marks = {
            {"Auto", &r.Auto[book_]}, {"Sold", &r.Sold}, {"Abandoned", &r.Abandoned}, {"Notice4", &r.Notice4}};
        if (const Amounts amounts = AmountsOfBook(); amounts.contains(name)) {
            *amounts.at(name) = Money(value);
        } else if (numbers.contains(name)) {
            *numbers.at(name) = static_cast<std::int16_t>(std::stoi(value));
        } else if (marks.contains(name)) {
            *marks.at(name) = value == "yes";
        } else if (name == "Book") {
            book_ = std::stoi(value);
        } else if (name == "AssetType") {
            r.AssetType = value;
        } else if (name == "NewUsed") {
            r.NewUsed = value;
        } else if (name == "IRSConvUsed") {
            r.IRSConvUsed[book_] = value;
        } else if (name == "InService") {
            r.InService = DateOf(value);
        } else if (name == "DateSold") {
            r.DateSold = DateOf(value);
        } else if (name == "DeprType") {
            r.DeprType[book_] = PlaceOf(kDeprTypes, value);
        } else if (name == "DeprMethod") {
            r.DeprMethod[book_] = PlaceOf(kDeprMethods, value);
        } else {
            ADD_FAILURE() << "no such entry: " << name;
        }
    }

    void Check() {
        if (command_.empty()) return;
        std::istringstream words(command_);
        std::string verb, date, option;
        int month = 0;
        words >> verb >> date >> option >> month;
        engine_.ComputeMonth = static_cast<std::int16_t>(month);

        std::istringstream figures(verb == "years" ? expected_.extract("CurrDepr").mapped() : "");
        int year = 0;
        for (std::string figure; figures >> figure; ++year) {
            engine_.ComputeDepreciation(record_, DateOf(date).AddYears(year), false, book_);
            EXPECT_EQ(record_.CurrDepr[book_], Money(figure)) << "year " << year + 1;
            record_.PrevDepr[book_] += record_.CurrDepr[book_];
        }
        if (verb == "compute") engine_.ComputeDepreciation(record_, DateOf(date), option == "mid-quarter", book_);

        const Amounts amounts = AmountsOfBook();
        for (const auto& [name, value] : expected_) {
            if (name == "Status") {
                const std::string status = std::to_string(engine_.DeprStatusCode()) + " " + engine_.DeprStatusText();
                EXPECT_EQ(status, value == "0" ? "0 " : value);
            } else if (name == "IRSConvUsed") {
                EXPECT_EQ(record_.IRSConvUsed[book_].View(), value);
            } else {
                EXPECT_EQ(*amounts.at(name), Money(value)) << name;
            }
        }
        checked_ += static_cast<int>(expected_.size()) + year;
        expected_.clear();
        command_.clear();
    }

    ADepre engine_{test::kDeliveredTables};
    AssetRecord record_ = [] {
        AssetRecord record;
        record.NewUsed = "N";
        record.BusinessUse = Units(100);
        return record;
    }();
    int book_ = 1;
    int lineNumber_ = 0;
    std::string command_;
    std::map<std::string, std::string> expected_;
    int checked_ = 0;
};

class Regressions : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(Regressions, ComesOutAsWritten) {
    Regression().Run(GetParam());
}

std::vector<std::filesystem::path> Files() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(kFolder)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

INSTANTIATE_TEST_SUITE_P(Engine, Regressions, testing::ValuesIn(Files()), [](const auto& file) {
    std::string name = file.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

}  // namespace
}  // namespace tallymar
