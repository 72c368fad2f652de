#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "engine/DepreciationTableFile.h"
#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// The path of the table file of that name; empty when there is none.
using TableFinder = std::function<std::filesystem::path(const std::string& name)>;

// The table files that a run has asked for: each is looked for and read once, at its first use. A lookup after that allocates
// nothing.
class DepreciationTables {
 public:
    explicit DepreciationTables(TableFinder find) : find_(std::move(find)) {}

    // The table of these codes; nullptr when there is no file of its name. Good until Forget. Fails as DepreciationTableFile
    // does.
    const DepreciationTableFile* Table(std::int16_t deprType, std::int16_t deprMethod, CurrencyAmount period,
                                       std::string_view assetType);

    // The name of the file with the table of these codes.
    static std::string NameOf(std::int16_t deprType, std::int16_t deprMethod, CurrencyAmount period, std::string_view assetType);

    // What has changed on the disk holds from the next lookup on.
    void Forget() { tables_.clear(); }

 private:
    struct Key {
        std::int16_t Type, Method;
        std::int64_t Period;  // as the file's name tells it: whole years
        std::string AssetType;
    };
    struct KeyView {
        std::int16_t Type, Method;
        std::int64_t Period;
        std::string_view AssetType;
    };
    struct Less {
        using is_transparent = void;
        template <typename A, typename B>
        bool operator()(const A& a, const B& b) const {
            if (a.Type != b.Type) return a.Type < b.Type;
            if (a.Method != b.Method) return a.Method < b.Method;
            if (a.Period != b.Period) return a.Period < b.Period;
            return std::string_view(a.AssetType) < std::string_view(b.AssetType);
        }
    };

    TableFinder find_;
    std::map<Key, std::unique_ptr<DepreciationTableFile>, Less> tables_;  // null: there is no such file
};

}  // namespace tallymar
