#include "formoutput/frmPrintForm.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "formoutput/FormFiles.h"
#include "formoutput/FormPagesPdf.h"
#include "formoutput/PageEdits.h"
#include "formoutput/PrintPCL.h"
#include "formoutput/frmPrinterSetup.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/HintLine.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/ScreenText.h"
#include "platform/runtime/FileReplacement.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

frmPrintForm::frmPrintForm(const AppPath& paths, const QString& title, const QString& what, const QString& warning, bool hasPdf,
                           QWidget* parent)
    : CSForm("frmPrintForm", title, parent), paths_(paths), hasPdf_(hasPdf), prefersPdf_(!warning.isEmpty()) {
    auto* lblWhat = Named(new QLabel(what, this), "lblWhat");
    lblWhere_ = Named(new QLabel(this), "lblWhere");
    auto* lblWarning = Named(new HintLine(this), "lblWarning");
    lblWarning->Show(warning, HintLine::Mark::Warning);
    lblWarning->setVisible(!warning.isEmpty());
    lblWarning->setMinimumWidth(warning.isEmpty() ? 0 : lblWarning->fontMetrics().horizontalAdvance(warning) * 5 / 4);
    for (QLabel* label : {lblWhat, lblWhere_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setMinimumWidth(label->fontMetrics().averageCharWidth() * 70);
    }

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    const auto add = [&](const char* name, const QString& caption, const QString& hint, auto action) {
        auto* button = Named(new CSCmdBtn(caption, this), name);
        SetHint(button, hint);
        connect(button, &QPushButton::clicked, this, Guarded(action));
        buttons->addWidget(button);
        return button;
    };
    cmdPrint_ =
        add("cmdPrint", tr("&Print"), tr("Send it to the printer or file named above"), [this] { Choose(Choice::Print); });
    cmdPdf_ = add("cmdPdf", tr("Print as P&DF"), tr("Send the page to the printer as PDF, or save it as a PDF file"),
                  [this] { Choose(Choice::Pdf); });
    cmdPdf_->setVisible(hasPdf);
    add("cmdSetup", tr("Printer &Setup..."), tr("Select where form pages and soft fonts go"), [this] {
        frmPrinterSetup(paths_, this).ShowModal();
        Look();
        FocusBest();
    });
    SetCancelButton(add("cmdCancel", tr("Cancel"), tr("Print nothing"), [this] { Unload(); }));

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(10);
    all->addWidget(lblWhat);
    all->addWidget(lblWarning);
    all->addWidget(lblWhere_);
    all->addStretch(1);
    all->addLayout(buttons);
    all->addWidget(MakeHintLine());
    Look();
}

void frmPrintForm::Look() {
    QString where;
    bool isReady = true;
    try {
        target_ = LookAt(LoadPrinterSettings(paths_.Folder()).RawTo(), paths_, paths_.Folder());
        if (!hasPdf_) RequireTakesSoftFonts(target_);
        where = FailureToQString(target_.Says);
    } catch (const PlatformError& failure) {
        target_ = {};
        where = FailureToQString(failure.what());
        isReady = false;
    }
    lblWhere_->setText(tr("To: %1").arg(where));
    cmdPrint_->setEnabled(isReady);
}

void frmPrintForm::FocusBest() {
    (hasPdf_ && (prefersPdf_ || !cmdPrint_->isEnabled()) ? cmdPdf_ : cmdPrint_)->setFocus(Qt::TabFocusReason);
}

void frmPrintForm::showEvent(QShowEvent* event) {
    CSForm::showEvent(event);
    FocusBest();
}

void frmPrintForm::Choose(Choice choice) {
    choice_ = choice == Choice::Print && !target_.TakesPcl ? Choice::Pdf : choice;
    Unload();
}

namespace {

PrintOutcome Canceled(const PagePrint& print, Prompts& prompts, std::string problem) {
    const std::string said = "Printing of " + print.BlankName() + " was canceled";
    prompts.Message(said, print.Title(), MessageKind::Information);
    return {said, std::move(problem)};
}

// As a job of its own where a PDF can be printed; else, and without a printer, into a file that is asked for.
PrintOutcome PrintAsPdf(const AppPath& paths, const PagePrint& print, const PrintTarget& target, Prompts& prompts) {
    const PrintDestination& to = target.To;
    if (target.TakesPdf) {
        const class_Hourglass wait;
        SendAsPdf(to, paths, paths.Folder(), print);
        return {print.ValuesName + " was sent as PDF to " + to.Text(), {}};
    }
    const auto file = prompts.AskSaveFile({.Title = print.Title(),
                                           .Filters = {{"PDF files (*.pdf)", "*.pdf"}},
                                           .FilterIndex = 0,
                                           .InitialFolder = paths.Folder(),
                                           .FileName = print.Code + ".pdf",
                                           .DefaultExtension = "pdf",
                                           .AsksToOverwrite = true});
    if (!file) return Canceled(print, prompts, {});
    RequireNoFormFile(*file, paths, paths.Folder());
    const class_Hourglass wait;
    FileReplacement replacement(*file);
    replacement.Write(FormPagesPdf(paths, paths.Folder(), {print.ValuesName}));
    replacement.Commit();
    return {"Saved as " + file->string(), {}};
}

}  // namespace

PrintOutcome PrintWithDialog(const AppPath& paths, const FormPageInfo& page, bool isUnsaved, PrintBuffer& buffer,
                             Prompts& prompts, QWidget* over) {
    const PagePrint print = PreparePrint(paths, paths.Folder(), page);
    QString what = frmPrintForm::tr("%1: the page of the file %2").arg(ToQString(page.Title), ToQString(print.ValuesName));
    if (page.PageForEachAsset)
        what = frmPrintForm::tr("%1 prints its first file, %2").arg(ToQString(page.Title), ToQString(print.ValuesName));
    if (isUnsaved) what += frmPrintForm::tr("\n%1: the print does not have them").arg(ToQString(kUnsavedChanges));
    frmPrintForm dialog(paths, ToQString(print.Title()), what, FailureToQString(print.Warning()), true, over);
    dialog.ShowModal();
    if (dialog.Chosen() == frmPrintForm::Choice::Cancel) return Canceled(print, prompts, {});
    try {
        const PrintDestination& to = dialog.Target().To;
        if (dialog.Chosen() == frmPrintForm::Choice::Pdf) return PrintAsPdf(paths, print, dialog.Target(), prompts);
        std::optional<class_Hourglass> wait;
        if (print.Warning().empty()) wait.emplace();  // else there is a message on the way
        Spooler spooler(to);
        if (std::string problem = PrintPage(spooler, print, buffer, prompts); !problem.empty()) return {{}, problem};
        spooler.Close();
        return {print.ValuesName + " was sent to " + to.Text(), {}};
    } catch (const PlatformError& failure) {
        return Canceled(print, prompts, failure.what());
    }
}

PrintOutcome DownloadSoftFontsWithDialog(const AppPath& paths, Prompts& prompts, QWidget* over) {
    const QString title = frmPrintForm::tr("Download Soft Fonts");
    frmPrintForm dialog(paths, title,
                        frmPrintForm::tr("Eight soft fonts for the forms, which stay in the printer until it is switched off"),
                        {}, false, over);
    dialog.ShowModal();
    const auto canceled = [&](std::string problem) -> PrintOutcome {
        prompts.Message(kSoftFontsCanceled, ToWindows1252(title), MessageKind::Information);
        return {std::string(kSoftFontsCanceled), std::move(problem)};
    };
    if (dialog.Chosen() == frmPrintForm::Choice::Cancel) return canceled({});
    PrintOutcome outcome;
    try {
        const class_Hourglass wait;
        Spooler spooler(dialog.Target().To);
        outcome = {std::string(kSoftFontsDone), DownloadSoftFonts(spooler, paths)};
        spooler.Close();
    } catch (const PlatformError& failure) {
        return canceled(failure.what());
    }
    prompts.Message(kSoftFontsDone, ToWindows1252(title), MessageKind::Information);
    return outcome;
}

}  // namespace tallymar
