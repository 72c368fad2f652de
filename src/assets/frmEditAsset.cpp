#include "assets/frmEditAsset.h"

#include <algorithm>
#include <utility>

#include <QDropEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "assets/AllBooks.h"
#include "assets/AssetPicture.h"
#include "assets/LawHints.h"
#include "assets/frmBookPage.h"
#include "assets/frmDeprBuild.h"
#include "assets/frmPicture.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/DraggedFile.h"
#include "platform/controls/EntryEdit.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/NumberEdit.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/ScrollPage.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

using enum AssetField;

// The two columns of the first tab, from the top down: also the order of Enter and Tab.
constexpr AssetField kLeftColumn[] = {AssetNum,  NewUsed,     AssetType,  ClassLife, Description, Descrip2,
                                      SerialNum, CodeSection, AccountNum, Division,  Department};
constexpr AssetField kRightColumn[] = {BusinessUse, InService, Purchased,  FairMktValue,
                                       PictureName, TaxGroup,  AssocAsset, PropertyTax};
constexpr AssetField kSaleFields[] = {DateSold, SoldAmount, SoldExpense, GainLoss, Sold, Abandoned, Casualty, LikeKind, Notice4};

// A triangle, with a bar before its point for the ends of the company, in the desktop's text colour.
class ArrowButton : public QToolButton {
 public:
    ArrowButton(bool right, bool toEnd, QWidget* parent) : QToolButton(parent), right_(right), toEnd_(toEnd) {
        setFocusPolicy(Qt::NoFocus);
        setAutoRaise(true);
    }
    QSize sizeHint() const override {
        const int side = fontMetrics().height() * 7 / 4;
        return {side + side / 4, side};
    }

 protected:
    void paintEvent(QPaintEvent* event) override {
        QToolButton::paintEvent(event);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(rect().center());
        if (!right_) painter.scale(-1, 1);
        const double half = height() / 4.5;
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().brush(isEnabled() ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText));
        painter.drawPolygon(QPolygonF({{-half, -half}, {half, 0}, {-half, half}}));
        if (toEnd_) painter.drawRect(QRectF(half, -half, half / 2.5, 2 * half));
    }

 private:
    bool right_;
    bool toEnd_;
};

constexpr int kPlaceDelay = 40;  // milliseconds: assets that are passed over with a key held down are not counted
constexpr int kMarkSide = 12;    // pixels of the mark of a tab

// A "not equal" sign in the desktop's text colour, by lines: a font need not have it.
QIcon DifferenceMark(const QWidget& on) {
    const double ratio = on.devicePixelRatioF();
    QPixmap picture(QSize(kMarkSide, kMarkSide) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(on.palette().color(QPalette::WindowText), 1.6));
    painter.drawLine(QPointF(1.5, 4.2), QPointF(10.5, 4.2));
    painter.drawLine(QPointF(1.5, 7.8), QPointF(10.5, 7.8));
    painter.drawLine(QPointF(3.5, 11), QPointF(8.5, 1));
    return QIcon(picture);
}

bool IsPicture(const std::filesystem::path& file) {
    return !file.empty() && IsPictureName(FromUtf8(file.filename().string()));
}

}  // namespace

frmEditAsset::frmEditAsset(CompanySession& company, AssetEditState& state, ADepre& engine, Prompts* prompts, QWidget* parent)
    : CSForm("frmEditAsset", tr("Edit Asset Information"), parent),
      company_(company),
      state_(state),
      engine_(engine),
      ownPrompts_(this),
      prompts_(prompts ? *prompts : ownPrompts_),
      edit_(company, state, prompts_) {
    SSTab1_ = Named(new QTabWidget(this), "SSTab1");
    SSTab1_->setUsesScrollButtons(false);
    SSTab1_->tabBar()->setFocusPolicy(Qt::ClickFocus);
    SSTab1_->tabBar()->setAccessibleName(tr("Parts of the asset"));
    SSTab1_->addTab(new ScrollPage(MakeGeneralPage()), {});
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        auto* page = new frmBookPage(book, controls_, SSTab1_);
        mirrors_.push_back(page->Mirrors());
        SSTab1_->addTab(new ScrollPage(page), {});
    }
    SSTab1_->addTab(new ScrollPage(MakeSalePage()), {});
    for (int tab = 0; tab < kTabCount; ++tab) SSTab1_->setTabText(tab, ToQString(kTabCaptions[tab]));

    for (const AssetControls::Control& control : controls_.All()) {
        if (!control.Field->ReadOnly) focusOrder_.push_back(control.Widget);
        if (control.Field->Id == PictureName) focusOrder_.push_back(cmdView_);
    }

    auto* head = new QHBoxLayout;
    head->addWidget(MakeArrows());
    head->addStretch(1);
    auto* foot = new QHBoxLayout;
    foot->addWidget(MakeHintLine("FieldHint"), 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(12, 8, 12, 10);
    all->addLayout(head);
    all->addWidget(SSTab1_, 1);
    all->addWidget(MakeCommands());
    all->addLayout(foot);

    controls_.OnChanged = [this](const AssetControls::Control& control) {
        edit_.Changed(control.Field->Id, control.Book);
        ShowAll();
        if (control.Field->HintOnChange) ShowMessage(ToQString(edit_.FieldHint));
        ShowOutcome();
    };
    controls_.OnLeft = [this](const AssetControls::Control& control) {
        if (!company_.IsOpen() || !edit_.HasRow()) return;
        edit_.Left(control.Field->Id);
        ShowAll();
        if (control.Field->Id == AssetNum && edit_.AssetNumRejected) ShowTab(kGeneralTab);
    };
    connect(SSTab1_, &QTabWidget::currentChanged, this, Guarded([this](int tab) { OnTabChanged(tab); }));
    placing_ = new QTimer(this);
    placing_->setSingleShot(true);
    placing_->setInterval(kPlaceDelay);
    connect(placing_, &QTimer::timeout, this, Guarded([this] { ShowPlace(); }));
    setAcceptDrops(true);
    edit_.Open();
    ShowAll();
    ShowCaption();
    ShowOutcome();
}

QWidget* frmEditAsset::MakeGeneralPage() {
    auto* page = new QWidget(SSTab1_);
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    const auto add = [&](AssetField id) {
        const AssetFieldDef& field = FieldDef(id);
        QWidget* widget = controls_.Make(id, 0, page);
        if (id == PictureName) {
            cmdView_ = Named(new CSCmdBtn({}, page), "cmdView");
            connect(cmdView_, &QPushButton::clicked, this, Guarded([this] { ViewPicture(); }));
            rows.Add(ToQString(field.Label), {widget, cmdView_});
        } else if (field.Kind == FieldKind::Check) {
            rows.AddWide(widget);
        } else {
            rows.Add(ToQString(field.Label), widget);
        }
    };
    for (const AssetField id : kLeftColumn) add(id);
    rows.NextColumn();
    for (const AssetField id : kRightColumn) add(id);

    MsgLabel_ = Named(new QLabel(ToQString(kInitialStatusText), page), "MsgLabel");
    MsgLabel_->setAccessibleName(tr("Status of the asset"));
    QFont bold = MsgLabel_->font();
    bold.setBold(true);
    MsgLabel_->setFont(bold);
    rows.AddWide(MsgLabel_);

    auto* all = new QVBoxLayout(page);
    auto* line = new QHBoxLayout;
    line->addLayout(grid);
    line->addStretch(1);
    all->addLayout(line);
    all->addStretch(1);
    return page;
}

QWidget* frmEditAsset::MakeSalePage() {
    auto* page = new QWidget(SSTab1_);
    auto* mirrors = new AssetMirrors(kSaleTab, page);
    mirrors_.push_back(mirrors);
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    bool second = false;
    for (const AssetField id : kSaleFields) {
        const AssetFieldDef& field = FieldDef(id);
        QWidget* widget = controls_.Make(id, 0, page);
        if (field.Kind != FieldKind::Check) {
            rows.Add(ToQString(field.Label), widget);
            continue;
        }
        if (!second) rows.NextColumn();
        second = true;
        rows.AddWide(widget);
    }
    auto* line = new QHBoxLayout;
    line->addLayout(grid);
    line->addStretch(1);
    auto* all = new QVBoxLayout(page);
    all->addWidget(mirrors);
    all->addSpacing(8);
    all->addLayout(line);
    all->addStretch(1);
    return page;
}

QToolButton* frmEditAsset::MakeArrow(const AssetCommandDef& command, bool right, bool toEnd, bool (AssetEditSession::*step)()) {
    QToolButton* arrow = Named(new ArrowButton(right, toEnd, this), command.Control.data());
    arrow->setToolTip(ToQString(command.Tip));
    arrow->setAccessibleName(ToQString(command.Tip));
    connect(arrow, &QToolButton::clicked, this, Guarded([this, step] { Move(step); }));
    return arrow;
}

QWidget* frmEditAsset::MakeArrows() {
    auto* bar = new QWidget(this);
    auto* line = new QHBoxLayout(bar);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(2);
    line->addWidget(MakeArrow(kImgFirst, false, true, &AssetEditSession::First));
    line->addWidget(MakeArrow(kImgPrevious, false, false, &AssetEditSession::Previous));
    line->addWidget(MakeArrow(kImgNext, true, false, &AssetEditSession::Next));
    line->addWidget(MakeArrow(kImgLast, true, true, &AssetEditSession::Last));
    return bar;
}

QPushButton* frmEditAsset::MakeCommand(const AssetCommandDef& command, const std::function<void()>& action) {
    auto* button = Named(new CSCmdBtn(ToQString(command.Caption), this), command.Control.data());
    button->setToolTip(ToQString(command.Tip));
    connect(button, &QPushButton::clicked, this, Guarded(action));
    focusOrder_.push_back(button);
    return button;
}

QWidget* frmEditAsset::MakeCommands() {
    auto* bar = new QWidget(this);
    auto* line = new QHBoxLayout(bar);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(MakeCommand(kCmdNew, [this] {
        edit_.New();
        ShowAll();
        ShowCaption();
        FocusField(AssetNum);
        ShowOutcome();
    }));
    line->addWidget(MakeCommand(kCmdBuild, [this] { Build(); }));
    line->addWidget(MakeCommand(kCmdDelete, [this] { Delete(); }));
    line->addWidget(MakeCommand(kCmdCopy, [this] {
        edit_.CopyAsset();
        emit CopyWanted();
        ShowCaption();
        FocusTab();
    }));
    line->addWidget(MakeCommand(kCmdFind, [this] { emit FindWanted(); }));
    line->addStretch(1);
    line->addWidget(MakeCommand(kCmdClose, [this] {
        if (edit_.Close()) {
            Unload();
        } else {
            ShowOutcome();
        }
    }));
    return bar;
}

void frmEditAsset::showEvent(QShowEvent* event) {
    if (!opened_) {
        opened_ = true;
        FocusField(AssetNum);
    }
    CSForm::showEvent(event);
}

void frmEditAsset::LoadEdit() {
    edit_.LoadEdit();
    ShowAll();
    placing_->start();
    FocusTab();
    ShowOutcome();
}

void frmEditAsset::ShowAll() {
    controls_.ShowValues(edit_.Values);
    for (AssetMirrors* mirrors : mirrors_) mirrors->Show(edit_.Mirrors);
    MsgLabel_->setText(ToQString(edit_.MsgLabel));
    ShowPictureCommand();
    ShowBookMarks();
    if (const bool unsaved = edit_.HasUnsaved(); unsaved != unsavedShown_) emit UnsavedShown(unsavedShown_ = unsaved);
    emit ValuesShown();
}

void frmEditAsset::ShowCaption() {
    setWindowTitle(ToQString(edit_.Caption()));
    placing_->start();
}

void frmEditAsset::ShowPlace() {
    const auto place = edit_.Place();
    emit PlaceShown(place ? tr("%1 of %2").arg(locale().toString(place->Number), locale().toString(place->Count)) : QString());
}

void frmEditAsset::ShowBookMarks() {
    for (int book = kFirstBook + 1; book <= kLastBook; ++book) {
        const QString difference = ToQString(DifferenceFromFederal(edit_.Values, book));
        if (difference == bookMarks_[book]) continue;
        bookMarks_[book] = difference;
        const QString told = difference.isEmpty() ? QString() : tr("Not as in the Federal book: %1").arg(difference);
        const QString caption = SSTab1_->tabText(book);
        SSTab1_->setTabIcon(book, difference.isEmpty() ? QIcon() : DifferenceMark(*this));
        SSTab1_->setTabToolTip(book, told);
        SSTab1_->tabBar()->setAccessibleTabName(book, told.isEmpty() ? caption : caption + QStringLiteral(". ") + told);
    }
}

void frmEditAsset::changeEvent(QEvent* event) {
    CSForm::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || !SSTab1_) return;
    for (int book = kFirstBook + 1; book <= kLastBook; ++book) {
        if (!bookMarks_[book].isEmpty()) SSTab1_->setTabIcon(book, DifferenceMark(*this));
    }
}

void frmEditAsset::dragEnterEvent(QDragEnterEvent* event) {
    if (edit_.HasRow() && IsPicture(DraggedFile(*event))) event->acceptProposedAction();
}

void frmEditAsset::dropEvent(QDropEvent* event) {
    const std::filesystem::path file = DraggedFile(*event);
    if (!IsPicture(file)) return;
    event->acceptProposedAction();
    // After the drop: what is dragged from would wait for the answer to a message.
    QTimer::singleShot(0, this, Guarded([this, file] { SetPicture(TakePicture(file, company_.Paths().Images(), prompts_)); }));
}

void frmEditAsset::SetPicture(const std::optional<std::string>& name) {
    if (!name) return;
    edit_.Values.PictureName = *name;
    ShowAll();
}

void frmEditAsset::ShowPictureCommand() {
    const PictureCommand command = PictureCommandFor(edit_.Values.PictureName);
    cmdView_->setText(ToQString(command.Caption));
    cmdView_->setToolTip(ToQString(command.Tip));
}

void frmEditAsset::ShowOutcome() {
    if (const auto notice = edit_.TakeNotice()) {
        const QString text = ToQString(notice->Text);
        notice->IsWarning ? ShowWarning(text) : ShowResult(text);
    }
    // Once: what is typed there next is the mending of it.
    const std::optional<AssetField> offending = std::exchange(edit_.Offending, std::nullopt);
    if (!offending) return;
    // A form that is to close may not be the one in front, and coming to the front takes the keyboard to where it was.
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget())) frame->mdiArea()->setActiveSubWindow(frame);
    const AssetField field = *offending;
    ShowTab(FieldDef(field).Place == FieldPlace::Sale ? kSaleTab : kGeneralTab);
    FocusField(field);
    if (auto* entry = qobject_cast<EntryEdit*>(controls_.Find(field, 0))) entry->selectAll();
}

bool frmEditAsset::ShowTab(int tab) {
    return SSTab1_->currentIndex() == tab || TurnTo(*SSTab1_, tab);
}

bool frmEditAsset::MayTurn(QWidget* left) {
    const AssetControls::Control* control = controls_.Of(left);
    return !control || control->Field->Id != AssetNum || !edit_.AssetNumRejected;
}

void frmEditAsset::OnTabChanged(int tab) {
    if (tab == shownTab_) return;
    shownTab_ = tab;
    const std::optional<AssetField> focus = edit_.TabChanged(tab);
    ShowAll();
    if (focus) FocusField(*focus);
}

void frmEditAsset::FocusField(AssetField field) {
    const bool ofBook = FieldDef(field).Place == FieldPlace::Book;
    if (QWidget* widget = controls_.Find(field, ofBook ? shownTab_ : 0)) widget->setFocus(Qt::TabFocusReason);
}

// After a command the keys belong to the fields again, not to its button.
void frmEditAsset::FocusTab() {
    if (controls_.Of(focusWidget())) return;
    FocusField(shownTab_ == kGeneralTab ? AssetNum : shownTab_ == kSaleTab ? DateSold : DeprType);
}

void frmEditAsset::OnFieldFocus(QWidget* field) {
    if (field == SSTab1_->tabBar()) {
        ShowPictureCommand();
        return;
    }
    const AssetControls::Control* control = controls_.Of(field);
    if (!control) return;
    if (auto* amount = qobject_cast<sidbEdit*>(field)) amount->SetMaximum(MaximumOf(*control->Field, edit_.ByLaw()));
    edit_.Focused(control->Field->Id, control->Book);
    if (edit_.HintByLaw) ShowMessage(ToQString(edit_.FieldHint));
    ShowAll();
    if (control->Field->Arming != TabArming::None) ShowTab(edit_.Tab);
}

bool frmEditAsset::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return CSForm::eventFilter(watched, event);
    if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::Undo)) {
        // What has just been typed in a field is the field's own to take back.
        const auto* entry = qobject_cast<QLineEdit*>(watched);
        if (entry && entry->isUndoAvailable()) return false;
        Guarded([this] { BringBack(); })();
        return true;
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    // The Tab that Enter sends comes through here while Enter is still under way.
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) return CSForm::eventFilter(watched, event);
    enterMoves_ = true;
    const bool taken = CSForm::eventFilter(watched, event);
    enterMoves_ = false;
    return taken;
}

// Enter and Tab go through the fields of all tabs, one after the other: a tab that is not shown is brought up when its turn
// comes. Tab alone goes to the commands as well. Enter would press them, and nobody who keys in figures wants to meet New or
// Delete so.
bool frmEditAsset::focusNextPrevChild(bool next) {
    const auto count = static_cast<int>(focusOrder_.size());
    const auto isStop = [this](const QWidget* widget) { return !enterMoves_ || controls_.Of(widget); };
    const auto isOnShownTab = [this](const QWidget* widget) {
        const AssetControls::Control* control = controls_.Of(widget);
        return control && control->Tab() == shownTab_;
    };
    auto place = std::find(focusOrder_.begin(), focusOrder_.end(), focusWidget()) - focusOrder_.begin();
    if (place == count) {
        // From the row of tabs or a read-only field: the shown tab's first field.
        place = std::find_if(focusOrder_.begin(), focusOrder_.end(), isOnShownTab) - focusOrder_.begin() - (next ? 1 : 0);
    }
    const int step = next ? 1 : count - 1;
    do {
        place = (place + step) % count;
    } while (!isStop(focusOrder_[static_cast<std::size_t>(place)]));
    QWidget* target = focusOrder_[static_cast<std::size_t>(place)];
    const AssetControls::Control* control = controls_.Of(target);
    const int tab = target == cmdView_ ? kGeneralTab : control ? control->Tab() : shownTab_;
    if (tab != shownTab_) {
        edit_.TabFocusArmed = false;  // the field that follows gets the focus, not the tab's first
        if (!ShowTab(tab)) return true;
    }
    target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void frmEditAsset::Move(bool (AssetEditSession::*step)()) {
    {
        const class_Hourglass wait;
        (edit_.*step)();
    }
    // A warning was about the asset that has gone.
    if (WarningStands()) EndNotice();
    ShowAll();
    placing_->start();
    ShowMessage(ToQString(edit_.FieldHint));
    ShowOutcome();
    if (auto* entry = qobject_cast<EntryEdit*>(focusWidget())) entry->selectAll();
}

bool frmEditAsset::OnPage(Page page) {
    Guarded([this, page] { Move(page == Page::Next ? &AssetEditSession::Next : &AssetEditSession::Previous); })();
    return true;
}

void frmEditAsset::BringBack() {
    edit_.BringBack();
    ShowAll();
    FocusTab();
    ShowCaption();
    ShowOutcome();
}

void frmEditAsset::Delete() {
    if (edit_.Delete()) {
        Unload();
        return;
    }
    ShowAll();
    ShowCaption();
    FocusTab();
    ShowOutcome();
}

void frmEditAsset::Build() {
    DeprBuildGrid grid;
    if (!edit_.Build(engine_, grid)) {
        ShowOutcome();
        return;
    }
    frmDeprBuild form(grid, edit_.Values.AssetNum, this);
    form.ShowModal();
    edit_.FinishBuild(form.BuildCancelled());
    ShowAll();
    FocusTab();
    ShowOutcome();
}

void frmEditAsset::ViewPicture() {
    const std::filesystem::path& images = company_.Paths().Images();
    if (!IsPictureName(edit_.Values.PictureName)) {
        SetPicture(AddPicture(images, prompts_));
        return;
    }
    const std::filesystem::path path = PicturePath(images, edit_.Values.PictureName);
    frmPicture form(path, this);
    if (const std::optional<std::string> problem = form.Load()) {
        prompts_.Message(*problem, "Tallymar", MessageKind::Warning);
        return;
    }
    form.ShowModal();
}

bool frmEditAsset::MayUnload() {
    bool leaves = true;
    Guarded([this, &leaves] { leaves = edit_.Leave(); })();
    if (!leaves) ShowOutcome();
    return leaves;
}

}  // namespace tallymar
