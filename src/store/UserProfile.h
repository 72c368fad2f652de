#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

namespace tallymar {

// The installation's settings: who the preparer is, where other data lies, the defaults of new assets and of the find grid. Kept
// as Assets1.dat: 100 quoted texts, one a line, whose positions are a file format.
class UserProfile {
 public:
    // What stands at each position that this program knows, counted from 1 as in the file.
    enum Position {
        kDataAsset = 1,
        kDataTaxPack = 2,
        kLastData = 3,  // full path of the last opened company
        kCompany = 20,
        kAddress = 21,
        kCity = 22,
        kStateCode = 23,
        kZipCode = 24,
        kTelephone = 25,
        kDateFind = 30,
        kGLFind = 31,
        kNewAsset = 32,
        kData1040 = 81,
        kData1120 = 82,
        kData1120S = 83,
        kData1065 = 84,
        kData1041 = 85,
        kNewUsed = 90,
        kDeprType = 91,
        kDeprMethod = 92
    };
    static constexpr int kPositions = 100;

    // Reads and decodes Assets1.dat. A missing, unreadable or short file leaves the rest empty, and the defaults apply.
    void Load(const std::filesystem::path& file);
    // Writes all 100 positions, position 3 taking LastDataPath. False when the file could not be written: it is then as it was.
    bool Save(const std::filesystem::path& file);

    // Failure::SubscriptOutOfRange outside 1 to 100. A double quote cannot pass through the file and is dropped on Set.
    const std::string& At(int position) const;
    void Set(int position, std::string_view text);

    // The decoded settings. They can run ahead of the positions: the form changes them on each click and only its save writes
    // them.
    std::string DefaultNewUsed = "NEW";
    std::string DefaultDeprMethod = "DB";
    std::string DefaultDeprType = "MCRS";
    bool FindByDate = false;
    bool FindByGLNumber = false;
    bool NumericAssetNumbers = false;
    std::string LastDataPath;

    // The folder that a dialog offers: that of the last opened company; empty when there is none.
    std::filesystem::path LastFolder() const;

 private:
    void Decode();

    std::array<std::string, kPositions> values_;
};

}  // namespace tallymar
