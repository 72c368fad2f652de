#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "interchange/FieldDefinition.h"
#include "interchange/frmExchangeForm.h"

class QScrollArea;
class QVBoxLayout;

namespace tallymar {

class sitxEdit;

// What the two windows of user-defined layouts have in common: forty boxes that say at which position of a record each field
// stands, kept as numbered definition files in the folder of the installation.
class frmFieldDefinition : public frmExchangeForm {
    Q_OBJECT

 protected:
    struct Wording {
        const char* Name;
        QString Title;
        std::string (*FileName)(std::string_view number);
        QString BoxHint;
        QString SaveHint;
        QString Failure;  // of reading or saving a definition
    };
    frmFieldDefinition(Wording wording, CompanySession& session, const QString& what, QWidget* parent);

    // Below the boxes: what the window has of its own, and the foot.
    void AddFoot(const QList<QWidget*>& options, const QList<CSCmdBtn*>& commands);

    // As the boxes have it.
    FieldDefinition Definition() const;
    // The count of fields is the highest position in the boxes. False, told with a bell, when a position below it is in no box.
    bool CheckPositions();
    // Run before a definition is saved.
    virtual void BeforeSave() {}
    // What would be lost is offered to be saved first. False when the user stays.
    bool MayUnload() override;
    void OnFieldFocus(QWidget* field) override;

 private:
    QWidget* MakeBoxes();
    QLayout* MakeHead(const QString& what);
    void Fit();
    // False when there is no number.
    bool HasNumber();
    std::filesystem::path File() const;
    std::string FileName() const;
    void Show(const FieldDefinition& definition);
    bool OfferToSave();
    void ReadFirst();
    void ReadDefinition();
    bool SaveDefinition();
    void LeaveBox(sitxEdit* box);

    Wording wording_;
    sitxEdit* silgEditNumber_ = nullptr;
    sitxEdit* silgFields_ = nullptr;
    std::array<sitxEdit*, FieldDefinition::kFields + 1> silgEdit_{};  // slot 0 is unused
    QScrollArea* area_ = nullptr;
    QVBoxLayout* all_ = nullptr;
    FieldDefinition kept_;      // as it was last read or saved
    std::string number_ = "1";  // that it was read from or saved as
};

}  // namespace tallymar
