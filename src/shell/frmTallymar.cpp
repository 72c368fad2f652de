#include "shell/frmTallymar.h"

#include <algorithm>
#include <memory>

#include <QAbstractScrollArea>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QProxyStyle>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QStyleOption>
#include <QTimer>
#include <QToolBar>

#include "assets/CopyAsset.h"
#include "assets/frmAllBooks.h"
#include "assets/frmCopyAsset.h"
#include "assets/frmEditAsset.h"
#include "assets/frmFindAsset.h"
#include "batch/CompanyFiles.h"
#include "batch/frmChangeDept.h"
#include "batch/frmChangeRange.h"
#include "batch/frmComputeOptions.h"
#include "batch/frmResequence.h"
#include "batch/frmSetBooks.h"
#include "formoutput/frmHPViewer.h"
#include "formoutput/frmPrintForm.h"
#include "formoutput/frmPrinterSetup.h"
#include "interchange/ConvertCompany.h"
#include "interchange/frmExportOptions.h"
#include "interchange/frmImportOptions.h"
#include "irsforms/frmCreateForm.h"
#include "loans/frmLoans.h"
#include "platform/controls/CSForm.h"
#include "platform/controls/DraggedFile.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/Icons.h"
#include "platform/controls/Looks.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/WindowMemory.h"
#include "reports/frmLabelOptions.h"
#include "reports/frmReportOptions.h"
#include "shell/CompanyProfile.h"
#include "shell/RecentCompanies.h"
#include "shell/frmAbout.h"
#include "shell/frmBrowser.h"
#include "shell/frmEditCompany.h"
#include "shell/frmEditUser.h"
#include "shell/frmHelp.h"
#include "shell/frmHelpKey.h"
#include "shell/frmInit.h"

namespace tallymar {

namespace {

constexpr std::string_view kProduct = "Tallymar";
// Beside the user profile, whose positions are taken.
constexpr const char* kWindowSettings = "Windows.ini";
constexpr QSize kFirstSize(1120, 760);
const QString kRecentKey = QStringLiteral("Recent");
const QString kColorsKey = QStringLiteral("Colors");
const QString kMainPlace = QStringLiteral("Tallymar");
constexpr int kLongestCompany = 40;  // letters of its name in the status bar

const QString kEditFormName = QStringLiteral("frmEditAsset");
const QString kFindFormName = QStringLiteral("frmFindAsset");
const QString kViewerName = QStringLiteral("frmHPViewer");
const QString kAllBooksName = QStringLiteral("frmAllBooks");

// A command that is off can be gone to as well, as a preparer knows it: the status line says what it would do. Styles tint only
// what can be chosen, so it gets a frame.
class MenuStyle : public QProxyStyle {
 public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override {
        return hint == SH_Menu_AllowActiveAndDisabled ? 1 : QProxyStyle::styleHint(hint, option, widget, data);
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        QProxyStyle::drawControl(element, option, painter, widget);
        const bool isOff = !(option->state & State_Enabled);
        if (element != CE_MenuItem || !isOff || !(option->state & State_Selected)) return;
        painter->setPen(option->palette.color(QPalette::Active, QPalette::Highlight));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    }
};

// A child that fills the area is hidden for a moment when another comes to fill it, and a plain frame would take that for a Tab:
// back in it, its user would find the focus one field on.
class ChildFrame : public QMdiSubWindow {
 public:
    bool IsLeaving = false;  // its form is unloaded, though the area still lists it

 protected:
    bool focusNextPrevChild(bool next) override { return isVisible() && QMdiSubWindow::focusNextPrevChild(next); }
};

QLabel* StatusPart(const char* name, const QString& spoken, QStatusBar* bar) {
    auto* label = Named(new QLabel(bar), name);
    label->setTextFormat(Qt::PlainText);
    label->setAccessibleDescription(spoken);
    bar->addPermanentWidget(label);
    label->hide();
    return label;
}

// An empty part takes no room.
void ShowPart(QLabel* label, const QString& text) {
    label->setText(text);
    label->setVisible(!text.isEmpty());
}

// A form of a few fields keeps its own size in the middle of a larger window: stretched, its fields would lie far apart. One that
// scrolls or lists takes all the room that there is; lists that drop down are windows of their own.
void KeepTogether(CSForm& form) {
    const QList<QAbstractScrollArea*> areas = form.findChildren<QAbstractScrollArea*>();
    const bool takesRoom = std::any_of(areas.begin(), areas.end(), [&](const auto* area) { return area->window() == &form; });
    if (takesRoom || !form.layout()) return;
    auto* contents = new QWidget(&form);
    contents->setMinimumWidth(form.minimumWidth());
    contents->setLayout(form.layout());  // which takes it off the form
    auto* all = new QGridLayout(&form);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(contents, 0, 1);
    all->setColumnStretch(0, 1);
    all->setColumnStretch(2, 1);
    all->setRowStretch(1, 1);
}

QString ControlName(const MenuItem& item) {
    const QString name = ToQString(item.Name);
    return item.Index < 0 ? name : QStringLiteral("%1(%2)").arg(name).arg(item.Index);
}

}  // namespace

Tallymar::Tallymar(AppPath paths)
    : session_(std::move(paths), profile_),
      engine_([this](const std::string& table) { return session_.Paths().Find(table); }),
      prompts_(this),
      memory_(new WindowMemory(session_.Paths().Folder() / kWindowSettings, this)) {
    setObjectName(ToQString(kProduct));
    setWindowTitle(caption_ = ToQString(kProduct));
    profile_.Load(session_.Paths().Profile());
    if (const auto printer = SavedPrinterSettings(session_.Paths().Folder())) UsePrinter(*printer);
    session_.SetObserver(this);
    session_.SetChosenFile(OfferConversion);

    area_ = new QMdiArea(this);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);  // what closes leads back to where its user came from
    area_->setBackground(palette().brush(QPalette::Mid));
    setCentralWidget(area_);
    connect(new QShortcut(Qt::CTRL | Qt::Key_F4, this), &QShortcut::activated, area_, &QMdiArea::closeActiveSubWindow);
    setAcceptDrops(true);

    MakeRoutes();
    MakeMenus();
    MakeKeys();
    MakeToolbar();
    MakeStatusBar();
    ApplyEnabled({});
    new HelpKey(
        [this](const QStringList& keys, const QString& message) {
            ShowHelp([&](frmHelp& help) {
                if (message.isEmpty()) {
                    help.ShowKey(keys);
                } else {
                    help.ShowMessageHelp(message);
                }
            });
        },
        this);
    RecallPlace();
}

Tallymar::~Tallymar() {
    closing_ = true;
    session_.SetObserver(nullptr);
}

// Every command that has a window, and nothing else: a command that is not named here stays disabled, whatever the tables say.
void Tallymar::MakeRoutes() {
    routes_ = {
        {Command::FileNew, [this](int) { FileNew(this); }},
        {Command::FileOpen, [this](int) { FileOpen(this); }},
        {Command::FileClose, [this](int) { session_.FileClose(); }},
        {Command::FileImport, [this](int) { ImportAssets(this); }},
        {Command::FileExport, [this](int) { WithoutEditForm([this] { frmExportOptions(session_, this).ShowModal(); }); }},
        {Command::FileExit, [this](int) { close(); }},
        {Command::EditAsset, [this](int) { EditAsset(); }},
        {Command::EditFind, [this](int) { FindAsset(); }},
        {Command::FindAssets, [this](int) { FindAsset(); }},
        {Command::CopyAsset,
         [this](int) {
             editState_.CopySourceAssetNum = CopySource(session_, editState_.CurrentAssetNum);
             CopyAsset(this);
         }},
        {Command::EditCompanyInformation,
         [this](int) {
             ShowOrMake(QStringLiteral("frmEditCompany"), [this] {
                 auto* form = new frmEditCompany(session_, [this](QWidget* over) { ImportAssets(over); });
                 connect(form, &frmEditCompany::Saved, this, &Tallymar::ShowCaption);
                 return form;
             });
         }},
        {Command::EditUserInformation,
         [this](int) {
             ShowOrMake(QStringLiteral("frmEditUser"), [this] { return new frmEditUser(profile_, session_.Paths().Profile()); });
         }},
        {Command::ActivitiesComputeCurrent,
         [this](int) {
             ShowBatch(QStringLiteral("frmComputeOptions"), Reopen::IfItWasOpen,
                       [this] { return new frmComputeOptions(session_, engine_); });
         }},
        {Command::Resequence,
         [this](int) {
             ShowBatch(QStringLiteral("frmResequence"), Reopen::Always, [this] { return new frmResequence(session_); });
         }},
        {Command::ActivitiesCloseYear, [this](int) { RunPostReport([](frmReportOptions& form) { form.ReadyToCloseYear(); }); }},
        {Command::ReportsRun,
         [this](int report) {
             if (report == kPostReport) {
                 RunPostReport([](frmReportOptions& form) { form.SetWhichReport(kPostReport); });
                 return;
             }
             frmReportOptions form(session_, engine_, this);
             form.SetWhichReport(report);
             form.ShowModal();
         }},
        {Command::ReportsLabels, [this](int) { frmLabelOptions(session_, this).ShowModal(); }},
        {Command::Amortization, [this](int) { frmLoans(profile_.LastFolder(), this).ShowModal(); }},
        {Command::ChangeDept,
         [this](int) {
             ShowBatch(QStringLiteral("frmChangeDept"), Reopen::Always, [this] { return new frmChangeDept(session_); });
         }},
        {Command::ChangeRange,
         [this](int) {
             ShowBatch(QStringLiteral("frmChangeRange"), Reopen::Always, [this] { return new frmChangeRange(session_); });
         }},
        {Command::SetBooks,
         [this](int) { ShowBatch(QStringLiteral("frmSetBooks"), Reopen::Always, [this] { return new frmSetBooks(session_); }); }},
        {Command::Backup, [this](int) { ShowDone(BackupCompany(session_, prompts_)); }},
        {Command::Restore, [this](int) { ShowDone(RestoreCompany(session_, prompts_)); }},
        {Command::DeleteDB, [this](int) { ShowDone(DeleteCompany(session_, prompts_)); }},
        {Command::CreateSchD, [this](int) { CreateForm("D"); }},
        {Command::Create4255, [this](int) { CreateForm("4255"); }},
        {Command::Create4562, [this](int) { CreateForm("4562"); }},
        {Command::Create4797, [this](int) { CreateForm("4797"); }},
        {Command::Create8824, [this](int) { CreateForm("8824"); }},
        {Command::FilePrinterSetup, [this](int) { frmPrinterSetup(session_.Paths(), this).ShowModal(); }},
        {Command::SoftFonts,
         [this](int) {
             const PrintOutcome outcome = DownloadSoftFontsWithDialog(session_.Paths(), prompts_, this);
             ShowDone(outcome.Problem.empty() ? outcome.Said : outcome.Problem);
         }},
        {Command::Update, [this](int) { ShowUpdate(); }},
        {Command::HelpContents, [this](int) { ShowHelp([](frmHelp& help) { help.ShowContents(); }); }},
        {Command::HelpIndex, [this](int) { ShowHelp([](frmHelp& help) { help.ShowIndex(); }); }},
        {Command::AllBooks, [this](int) { AllBooks(); }},
        {Command::HelpAbout, [this](int) { frmAbout(this).ShowModal(); }},
    };
}

// What a command without a window of its own has done stays on the status line until something else is said there.
void Tallymar::ShowDone(const std::string& done) {
    if (!done.empty()) statusBar()->showMessage(FailureToQString(done));
}

void Tallymar::ShowBatch(const QString& name, Reopen reopen, const std::function<frmBatchForm*()>& make) {
    if (CSForm* shown = Child(name)) {
        Activate(shown);
        return;
    }
    const auto reopens = std::make_shared<bool>(reopen == Reopen::Always || !EditFormClosed());
    if (!UnloadEditForm()) return;
    frmBatchForm* form = make();
    // It may have been opened again meanwhile: what was entered there is saved before the run, not over its results.
    form->MakeRoom = [this, reopens] {
        *reopens |= !EditFormClosed();
        return UnloadEditForm();
    };
    ShowChild(form);
    // After its place is kept, which the asset form takes from it.
    connect(form, &CSForm::Unloaded, this, Guarded([this, reopens] {
                if (*reopens) ReopenEditForm();
            }));
}

void Tallymar::WithoutEditForm(const std::function<void()>& command) {
    const bool wasOpen = !EditFormClosed();
    if (!UnloadEditForm()) return;
    command();
    if (wasOpen) ReopenEditForm();
}

// What posts must not find the asset form open: its buffer could write a posted record back.
void Tallymar::RunPostReport(const std::function<void(frmReportOptions&)>& prepare) {
    std::string posted;
    WithoutEditForm([&] {
        frmReportOptions form(session_, engine_, this);
        prepare(form);
        form.ShowModal();
        posted = form.Posted();
    });
    ShowDone(posted);
}

void Tallymar::ImportAssets(QWidget* over) {
    WithoutEditForm([&] {
        frmImportOptions(session_, over).ShowModal();
        OpenEnable();
    });
    if (auto* form = qobject_cast<CSForm*>(over); form && Child(form->objectName()) == form) Activate(form);
}

void Tallymar::Run(Command command, int index) {
    const auto route = routes_.find(command);
    if (route == routes_.end()) return;
    Guarded([&] { route->second(index); })();
    ShowCaption();  // a year may have been closed, or a name imported
}

void Tallymar::MakeMenus() {
    auto* style = new MenuStyle;
    style->setParent(this);
    QMenu* menu = nullptr;
    for (const MenuItem& item : MenuItems()) {
        if (item.Command == Command::None) {
            menu = menuBar()->addMenu(ToQString(item.Caption));
            menu->setStyle(style);
            menu->setToolTipsVisible(true);  // why a command is off
            menu->setObjectName(ControlName(item));
            if (item.Name == "mnuWindow") windowMenu_ = menu;
            menu->menuAction()->setStatusTip(ToQString(HintForCaption(item.Caption)));
            continue;
        }
        if (item.Separated) menu->addSeparator();
        QAction* action = menu->addAction(ToQString(item.Caption));
        action->setObjectName(ControlName(item));
        action->setStatusTip(ToQString(HintForCaption(item.Caption)));
        if (!item.Key.empty()) action->setShortcut(QKeySequence(ToQString(item.Key)));
        connect(action, &QAction::triggered, this, [this, command = item.Command, index = item.Index] { Run(command, index); });
        switched_.push_back({action, item.Command, item.When, {}});
        if (item.Command == Command::FilePrinterSetup) {
            recentMenu_ = menu->addMenu(tr("&Recent Companies"));
            recentMenu_->setObjectName(QStringLiteral("mnuFileRecent"));
            recentMenu_->menuAction()->setStatusTip(tr("Open one of the companies that were open last"));
        }
    }
    connect(recentMenu_, &QMenu::aboutToShow, this, [this] { FillRecentMenu(); });
    connect(windowMenu_, &QMenu::aboutToShow, this, [this] { FillWindowMenu(); });
}

// What reaches the menu from any form. A menu opened by keyboard stands at its first item.
void Tallymar::MakeKeys() {
    const auto opens = [this](const QKeySequence& key, QAction* item) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, [this, item] {
            menuBar()->setActiveAction(item);
            if (QMenu* menu = item->menu()) menu->setActiveAction(menu->actions().value(0));
        });
    };
    for (QAction* item : menuBar()->actions()) {
        const QKeySequence access = QKeySequence::mnemonic(item->text());
        if (!access.isEmpty()) opens(QKeyCombination(Qt::AltModifier | Qt::ShiftModifier, access[0].key()), item);
    }
    opens(Qt::Key_F10, menuBar()->actions().front());
}

void Tallymar::MakeStatusBar() {
    lblUnsaved_ = StatusPart("lblUnsaved", tr("Entries of the asset are not saved yet"), statusBar());
    lblUnsaved_->setToolTip(lblUnsaved_->accessibleDescription());
    lblPlace_ = StatusPart("lblPlace", tr("Place of the asset among all"), statusBar());
    lblCompany_ = StatusPart("lblCompany", tr("Company"), statusBar());
    lblYearEnds_ = StatusPart("lblYearEnds", tr("Fiscal year ends"), statusBar());
}

void Tallymar::SetLooks(Looks& looks) {
    const QStringList kept = memory_->Texts(kColorsKey);
    QMenu* menu = windowMenu_->addMenu(tr("&Colors"));
    menu->setObjectName(QStringLiteral("mnuColors"));
    menu->menuAction()->setStatusTip(tr("Choose how the windows are colored"));
    auto* choices = new QActionGroup(menu);
    for (const ColorsInfo& info : kColorsTable) {
        const QString name = QString::fromLatin1(info.Kept);
        QAction* action = choices->addAction(menu->addAction(tr(info.Caption)));
        action->setCheckable(true);
        if (kept == QStringList(name)) looks.Choose(info.Choice);
        action->setChecked(info.Choice == looks.Chosen());
        connect(action, &QAction::triggered, this, [this, &looks, choice = info.Choice, name] {
            looks.Choose(choice);
            memory_->Keep(kColorsKey, QStringList(name));
        });
    }
}

void Tallymar::MakeToolbar() {
    QToolBar* bar = addToolBar(tr("Toolbar"));
    bar->setObjectName(QStringLiteral("Toolbar1"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const ToolbarButton& button : ToolbarButtons()) {
        QAction* action = bar->addAction(ToQString(button.Key));
        action->setObjectName(ToQString(button.Key));
        action->setToolTip(ToQString(button.Tip));
        action->setData(ToQString(button.Icon));
        connect(action, &QAction::triggered, this, [this, command = button.Command] { Run(command); });
        switched_.push_back({action, button.Command, button.When, ToQString(button.Tip)});
    }
    SetIcons();
}

void Tallymar::SetIcons() {
    for (const auto* bar : findChildren<QToolBar*>()) {
        for (QAction* action : bar->actions()) action->setIcon(TintedIcon(action->data().toString(), palette()));
    }
}

void Tallymar::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && area_) {
        area_->setBackground(palette().brush(QPalette::Mid));
        SetIcons();
    }
}

void Tallymar::ApplyEnabled(const SessionState& state) {
    for (const Switched& one : switched_) Switch(one, HasWindow(one.Asks) ? WhyOff(one.When, state) : kNoWindow);
}

void Tallymar::Switch(const Switched& one, std::string_view whyOff) {
    one.Action->setEnabled(whyOff.empty());
    QStringList tip;
    if (!one.Tip.isEmpty()) tip.append(one.Tip);
    if (!whyOff.empty()) tip.append(ToQString(whyOff));
    one.Action->setToolTip(tip.join(QLatin1Char('\n')));
}

void Tallymar::FillWindowMenu() {
    qDeleteAll(windowList_);
    windowList_.clear();
    windowList_.append(windowMenu_->addSeparator());
    int number = 0;
    for (QMdiSubWindow* window : area_->subWindowList()) {
        // An ampersand in a company's name is no access key.
        QAction* action = windowMenu_->addAction(
            QStringLiteral("&%1 %2").arg(++number).arg(window->windowTitle().replace(u'&', QStringLiteral("&&"))));
        windowList_.append(action);
        action->setCheckable(true);
        action->setChecked(window == area_->activeSubWindow());
        connect(action, &QAction::triggered, this, [this, window] { area_->setActiveSubWindow(window); });
    }
    if (number > 0) return;
    windowList_.append(windowMenu_->addAction(tr("No windows are open")));
    windowList_.back()->setEnabled(false);
}

std::vector<std::string> Tallymar::RecentCompanies() const {
    std::vector<std::string> recent;
    for (const QString& file : memory_->Texts(kRecentKey).mid(0, kMostRecentCompanies)) recent.push_back(file.toStdString());
    return recent;
}

void Tallymar::RememberCompany() {
    QStringList files;
    for (const std::string& file : WithRecent(RecentCompanies(), session_.DatabaseFileName().string()))
        files.append(QString::fromStdString(file));
    memory_->Keep(kRecentKey, files);
}

void Tallymar::ForgetCompany(const std::string& file) {
    QStringList files = memory_->Texts(kRecentKey);
    files.removeAll(QString::fromStdString(file));
    memory_->Keep(kRecentKey, files);
}

void Tallymar::FillRecentMenu() {
    recentMenu_->clear();
    int number = 0;
    for (const std::string& file : RecentCompanies()) {
        const std::filesystem::path path(file);
        const auto shown = [](const std::filesystem::path& part) {
            return PathToQString(part).replace(u'&', QStringLiteral("&&"));
        };
        QAction* action = recentMenu_->addAction(
            QStringLiteral("&%1 %2\t%3").arg(QString::number(++number), shown(path.filename()), shown(path.parent_path())));
        action->setStatusTip(PathToQString(path));
        connect(action, &QAction::triggered, this, Guarded([this, path] { OpenChosen(path); }));
    }
    if (number == 0) recentMenu_->addAction(tr("No company has been opened yet"))->setEnabled(false);
}

bool Tallymar::AskFirstCompany() {
    frmInit form([this](QWidget* over) { return FileNew(over); }, [this](QWidget* over) { return FileOpen(over); });
    form.ShowModal();
    return !form.Cancelled();
}

bool Tallymar::OpenFirstCompany(const std::filesystem::path& path) {
    Guarded([&] { OpenChosen(path); })();
    return session_.IsOpen();
}

void Tallymar::OpenChosen(const std::filesystem::path& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) ForgetCompany(path.string());
    if (!session_.OpenCompany(path, prompts_)) return;
    session_.RememberLastCompany();
    Run(Command::EditAsset);
}

void Tallymar::dragEnterEvent(QDragEnterEvent* event) {
    if (!DraggedFile(*event).empty()) event->acceptProposedAction();
}

void Tallymar::dropEvent(QDropEvent* event) {
    const std::filesystem::path file = DraggedFile(*event);
    if (file.empty()) return;
    event->acceptProposedAction();
    // After the drop: what is dragged from would wait for the answer to a question.
    QTimer::singleShot(0, this, Guarded([this, file] { OpenChosen(file); }));
}

bool Tallymar::FileNew(QWidget* over) {
    QtPrompts prompts(over);
    if (!session_.FileNew(prompts)) return false;
    frmEditCompany(
        session_, [this](QWidget* window) { ImportAssets(window); }, over)
        .ShowModal();
    ShowCaption();
    return true;
}

bool Tallymar::FileOpen(QWidget* over) {
    QtPrompts prompts(over);
    if (!session_.FileOpen(prompts)) return false;
    Run(Command::EditAsset);
    return true;
}

void Tallymar::EditAsset() {
    ShowOrMake(kEditFormName, [this] {
        auto* form = new frmEditAsset(session_, editState_, engine_);
        connect(form, &frmEditAsset::FindWanted, this, [this] { Run(Command::EditFind); });
        connect(form, &frmEditAsset::CopyWanted, this, Guarded([this, form] { CopyAsset(form); }));
        connect(form, &frmEditAsset::PlaceShown, this, &Tallymar::ShowPlace);
        connect(form, &frmEditAsset::UnsavedShown, this, &Tallymar::ShowUnsaved);
        connect(form, &CSForm::Unloaded, this, [this] {
            ShowPlace({});
            ShowUnsaved(false);
            if (CSForm* books = Child(kAllBooksName)) CloseFrame(qobject_cast<QMdiSubWindow*>(books->parentWidget()));
        });
        return form;
    });
}

void Tallymar::AllBooks() {
    if (EditFormClosed()) EditAsset();
    auto* edit = qobject_cast<frmEditAsset*>(Child(kEditFormName));
    if (!edit) return;
    ShowOrMake(kAllBooksName, [edit] {
        auto* form = new frmAllBooks;
        connect(edit, &frmEditAsset::ValuesShown, form, [edit, form] { form->ShowAsset(edit->Values()); });
        form->ShowAsset(edit->Values());
        return form;
    });
}

void Tallymar::FindAsset() {
    const class_Hourglass wait;
    // A list that was filled earlier shows what has been changed since as it was.
    if (CSForm* earlier = Child(kFindFormName)) CloseFrame(qobject_cast<QMdiSubWindow*>(earlier->parentWidget()));
    auto* form = new frmFindAsset(session_, editState_);
    connect(form, &frmFindAsset::EditWanted, this, Guarded([this] {
                Run(Command::EditAsset);
                if (auto* edit = qobject_cast<frmEditAsset*>(Child(kEditFormName))) edit->LoadEdit();
            }));
    ShowChild(form);
}

void Tallymar::CopyAsset(QWidget* over) {
    // Over everything else: what is copied is the asset where the recordset stands, and it must not move meanwhile.
    frmCopyAsset(session_, editState_, nullptr, over).ShowModal();
}

void Tallymar::CreateForm(std::string_view form) {
    ShowOrMake(ToQString(MakeForm(form)->Info().Window), [this, form] {
        return new frmCreateForm(form, session_, [this](std::string_view pageCode) { ViewForm(pageCode); });
    });
}

// The viewer keeps nothing from one opening to the next; but what its user has not saved yet is not taken away.
void Tallymar::ViewForm(std::string_view pageCode) {
    if (auto* shown = qobject_cast<frmHPViewer*>(Child(kViewerName))) {
        if (shown->IsDirty()) {
            Activate(shown);
            shown->SayUnsaved();
            return;
        }
        auto viewer = std::make_unique<frmHPViewer>(session_.Paths(), pageCode);  // it may fail: then the shown one stays
        CloseFrame(qobject_cast<QMdiSubWindow*>(shown->parentWidget()));
        ShowChild(viewer.release());
        return;
    }
    ShowChild(new frmHPViewer(session_.Paths(), pageCode));
}

void Tallymar::ShowUpdate() {
    ShowOrMake(QStringLiteral("frmBrowser"),
               [this] { return new frmBrowser(UpdateSites::Read(session_.Paths().Find("update.txt"))); });
}

void Tallymar::ShowHelp(const std::function<void(frmHelp&)>& show) {
    QWidget* host = QApplication::activeModalWidget();
    if (!host) host = this;
    auto* help = host->findChild<frmHelp*>(QString(), Qt::FindDirectChildrenOnly);
    if (!help) {
        const std::filesystem::path collection = frmHelp::HelpCollection(session_.Paths());
        if (collection.empty()) {
            QtPrompts(host).Message("The help is not installed: there is no file help/Tallymar.qhc.", kProduct,
                                    MessageKind::Warning);
            return;
        }
        help = new frmHelp(collection, host);
    }
    help->show();
    help->raise();
    help->activateWindow();
    show(*help);
}

CSForm* Tallymar::Child(const QString& name) const {
    for (const QMdiSubWindow* window : area_->subWindowList()) {
        auto* form = qobject_cast<CSForm*>(window->widget());
        if (form && form->objectName() == name) return form;
    }
    return nullptr;
}

void Tallymar::ShowChild(CSForm* form) {
    const QMdiSubWindow* shown = area_->activeSubWindow();
    const auto kept = memory_->PlaceOf(form->objectName());
    const QList<QMdiSubWindow*> others = area_->subWindowList();
    const bool alone = std::all_of(others.begin(), others.end(), [](const QMdiSubWindow* other) {
        const auto* frame = dynamic_cast<const ChildFrame*>(other);
        return frame && frame->IsLeaving;
    });
    KeepTogether(*form);
    auto* window = new ChildFrame;
    window->setWidget(form);
    area_->addSubWindow(window);
    window->setAttribute(Qt::WA_DeleteOnClose);
    // A frame around a window that stands alone is a second title bar for nothing; one who has taken it off wants it so.
    const bool fills = alone ? !kept || kept->Maximised : shown && shown->isMaximized();
    form->show();
    // The area places windows side by side even where they then hang over its edge. Before the main window shows it has no size.
    const auto place = [this, window, kept] {
        const QRect room = area_->viewport()->rect();
        window->setGeometry(Within(room, kept && !kept->Frame.isEmpty() ? kept->Frame : window->geometry()));
    };
    if (!fills && isVisible()) place();
    if (!fills && !isVisible()) QTimer::singleShot(0, window, place);
    if (fills) window->showMaximized();
    connect(form, &CSForm::Unloaded, this, [this, form, window] {
        window->IsLeaving = true;
        memory_->KeepPlace(form->objectName(), {.Frame = window->geometry(), .Maximised = window->isMaximized()});
    });
    Activate(form);
}

void Tallymar::Activate(CSForm* form) {
    area_->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(form->parentWidget()));
    form->FocusFirst();
    // A menu that was opened by keyboard gives the focus back to where it was before, and does so after its command.
    QTimer::singleShot(0, form, &CSForm::FocusFirst);
}

void Tallymar::ShowOrMake(const QString& name, const std::function<CSForm*()>& make) {
    if (CSForm* form = Child(name)) {
        Activate(form);
    } else {
        ShowChild(make());
    }
}

bool Tallymar::EditFormClosed() const {
    return Child(kEditFormName) == nullptr;
}

bool Tallymar::UnloadEditForm() {
    CSForm* form = Child(kEditFormName);
    return !form || CloseFrame(qobject_cast<QMdiSubWindow*>(form->parentWidget()));
}

void Tallymar::ReopenEditForm() {
    if (!closing_ && session_.IsOpen() && EditFormClosed()) Run(Command::EditAsset);
}

// The find commands go with the last asset too, though a company that opens without any has the one of the Edit menu.
void Tallymar::LastAssetGone() {
    OpenEnable();
    for (const Switched& one : switched_) {
        if (one.Asks == Command::EditFind) Switch(one, WhyOff(EnabledWhen::HasAssets, {true, 0}));
    }
}

void Tallymar::OpenEnable() {
    RememberCompany();
    ShowCaption();
    ApplyEnabled({true, session_.AssetCount()});
}

bool Tallymar::CloseFrame(QMdiSubWindow* window) {
    if (!window->close()) {
        area_->setActiveSubWindow(window);
        return false;
    }
    // A frame that closes stays in the list until the next event; nothing may take it for open meanwhile.
    if (area_->subWindowList().contains(window)) area_->removeSubWindow(window);
    window->deleteLater();
    return true;
}

bool Tallymar::CompanyClosing() {
    closing_ = true;
    // The asset form first: it alone may have to stay, and then the others do too.
    bool closed = UnloadEditForm();
    for (QMdiSubWindow* window : area_->subWindowList()) closed = closed && CloseFrame(window);
    closing_ = false;
    return closed;
}

void Tallymar::CompanyClosed() {
    editState_ = {};  // another company's assets have other numbers
    ApplyEnabled({});
    ShowCaption();
}

void Tallymar::ShowCaption() {
    const QString company = session_.IsOpen() ? ToQString(session_.CompanyName()) : QString();
    QString caption = ToQString(kProduct);
    if (session_.IsOpen()) caption += QStringLiteral(" - ") + company;
    // The caption of a child that fills the frame stands behind ours, put there by the child.
    if (caption != caption_) setWindowTitle(caption_ = caption);
    const int room = fontMetrics().averageCharWidth() * kLongestCompany;
    ShowPart(lblCompany_, fontMetrics().elidedText(company, Qt::ElideRight, room));
    lblCompany_->setToolTip(session_.IsOpen() ? PathToQString(session_.DatabaseFileName()) : QString());
    PerBook<Date> yearEnds;
    for (int book = kFirstBook; session_.IsOpen() && book <= kLastBook; ++book) yearEnds[book] = session_.FiscalYearEnd(book);
    ShowPart(lblYearEnds_, ToQString(YearEndsText(yearEnds)));
}

void Tallymar::ShowPlace(const QString& place) {
    ShowPart(lblPlace_, place);
}

void Tallymar::ShowUnsaved(bool unsaved) {
    ShowPart(lblUnsaved_, unsaved ? tr("Not saved") : QString());
}

void Tallymar::RecallPlace() {
    resize(kFirstSize.boundedTo(screen()->availableSize() * 0.9));
    if (const auto kept = memory_->PlaceOf(kMainPlace)) PutBack(*this, *kept);
}

void Tallymar::RememberPlace() {
    memory_->KeepPlace(kMainPlace, {.Frame = {pos(), size()}, .Maximised = isMaximized()});
}

void Tallymar::closeEvent(QCloseEvent* event) {
    if (class_Hourglass::Stands()) {
        event->ignore();
        return;
    }
    if (!session_.FileClose()) {
        event->ignore();
        return;
    }
    RememberPlace();
    QMainWindow::closeEvent(event);
}

}  // namespace tallymar
