#pragma once

#include <array>
#include <filesystem>

#include "loans/Loan.h"
#include "platform/controls/CSForm.h"

namespace tallymar {

class frmLoanPicture;
class sitxEdit;

// "Tallymar Loan Amortization": solves a loan for what is left blank, shows its course, prints its schedule, and keeps its terms
// in a file. It knows no company.
class frmLoans : public CSForm {
    Q_OBJECT

 public:
    // folder: what the file dialogs begin with.
    explicit frmLoans(std::filesystem::path folder, QWidget* parent = nullptr);

    // Shows the loan of a file; fails as OpenLoanFile does, and then shows what it showed.
    void OpenFile(const std::filesystem::path& file);

 private:
    QWidget* MakeBoxes();
    QWidget* MakeHelp();
    sitxEdit* MakeBox(LoanBox box);
    sitxEdit* Box(LoanBox box) const { return boxes_.at(static_cast<std::size_t>(box)); }

    void Edited(LoanBox box);
    void ShowLoan();
    void ShowPicture();
    void MarkComputed(const LoanBox* computed);
    void SayRefusal(const std::exception& failure);

    void Solve();
    void Print();
    void New();
    void Open();
    void Save();

    Loan loan_;
    std::filesystem::path folder_;
    std::filesystem::path file_;  // empty: untitled
    std::array<sitxEdit*, kLoanBoxCount> boxes_{};
    std::array<QLabel*, kLoanBoxCount> marks_{};
    frmLoanPicture* picture_ = nullptr;
    bool showing_ = false;  // the boxes follow the loan, not the user
};

}  // namespace tallymar
