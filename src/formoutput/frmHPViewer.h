#pragma once

#include <filesystem>
#include <string_view>

#include "formoutput/FormPages.h"
#include "formoutput/PageEdits.h"
#include "formoutput/PrintBuffer.h"
#include "platform/controls/CSForm.h"
#include "platform/pcl/SoftFont.h"
#include "store/AppPath.h"

class QLabel;
class QScrollArea;

namespace tallymar {

class CSCmdBtn;
class EntryEdit;
class FormAmountEdit;
class FormSheetView;
class sitxEdit;

// "View PCL Form": the pages of a form as they print, whose fields can be gone through and changed. The values lie in the
// program's folder; blanks, fields and fonts are the firm's own or the delivered ones.
class frmHPViewer : public CSForm {
    Q_OBJECT

 public:
    // Fails when the page's fields or blank cannot be read: FileNotFound, PathAccess.
    frmHPViewer(AppPath paths, std::string_view pageCode, QWidget* parent = nullptr);

    const FormPlace& Place() const { return place_; }
    // Something on the page is not in its file: the caller must not throw the window away.
    bool IsDirty() const;
    void SayUnsaved();

    QSize sizeHint() const override;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    QWidget* MakeButtons();
    void MakeEditors();

    void Load(const FormPlace& place);
    void FitWidth();
    void ShowHead();
    void StartEdit();
    void PlaceEditor();
    void Store();
    void ShowMarks();
    // Of the editor, when it is not what the page has.
    bool IsTyped() const;
    bool OnEditorKey(int key, Qt::KeyboardModifiers modifiers);
    void Move(bool back);
    void GoTo(int field);
    void Click(int x, int y);
    void Undo();
    void ShowState();

    void Turn(void (FormPlace::*to)());
    void Save();
    void Print();

    const FormField& Current() const { return edits_.FieldList().at(static_cast<std::size_t>(currentField_)); }
    std::string EditorText() const;

    AppPath paths_;
    SoftFonts fonts_;
    FormPlace place_;
    FormSheetView* sheet_;
    PageEdits edits_;
    int currentField_ = 0;  // of the fields, from 0
    bool isFresh_ = true;   // nobody has moved on the page since it was loaded
    bool wasShown_ = false;
    PrintBuffer buffer_;

    QScrollArea* picture_ = nullptr;
    QLabel* lblPage_ = nullptr;
    FormAmountEdit* sidbEdit1_ = nullptr;
    sitxEdit* sitxEdit1_ = nullptr;
    EntryEdit* editor_ = nullptr;  // the one of the two that is shown; none on a page without fields
    CSCmdBtn* cmdNext_ = nullptr;
    CSCmdBtn* cmdPrevious_ = nullptr;
    CSCmdBtn* cmdSave_ = nullptr;
};

}  // namespace tallymar
