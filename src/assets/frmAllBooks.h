#pragma once

#include "assets/AssetFieldValues.h"
#include "platform/controls/CSForm.h"

class QTableWidget;

namespace tallymar {

// "All Books": the four books of the asset form's asset side by side, to be read. What differs from the Federal book is in bold.
class frmAllBooks : public CSForm {
    Q_OBJECT

 public:
    explicit frmAllBooks(QWidget* parent = nullptr);

    void ShowAsset(const AssetFieldValues& values);

 protected:
    void Recall(const WindowMemory& memory) override;
    void Remember(WindowMemory& memory) const override;

 private:
    QLabel* lblAsset_;
    QTableWidget* grid_;
};

}  // namespace tallymar
