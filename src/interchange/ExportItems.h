#pragma once

#include <span>
#include <string>

#include "platform/recordset/Recordset.h"
#include "platform/runtime/PerBook.h"
#include "store/AssetRecord.h"

// The items of an asset's record in a comma-delimited file, and the text of each (Windows-1252).
namespace tallymar {

// Texts of the current row as they stand in it: an AssetRecord has some of them padded to their width, and an empty code section
// filled in.
class StoredTexts {
 public:
    explicit StoredTexts(recordset::Recordset& assets);

    std::string AssetNum() const { return Text(assetNum_); }
    std::string CodeSection() const { return Text(codeSection_); }
    std::string NewUsed() const { return Text(newUsed_); }
    std::string IRSConvUsed(int book) const { return Text(irsConvUsed_[book]); }

 private:
    std::string Text(int ordinal) const { return assets_.Get(ordinal).ToText(); }

    recordset::Recordset& assets_;
    int assetNum_;
    int codeSection_;
    int newUsed_;
    PerBook<int> irsConvUsed_;
};

// An asset on its way into a file, for one book.
struct ExportedAsset {
    const AssetRecord& Record;
    const StoredTexts& Stored;
    int Book;
};

struct ExportItem {
    using Text = std::string (*)(const ExportedAsset& asset);

    int Box;       // that places it in a layout of the user's own
    Text DosText;  // in the fixed layout of the DOS edition
    Text OwnText;  // in a layout of the user's own
};

// The forty, in the order of the DOS edition.
std::span<const ExportItem> ExportItems();

}  // namespace tallymar
