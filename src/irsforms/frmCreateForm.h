#pragma once

#include <functional>
#include <memory>

#include "irsforms/IrsForm.h"
#include "platform/controls/CSForm.h"

class QPlainTextEdit;
class QProgressBar;

namespace tallymar {

class CSCmdBtn;
class silgEdit;
class sitxEdit;

// The window that creates an IRS form: which book and which assets, the command, and below what the form leaves out. One class
// for all of them; what differs between them is told by the form's FormInfo.
class frmCreateForm : public CSForm {
    Q_OBJECT

 public:
    using Viewer = std::function<void(std::string_view pageCode)>;

    // form: "4562". Without a viewer the command that edits the pages is off.
    frmCreateForm(std::string_view form, CompanySession& session, Viewer viewer = {}, QWidget* parent = nullptr);

 private:
    void Create();
    void Tell(const FormResult& result);
    void Refuse(QWidget* field, const QString& reason);
    FormOptions OptionsOfControls() const;

    CompanySession& session_;
    std::unique_ptr<IrsForm> form_;  // what the runs of this window have gathered
    silgEdit* silgBook_ = nullptr;
    sitxEdit* sitxDivision_ = nullptr;
    sitxEdit* sitxDepartment_ = nullptr;
    sitxEdit* sitxType_ = nullptr;  // of the forms that ask for an entity type
    QPlainTextEdit* txtLeftOut_ = nullptr;
    QProgressBar* progressBar_ = nullptr;
    CSCmdBtn* cmdCreate_ = nullptr;
    CSCmdBtn* cmdCancel_ = nullptr;
};

}  // namespace tallymar
