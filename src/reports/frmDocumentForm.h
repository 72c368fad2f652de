#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/controls/CSForm.h"
#include "platform/page/Delivery.h"
#include "platform/prompts/Prompts.h"

class QProgressBar;
class QVBoxLayout;

namespace tallymar {

class CSOptList;

// What the forms that print a document have in common: where it goes, the progress of the run, Ok and Cancel, and the delivery
// that ends the form.
class frmDocumentForm : public CSForm {
    Q_OBJECT

 protected:
    using CSForm::CSForm;

    // The choice "Output To".
    CSOptList* MakeOutput(const QString& hint);
    // The progress bar, the status line and the buttons, at the form's foot.
    void AddFoot(QVBoxLayout& all);
    virtual void Ok() = 0;

    // Hands the document to the chosen output and unloads the form, whatever becomes of it. done: what has been
    // done already and stands before a failure's text; a document that cannot be made again is then previewed when its output
    // fails or is given up.
    void DeliverAndUnload(const std::shared_ptr<const PrintedDocument>& document, const std::string& done = {});
    // The same for a document that is on the disk already.
    void PutInPlaceAndUnload(FileDelivery& file, const std::shared_ptr<const PrintedDocument>& document, const std::string& done);

    OutputTarget Target() const;

    CSOptList* optlOutput_ = nullptr;
    QProgressBar* progressBar_ = nullptr;

 private:
    void Deliver(const std::function<bool(Prompts&)>& output, const std::shared_ptr<const PrintedDocument>& document,
                 const std::string& done);
};

}  // namespace tallymar
