#include "formoutput/frmHPViewer.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "formoutput/FormBlanks.h"
#include "formoutput/frmFormAmountEdit.h"
#include "formoutput/frmFormSheetView.h"
#include "formoutput/frmPrintForm.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "platform/pcl/PclReader.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

const QString kFont = QStringLiteral("Courier New");
constexpr double kFontPoints = 11;
constexpr double kSmallestCell = 7;  // pixels: below it nobody reads
constexpr double kLargestCell = 20;  // the page of a very wide window does not become a wall
constexpr QSize kFirstSize(1050, 560);

}  // namespace

frmHPViewer::frmHPViewer(AppPath paths, std::string_view pageCode, QWidget* parent)
    : CSForm("frmHPViewer", tr("View PCL Form"), parent),
      paths_(std::move(paths)),
      fonts_(LoadSoftFonts(paths_)),
      place_(FormPageOf(pageCode), CountValuesFiles(FormPageOf(pageCode), paths_.Folder())),
      sheet_(Named(new FormSheetView, "FormSheetView1")),
      edits_(sheet_->Text()) {
    picture_ = Named(new QScrollArea(this), "Picture1");
    picture_->setWidget(sheet_);
    picture_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    picture_->setFocusPolicy(Qt::NoFocus);
    picture_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    picture_->verticalScrollBar()->setObjectName(QStringLiteral("Scroller1"));
    connect(picture_->verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] { isFresh_ = false; });
    lblPage_ = Named(new QLabel(this), "lblPage");
    MakeEditors();
    QWidget* buttons = MakeButtons();

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(12, 10, 12, 10);
    all->setSpacing(8);
    all->addWidget(lblPage_);
    all->addWidget(picture_, 1);
    all->addWidget(MakeHintLine());
    all->addWidget(buttons);
    resize(sizeHint());

    connect(sheet_, &FormSheetView::Clicked, this, Guarded([this](int x, int y) { Click(x, y); }));
    sheet_->SetFont(kFont, kFontPoints, false, false);
    Load(place_);
}

void frmHPViewer::MakeEditors() {
    sidbEdit1_ = Named(new FormAmountEdit(sheet_), "sidbEdit1");
    sitxEdit1_ = Named(new sitxEdit(kPageColumns, sheet_), "sitxEdit1");
    for (EntryEdit* edit : std::initializer_list<EntryEdit*>{sidbEdit1_, sitxEdit1_}) {
        edit->setFrame(false);
        edit->setTextMargins(-2, 0, -2, 0);  // characters stand in their cells, without the toolkit's own margin
        QPalette paper = edit->palette();    // the page is paper on a dark desktop too
        paper.setColor(QPalette::Base, Qt::white);
        paper.setColor(QPalette::Text, Qt::black);
        edit->setPalette(paper);
        edit->hide();
        // After the form has taken its notice off the status line.
        connect(
            edit, &QLineEdit::textEdited, this, [this] { ShowState(); }, Qt::QueuedConnection);
    }
}

QWidget* frmHPViewer::MakeButtons() {
    auto* row = new QWidget(this);
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addStretch(1);
    const auto add = [&](const char* name, const QString& caption, const QString& hint, auto action) {
        auto* button = Named(new CSCmdBtn(caption, row), name);
        SetHint(button, hint);
        connect(button, &QPushButton::clicked, this, Guarded(action));
        buttons->addWidget(button);
        return button;
    };
    cmdPrevious_ = add("cmdPrevious", tr("P&rior Page"), tr("Go to the prevous form page"),  // COMPAT: as it was printed
                       [this] { Turn(&FormPlace::Previous); });
    cmdNext_ = add("cmdNext", tr("&Next Page"), tr("Go to the next form page"), [this] { Turn(&FormPlace::Next); });
    cmdSave_ = add("cmdSave", tr("&Save"), tr("Save changes made to form"), [this] { Save(); });
    add("cmdPrint", tr("&Print"), tr("Print the current page"), [this] { Print(); });
    SetCancelButton(add("cmdClose", tr("&Close"), tr("Close the form View window"), [this] { Unload(); }));
    return row;
}

// The new page is read whole before anything of the old one goes.
void frmHPViewer::Load(const FormPlace& place) {
    const class_Hourglass wait;
    const FormPageInfo& page = place.Page();
    std::vector<FormField> fields = ReadFormFields(FindLaserFile(paths_, page.Code, "FPF"));
    PclDrawing blank = ReadPcl(BlankStream(paths_, page), fonts_);
    FormPageText values = FormPageText::Read(page, FindValues(paths_.Folder(), place.FileName()));

    sheet_->hide();
    place_ = place;
    sheet_->FormFile(std::move(blank));
    sheet_->DataFile(std::move(values));
    edits_.Show(place_.FileName(), std::move(fields));
    ShowMarks();
    sheet_->show();
    lblPage_->setText(tr("%1: %2").arg(ToQString(page.Title), ToQString(place_.FileName())));
    cmdNext_->setEnabled(place_.NextEnabled());
    cmdPrevious_->setEnabled(place_.PreviousEnabled());
    // COMPAT: the name that a save proposes is the first exchange's.
    const bool isOther = PrintedFileName(page) != place_.FileName();
    SetHint(cmdSave_, isOther ? tr("Save changes made to form: this page is %1, the name offered is %2")
                                    .arg(ToQString(place_.FileName()), ToQString(PrintedFileName(page)))
                              : tr("Save changes made to form"));
    currentField_ = 0;
    isFresh_ = true;
    ShowHead();
    StartEdit();
}

// A page begins at its head; PlaceEditor then scrolls as far as its first field asks for. A window gets its size in several
// steps, so it is so until somebody moves on the page.
void frmHPViewer::ShowHead() {
    if (isFresh_) picture_->verticalScrollBar()->setValue(0);
}

bool frmHPViewer::IsTyped() const {
    return editor_ && editor_->isModified();
}

bool frmHPViewer::IsDirty() const {
    return edits_.IsDirty() || IsTyped();
}

// The page is to be read, whatever the layout would do with, and the window to fit into the main one.
QSize frmHPViewer::sizeHint() const {
    const QSize room = screen()->availableSize();
    return kFirstSize.boundedTo(QSize(room.width() * 85 / 100, room.height() * 7 / 10));
}

void frmHPViewer::SayUnsaved() {
    ShowWarning(ToQString(kUnsavedChanges));
}

std::string frmHPViewer::EditorText() const {
    return editor_ == sidbEdit1_ ? sidbEdit1_->Text() : sitxEdit1_->Text();
}

void frmHPViewer::StartEdit() {
    if (edits_.FieldList().empty()) {
        for (QWidget* edit : std::initializer_list<QWidget*>{sidbEdit1_, sitxEdit1_}) edit->hide();
        editor_ = nullptr;
        sheet_->SetCurrent(0, 0, 0);
        ShowResult(tr("This page has no fields"));
        return;
    }
    const FormField& field = Current();
    const std::string text = sheet_->GetFieldText(field.Column + 1, field.Line, field.Width);
    if (field.IsAmount) {
        sidbEdit1_->Show(text, field.Width);
        editor_ = sidbEdit1_;
    } else {
        sitxEdit1_->setMaxLength(field.Width);
        sitxEdit1_->SetText(text);
        editor_ = sitxEdit1_;
    }
    EntryEdit* other = editor_ == sidbEdit1_ ? static_cast<EntryEdit*>(sitxEdit1_) : sidbEdit1_;
    const QString place = tr("%1 %2 of %3, line %4, column %5")
                              .arg(field.IsAmount ? tr("Amount") : tr("Text"))
                              .arg(currentField_ + 1)
                              .arg(edits_.FieldList().size())
                              .arg(field.Line)
                              .arg(field.Column + 1);
    editor_->setAccessibleName(place);
    SetHint(editor_, place);
    editor_->setModified(false);
    sheet_->SetCurrent(field.Column, field.Line, field.Width);
    PlaceEditor();
    editor_->show();
    editor_->setFocus(Qt::TabFocusReason);
    other->hide();
    editor_->selectAll();
    EndNotice();
    ShowState();
}

// What the status line says while nothing else stands there.
void frmHPViewer::ShowState() {
    if (IsDirty()) {
        SayUnsaved();
    } else if (edits_.HasLost()) {
        ShowMessage(tr("Changes of this page were not saved: Ctrl+Z brings them back"));
    } else if (editor_) {
        ShowMessage(HintOf(editor_));
    }
}

void frmHPViewer::PlaceEditor() {
    if (!editor_) return;
    const FormField& field = Current();
    const QRectF cells = sheet_->CellRect(field.Column, field.Line, field.Width);
    editor_->setFont(sheet_->CellFont());
    editor_->setGeometry(cells.toRect());
    const QPoint middle = cells.center().toPoint();
    picture_->ensureVisible(middle.x(), middle.y(), static_cast<int>(cells.width() / 2), static_cast<int>(2 * cells.height()));
}

void frmHPViewer::Store() {
    if (!editor_) return;
    edits_.Store(currentField_, EditorText());
    ShowMarks();
    editor_->setModified(false);
}

void frmHPViewer::ShowMarks() {
    for (int i = 0; i < static_cast<int>(edits_.FieldList().size()); ++i) {
        const FormField& field = edits_.FieldList()[static_cast<std::size_t>(i)];
        sheet_->MarkField(field.Column + 1, field.Line, field.Width, edits_.FieldText(i) ? kStored : kMarked);
    }
}

void frmHPViewer::GoTo(int field) {
    isFresh_ = false;
    currentField_ = std::clamp(field, 0, std::max(0, static_cast<int>(edits_.FieldList().size()) - 1));
    StartEdit();
}

void frmHPViewer::Move(bool back) {
    Store();
    GoTo(currentField_ + (back ? -1 : 1));
}

void frmHPViewer::Click(int x, int y) {
    const int field = FieldAt(edits_.FieldList(), sheet_->ColumnAtX(x), sheet_->LineAtY(y));
    if (field < 0) return;
    // COMPAT: the old field is not stored on this way.
    const bool isDropped = IsTyped();
    GoTo(field);
    if (isDropped) ShowWarning(tr("What was typed before the click was not stored: Enter or Tab does that"));
}

void frmHPViewer::Undo() {
    const int field = edits_.Undo();
    if (field < 0) return;
    ShowMarks();
    GoTo(field);
}

bool frmHPViewer::OnEditorKey(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers == Qt::ControlModifier && key == Qt::Key_Z && !editor_->isUndoAvailable()) {
        Undo();
        return true;
    }
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    const bool shift = modifiers & Qt::ShiftModifier;
    switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Tab:
            Move(shift);
            return true;
        case Qt::Key_Down:
            Move(false);
            return true;
        case Qt::Key_Backtab:
        case Qt::Key_Up:
            Move(true);
            return true;
        case Qt::Key_PageDown:
        case Qt::Key_PageUp:
            return true;
        default:
            return false;
    }
}

bool frmHPViewer::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && editor_ && watched == editor_) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (OnEditorKey(key->key(), key->modifiers())) return true;
    }
    return CSForm::eventFilter(watched, event);
}

void frmHPViewer::showEvent(QShowEvent* event) {
    CSForm::showEvent(event);
    if (wasShown_) return;  // back from the icon: what is being typed stays
    wasShown_ = true;
    FitWidth();
    StartEdit();
}

void frmHPViewer::resizeEvent(QResizeEvent* event) {
    CSForm::resizeEvent(event);
    if (isVisible()) FitWidth();
}

void frmHPViewer::FitWidth() {
    layout()->activate();
    const double fits = static_cast<double>(picture_->viewport()->width()) / kPageColumns;
    sheet_->SetCellWidth(std::clamp(fits, kSmallestCell, kLargestCell));
    ShowHead();
    PlaceEditor();
}

void frmHPViewer::Turn(void (FormPlace::*to)()) {
    Store();
    FormPlace place = place_;
    (place.*to)();
    Load(place);
}

void frmHPViewer::Save() {
    const std::filesystem::path folder = paths_.Folder();
    const std::string offered = PrintedFileName(place_.Page());
    QtPrompts prompts(this);
    const auto chosen = prompts.AskSaveFile({.Title = "Export File",
                                             .Filters = {{"All Files (*.*)", "*"}, {"Tallymar LDT Files (*.LDT)", "*.LDT"}},
                                             .FilterIndex = 1,
                                             .InitialFolder = folder,
                                             .FileName = offered,
                                             .DefaultExtension = {},
                                             .AsksToOverwrite = true});
    const std::string title = windowTitle().toStdString();
    if (!chosen) {
        prompts.Message("User canceled Save Option for " + (folder / offered).string(), title, MessageKind::Information);
        if (editor_) editor_->setFocus(Qt::TabFocusReason);
        return;
    }
    if (IsTyped()) Store();  // COMPAT: what is seen is saved, the field being typed in too
    try {
        sheet_->Save(*chosen);
    } catch (const PlatformError& failure) {
        prompts.Message("ERROR " + std::to_string(failure.Number()) + " Saving " + chosen->string(), title, MessageKind::Error);
        StartEdit();
        ShowWarning(FailureToQString(failure.what()));
        return;
    }
    if (IsSameFile(*chosen, FindValues(folder, place_.FileName()))) edits_.Saved();
    StartEdit();
    ShowResult(tr("Saved as %1").arg(PathToQString(*chosen)));
}

void frmHPViewer::Print() {
    QtPrompts prompts(this);
    const PrintOutcome outcome = PrintWithDialog(paths_, place_.Page(), IsDirty(), buffer_, prompts, this);
    if (editor_) editor_->setFocus(Qt::TabFocusReason);
    if (outcome.Problem.empty()) {
        ShowResult(FailureToQString(outcome.Said));
    } else {
        ShowWarning(FailureToQString(outcome.Problem));
    }
}

}  // namespace tallymar
