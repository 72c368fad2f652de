#pragma once

#include "batch/frmBatchForm.h"
#include "store/CompanySession.h"

namespace tallymar {

class sitxEdit;

// "Change Department / Division / G/L Number": renames them across all assets.
class frmChangeDept : public frmBatchForm {
    Q_OBJECT

 public:
    explicit frmChangeDept(CompanySession& session, QWidget* parent = nullptr);

 private:
    struct Pair {
        sitxEdit* From;
        sitxEdit* To;
    };

    void Change(Prompts& prompts);

    CompanySession& session_;
    Pair division_{};
    Pair department_{};
    Pair accountNum_{};
    sitxEdit* sitxYear_ = nullptr;
};

}  // namespace tallymar
