#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/controls/CSForm.h"
#include "platform/prompts/Prompts.h"

class QLabel;
class QLayout;
class QProgressBar;

namespace tallymar {

class CSCmdBtn;

// The frame of the windows that run a command over many assets: at the foot a progress bar, shown while it runs, what came of
// it, the status line, the button that runs the command, and the one that closes the window.
//
// Such a command moves the company's one recordset, so the asset form must not be on the screen meanwhile: the main window shows
// these windows by its ShowBatch, which takes it away and brings it back.
class frmBatchForm : public CSForm {
    Q_OBJECT

 public:
    // Asked before every run, which does not begin when the answer is false.
    std::function<bool()> MakeRoom;

 protected:
    frmBatchForm(const char* name, const QString& title, QWidget* parent);

    // What the foot is made of, to be put below the fields. cmdRun runs `command`; room is kept for so many lines of its result.
    QLayout* MakeFoot(CSCmdBtn* cmdRun, std::function<void(Prompts&)> command, const QString& closeCaption = tr("Cancel"),
                      int resultLines = 1);
    // What a run has to say, a line each. It stays until the next run begins.
    void ShowResult(const std::vector<std::string>& sentences);
    // What would surprise at this field: shown on a line of its own, under the hint, while the field has the keyboard.
    static void SetNote(QWidget* field, const QString& note);
    void OnFieldFocus(QWidget* field) override;
    void showEvent(QShowEvent* event) override;
    // The closing button's caption once a command has run; empty leaves it as it is.
    void SetDoneCaption(const QString& caption) { doneCaption_ = caption; }

 private:
    void Run(const std::function<void(Prompts&)>& command);

    QProgressBar* progressBar_ = nullptr;
    QLabel* lblResult_ = nullptr;
    QLabel* lblNote_ = nullptr;
    CSCmdBtn* cmdCancel_ = nullptr;
    QString doneCaption_ = tr("Done");
};

}  // namespace tallymar
