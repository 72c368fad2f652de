#pragma once

#include "assets/AssetEditState.h"
#include "platform/controls/CSForm.h"
#include "platform/controls/QtPrompts.h"
#include "store/CompanySession.h"

namespace tallymar {

class sitxEdit;

// "Copy Current Asset": several copies of one asset under new numbers.
class frmCopyAsset : public CSForm {
    Q_OBJECT

 public:
    frmCopyAsset(CompanySession& company, const AssetEditState& state, Prompts* prompts = nullptr, QWidget* parent = nullptr);

 private:
    void StartCopy();

    CompanySession& company_;
    QtPrompts ownPrompts_;
    Prompts& prompts_;
    sitxEdit* sitxAssetNum_;
    sitxEdit* sitxNoCopies_;
    sitxEdit* sitxANumber_;
};

}  // namespace tallymar
