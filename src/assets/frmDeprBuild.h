#pragma once

#include "assets/DeprBuild.h"
#include "platform/controls/CSForm.h"

class QTableView;

namespace tallymar {

// "Build Depreciation Detail": the years of a build, to be saved into the asset or not.
class frmDeprBuild : public CSForm {
    Q_OBJECT

 public:
    frmDeprBuild(const DeprBuildGrid& grid, const std::string& assetNum, QWidget* parent = nullptr);

    bool BuildCancelled() const { return cancelled_; }

 protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void Finish(bool cancelled);
    void CopySelection();
    void Print();

    const DeprBuildGrid& grid_;
    QTableView* MSFlexGrid1_;
    bool cancelled_ = true;
};

}  // namespace tallymar
