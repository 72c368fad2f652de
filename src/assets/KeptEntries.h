#pragma once

#include <optional>
#include <string>
#include <vector>

#include "assets/AssetFieldValues.h"
#include "store/AssetRecord.h"

namespace tallymar {

// An asset as a command took it off the screen: with entries that it did not save, or deleted.
struct KeptAsset {
    enum class Kind { Entries, Deleted };

    Kind What = Kind::Entries;
    std::string AssetNum = {};      // as stored
    std::string Bookmark = {};      // of its row
    AssetRecord Record = {};        // of a deleted asset: its row
    AssetFieldValues Stored = {};   // what the fields showed of the row
    AssetFieldValues Entered = {};  // what stood in them
    bool NewAssetPending = false;   // it had not been saved since it was added
    bool Told = true;               // its user has been shown how to get it back
};

// What of the asset form can still be brought back: the last asset whose entries were dropped and the last one deleted. The one
// that was kept last comes back first.
class KeptEntries {
 public:
    // In the place of an earlier one of the same kind.
    void Keep(KeptAsset asset);
    bool IsEmpty() const { return kept_.empty(); }
    KeptAsset& Last() { return kept_.back(); }
    KeptAsset TakeLast();

 private:
    std::vector<KeptAsset> kept_;
};

// Puts what was entered into the fields again, and nothing else: what has been stored since stays.
void EnterAgain(const KeptAsset& kept, AssetFieldValues& values);

}  // namespace tallymar
