#include "interchange/frmFieldDefinition.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr int kRowsPerColumn = 14;
constexpr int kPositionWidth = 3;
constexpr int kCountWidth = 2;
constexpr int kTitleBar = 40;  // pixels that a window manager may take of the screen's height
constexpr int kLeavingPoll = 50;

sitxEdit* MakeNumber(int width, std::string_view allowed, QWidget* parent) {
    auto* edit = new sitxEdit(width, parent);
    edit->SetAllowed(allowed);
    edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    edit->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return edit;
}

}  // namespace

frmFieldDefinition::frmFieldDefinition(Wording wording, CompanySession& session, const QString& what, QWidget* parent)
    : frmExchangeForm(wording.Name, wording.Title, session, parent), wording_(std::move(wording)) {
    all_ = new QVBoxLayout(this);
    all_->setContentsMargins(16, 14, 16, 12);
    all_->setSpacing(10);
    all_->addLayout(MakeHead(what));
    area_ = new QScrollArea(this);
    area_->setWidget(MakeBoxes());
    area_->setWidgetResizable(true);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setFocusPolicy(Qt::NoFocus);
    all_->addWidget(area_, 1);
}

QLayout* frmFieldDefinition::MakeHead(const QString& what) {
    silgEditNumber_ = Named(MakeNumber(1, "123456789", this), "silgEditNumber");
    silgEditNumber_->SetText(number_);
    auto* cmdReadDef = Named(new CSCmdBtn(tr("Read Definition"), this), "cmdReadDef");
    silgFields_ = Named(MakeNumber(kCountWidth, "0123456789", this), "silgFields");
    // COMPAT: the hint of the number speaks of the boxes.
    SetHint(silgEditNumber_, tr("Enter a number between 1 and 40 representing field number in ASCII file"));
    SetHint(silgFields_, tr("Enter the number of fields in each record"));
    SetHint(cmdReadDef, tr("Read the definition of this number"));
    connect(cmdReadDef, &QPushButton::clicked, this, Guarded([this] { ReadDefinition(); }));

    auto* lblWhat = Named(new QLabel(what, this), "lblWhat");
    lblWhat->setTextFormat(Qt::PlainText);
    lblWhat->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    cmdReadDef->setAccessibleName(cmdReadDef->text());
    rows.Add(tr("User Definition Number (1 to 9)"), {silgEditNumber_, cmdReadDef});
    rows.Add(tr("Number of fields in record  (1 to 40)"), silgFields_);
    auto* head = new QHBoxLayout;
    head->addLayout(grid);
    head->addStretch(1);
    head->addWidget(lblWhat, 0, Qt::AlignTop);
    return head;
}

QWidget* frmFieldDefinition::MakeBoxes() {
    auto* boxes = new QWidget(this);
    auto* grid = new QGridLayout(boxes);
    FieldRows rows(grid);
    grid->setVerticalSpacing(4);
    for (int field = 1; field <= FieldDefinition::kFields; ++field) {
        auto* box = Named(MakeNumber(kPositionWidth, "-0123456789", boxes), "silgEdit", field);
        SetHint(box, wording_.BoxHint);
        if (field > 1 && (field - 1) % kRowsPerColumn == 0) rows.NextColumn();
        rows.Add(ToQString(FieldDefinition::Label(field)), box);
        connect(box, &EntryEdit::Left, this, [this, box] { LeaveBox(box); });
        silgEdit_.at(static_cast<std::size_t>(field)) = box;
    }
    return boxes;
}

void frmFieldDefinition::AddFoot(const QList<QWidget*>& options, const QList<CSCmdBtn*>& commands) {
    for (QWidget* option : options) all_->addWidget(option);
    auto* cmdSave = Named(new CSCmdBtn(tr("Save Definition"), this), "cmdSave");
    SetHint(cmdSave, wording_.SaveHint);
    connect(cmdSave, &QPushButton::clicked, this, Guarded([this] { SaveDefinition(); }));
    all_->addLayout(MakeFoot(QList{cmdSave} + commands, tr("&Close")));
    Fit();
    ReadFirst();
}

// As large as the boxes need, as far as the screen has room.
void frmFieldDefinition::Fit() {
    ensurePolished();
    const QSize boxes = area_->widget()->sizeHint() + QSize(2 * area_->frameWidth(), 2 * area_->frameWidth());
    QSize wanted = layout()->sizeHint() - area_->sizeHint() + boxes;
    wanted.setWidth(qMax(layout()->minimumSize().width(), boxes.width() + 2 * 16));
    const QSize room = screen()->availableSize() - QSize(0, kTitleBar);
    if (wanted.height() > room.height()) wanted.rwidth() += area_->verticalScrollBar()->sizeHint().width();
    resize(wanted.boundedTo(room));
}

void frmFieldDefinition::OnFieldFocus(QWidget* field) {
    if (area_->isAncestorOf(field)) area_->ensureWidgetVisible(field);
}

FieldDefinition frmFieldDefinition::Definition() const {
    FieldDefinition definition;
    definition.FieldCountText = silgFields_->Text();
    for (int field = 1; field <= FieldDefinition::kFields; ++field) {
        definition.SetBox(field, silgEdit_.at(static_cast<std::size_t>(field))->Text());
    }
    return definition;
}

void frmFieldDefinition::Show(const FieldDefinition& definition) {
    silgFields_->SetText(definition.FieldCountText);
    for (int field = 1; field <= FieldDefinition::kFields; ++field) {
        silgEdit_.at(static_cast<std::size_t>(field))->SetText(definition.Box(field));
    }
    kept_ = Definition();
}

bool frmFieldDefinition::CheckPositions() {
    const FieldDefinition definition = Definition();
    silgFields_->SetText(std::to_string(definition.HighestPosition()));
    QStringList errors;
    for (const int position : definition.Unclaimed()) {
        errors << tr("ERROR: Field number %1 missing").arg(position);
        QApplication::beep();
    }
    if (errors.isEmpty()) return true;
    ShowWarning(errors.join(QStringLiteral("   ")));
    return false;
}

std::string frmFieldDefinition::FileName() const {
    return wording_.FileName(silgEditNumber_->Text());
}

std::filesystem::path frmFieldDefinition::File() const {
    return FieldDefinition::FileIn(Session().Paths().Folder(), FileName());
}

bool frmFieldDefinition::HasNumber() {
    if (!silgEditNumber_->Text().empty()) return true;
    ShowWarning(tr("A definition has a number from 1 to 9"));
    silgEditNumber_->setFocus();
    return false;
}

void frmFieldDefinition::ReadFirst() {
    try {
        Show(FieldDefinition::Load(File()));
    } catch (const PlatformError& failure) {
        // A new installation has none, which is no failure to stop at.
        ShowWarning(wording_.Failure + QStringLiteral(" - ") + FailureToQString(failure.what()));
    }
}

void frmFieldDefinition::ReadDefinition() {
    if (!HasNumber() || !OfferToSave()) return;
    Show({});
    number_ = silgEditNumber_->Text();
    silgFields_->setFocus(Qt::TabFocusReason);
    try {
        Show(FieldDefinition::Load(File()));
    } catch (const PlatformError& failure) {
        ShowWarning(wording_.Failure + QStringLiteral(" - ") + FailureToQString(failure.what()));
        return;
    }
    ShowResult(tr("%1 has been read").arg(ToQString(FileName())));
}

bool frmFieldDefinition::SaveDefinition() {
    if (!HasNumber()) return false;
    EndNotice();
    BeforeSave();
    const FieldDefinition definition = Definition();
    try {
        definition.Save(File());
    } catch (const PlatformError& failure) {
        const std::string reason = failure.what();
        ShowWarning(wording_.Failure);
        QtPrompts(this).Message(ToWindows1252(wording_.Failure) + "\n" + reason, ToWindows1252(wording_.Title),
                                MessageKind::Error);
        return false;
    }
    kept_ = definition;
    number_ = silgEditNumber_->Text();
    if (!WarningStands()) ShowResult(tr("%1 has been saved").arg(ToQString(FileName())));
    return true;
}

bool frmFieldDefinition::OfferToSave() {
    if (Definition() == kept_) return true;
    const std::string name = wording_.FileName(number_);
    const Answer answer = QtPrompts(this).AskYesNoCancel("The definition has been changed.\nSave it as " + name + "?",
                                                         ToWindows1252(wording_.Title));
    if (answer != Answer::Yes) return answer == Answer::No;
    const std::string asked = silgEditNumber_->Text();
    silgEditNumber_->SetText(number_);
    const bool saved = SaveDefinition();
    silgEditNumber_->SetText(asked);
    return saved;
}

bool frmFieldDefinition::MayUnload() {
    return OfferToSave();
}

// Told when the keyboard or the mouse is done with leaving, and only while this window has them: a command that the box was left
// for comes first.
void frmFieldDefinition::LeaveBox(sitxEdit* box) {
    if (FieldDefinition::IsValidPosition(box->Text())) return;
    QTimer::singleShot(0, box, Guarded([this, box] {
                           if (!isVisible()) return;
                           const bool isBusy = QApplication::mouseButtons() != Qt::NoButton ||
                                               QApplication::activeModalWidget() != this || class_Hourglass::Stands();
                           if (isBusy) {
                               QTimer::singleShot(kLeavingPoll, box, [this, box] { LeaveBox(box); });
                               return;
                           }
                           QtPrompts(this).Message("Value must be between 1 and 40 or blank", " Confirm and Reenter",
                                                   MessageKind::Warning);
                           box->setFocus(Qt::OtherFocusReason);
                           box->selectAll();
                       }));
}

}  // namespace tallymar
