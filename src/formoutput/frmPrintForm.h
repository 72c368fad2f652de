#pragma once

#include <optional>
#include <string>

#include "formoutput/FormPages.h"
#include "formoutput/PrintBuffer.h"
#include "formoutput/PrinterSettings.h"
#include "platform/controls/CSForm.h"
#include "platform/prompts/Prompts.h"
#include "store/AppPath.h"

namespace tallymar {

class CSCmdBtn;

// The question before raw bytes go out: what is printed and where to, with the way to Printer Setup.
class frmPrintForm : public CSForm {
    Q_OBJECT

 public:
    enum class Choice { Cancel, Print, Pdf };
    // Why the page should not go raw (it is too long): one line, empty when nothing speaks against it. hasPdf: the print can be a
    // PDF too; soft fonts cannot.
    frmPrintForm(const AppPath& paths, const QString& title, const QString& what, const QString& warning, bool hasPdf,
                 QWidget* parent);

    Choice Chosen() const { return choice_; }
    // Where to; set when something has been chosen.
    const PrintTarget& Target() const { return target_; }

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    void Look();
    void Choose(Choice choice);
    void FocusBest();

    AppPath paths_;
    bool hasPdf_;
    bool prefersPdf_;
    Choice choice_ = Choice::Cancel;
    PrintTarget target_;
    QLabel* lblWhere_ = nullptr;
    CSCmdBtn* cmdPrint_ = nullptr;
    CSCmdBtn* cmdPdf_ = nullptr;
};

// What a print came to, for the window's status line.
struct PrintOutcome {
    std::string Said;
    std::string Problem;  // what went wrong, in one line; empty when nothing did
};

// cmdPrint of the viewer: asks, and prints the page of the file on the disk. isUnsaved: the page on the screen has changes that
// the file has not.
PrintOutcome PrintWithDialog(const AppPath& paths, const FormPageInfo& page, bool isUnsaved, PrintBuffer& buffer,
                             Prompts& prompts, QWidget* over);
// mnuSoftFonts: asks, and downloads the eight fonts.
PrintOutcome DownloadSoftFontsWithDialog(const AppPath& paths, Prompts& prompts, QWidget* over);

}  // namespace tallymar
