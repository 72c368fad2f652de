#pragma once

#include <memory>

#include "assets/AssetEditState.h"
#include "assets/FindAssets.h"
#include "platform/controls/CSForm.h"
#include "platform/controls/QtPrompts.h"

class QKeyEvent;
class QLabel;
class QLineEdit;
class QTimer;

namespace tallymar {

class FindGrid;
class FindModel;

// "Find Asset": all assets of the company in a grid, sorted by a click on a heading and narrowed by what is typed above it. From
// the search box the arrows go through the grid, Enter selects, and Escape first clears the box.
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
    void OnUnload() override;
    void Recall(const WindowMemory& memory) override;
    void Remember(WindowMemory& memory) const override;

 private:
    bool OnSearchKey(QKeyEvent& event);
    void Search(const QString& text);
    void Sort(int column);
    void FillSome();
    void ShowCurrent();
    void ShowCount();
    void ShowSortArrow();
    QString ColumnsKey() const;
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
    QLineEdit* txtSearch_;
    QLabel* lblCount_;
    FindGrid* grid_;
    QTimer* filling_;
    std::string current_;  // number of the asset to be chosen when its row has been read
};

}  // namespace tallymar
