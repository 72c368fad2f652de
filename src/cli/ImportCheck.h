#pragma once

#include "interchange/AssetImport.h"

namespace tallymar::cli {

// Prints what a check has found. Fails when the import would.
void EndCheck(const ImportCounts& counts);

}  // namespace tallymar::cli
