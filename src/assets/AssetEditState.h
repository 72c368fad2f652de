#pragma once

#include <string>

#include "assets/KeptEntries.h"

namespace tallymar {

// What the asset form shares with the main window, the find form and the batch commands while the program runs.
struct AssetEditState {
    std::string CurrentAssetNum;     // the asset last loaded into the form; empty when its Close command closed it
    bool NewAssetPending = false;    // a new row has been added and not been saved from the form yet
    bool EditFormClosed = true;      // no asset form is on screen
    std::string CopySourceAssetNum;  // handed to the copy form
    KeptEntries Kept;                // what the form can bring back; longer than one form stands
};

}  // namespace tallymar
