#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tallymar {

// At which position of a record each of forty asset fields stands, as a user has laid it down for a comma-delimited file: the
// texts of the definition window's boxes, kept in a small file of their own. Import and export have separate ones, nine each.
class FieldDefinition {
 public:
    static constexpr int kFields = 40;

    // The labels of the forty boxes, from 1.
    static std::string_view Label(int field);

    // "ImpDef1.Dat" and "ExpDef1.Dat" for number "1", as typed.
    static std::string ImportFileName(std::string_view number);
    static std::string ExportFileName(std::string_view number);
    // Where a definition of that name is kept: the folder's file of the name in any letter case, since files that came by way of
    // other systems change theirs, or the place of a new one.
    static std::filesystem::path FileIn(const std::filesystem::path& folder, const std::string& name);

    // A short file leaves the rest blank; lines after the 41st are passed over. Failures: those of reading a file.
    static FieldDefinition Load(const std::filesystem::path& file);
    // 41 lines: the count of fields, then the boxes 1 to 40. Whole or not at all; failures as FileReplacement tells.
    void Save(const std::filesystem::path& file) const;

    // How many items a record of the file has.
    std::string FieldCountText;
    int FieldCount() const;  // 0 when blank; fails with Overflow beyond 16 bits
    // The text of box `field`, 1 to 40; blank when the file does not have the field. SubscriptOutOfRange for another.
    const std::string& Box(int field) const;
    void SetBox(int field, std::string_view text);
    // The box as a whole number, 0 when blank.
    int Position(int field) const;
    bool Has(int field) const { return Position(field) >= 1; }

    // May the box hold that? Blank, or 0 to 40.
    static bool IsValidPosition(std::string_view text);
    // The highest position in the boxes: what FieldCount should be.
    int HighestPosition() const;
    // The positions below the highest that no box claims.
    std::vector<int> Unclaimed() const;

    bool operator==(const FieldDefinition&) const = default;

 private:
    std::array<std::string, kFields + 1> boxes_;  // slot 0 is unused
};

}  // namespace tallymar
