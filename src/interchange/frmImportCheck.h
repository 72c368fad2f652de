#pragma once

#include <filesystem>

#include "interchange/AssetImport.h"
#include "platform/controls/CSForm.h"

namespace tallymar {

// What an import would do to a file, record by record, before anything of it is written.
class frmImportCheck : public CSForm {
    Q_OBJECT

 public:
    frmImportCheck(const ImportCounts& counts, const std::filesystem::path& file, QWidget* parent);

    // The file is to be imported as it is.
    bool WantsImport() const { return wantsImport_; }

 private:
    bool wantsImport_ = false;
};

}  // namespace tallymar
