#pragma once

#include <memory>

#include "assets/AssetEditState.h"
#include "assets/FindAssets.h"
#include "platform/controls/CSForm.h"
#include "platform/controls/QtPrompts.h"

class QTimer;

namespace tallymar {

class FindGrid;
class FindModel;

// "Find Asset": all assets of the company in a grid, sorted by a click on a heading.
class frmFindAsset : public CSForm {
    Q_OBJECT

 public:
    frmFindAsset(CompanySession& company, AssetEditState& state, Prompts* prompts = nullptr, QWidget* parent = nullptr);
    ~frmFindAsset() override;

 signals:
    // The form has gone, and the company's recordset stands where the asset form is to load from.
    void EditWanted();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void Sort(int column);
    void FillSome();
    bool Select();
    void CmdSelect();
    void DoubleClick();
    void CmdClose();

    CompanySession& company_;
    AssetEditState& state_;
    QtPrompts ownPrompts_;
    Prompts& prompts_;
    FindAssets found_;
    FindModel* model_;
    FindGrid* grid_;
    QTimer* filling_;
};

}  // namespace tallymar
