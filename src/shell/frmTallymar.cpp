#include "shell/frmTallymar.h"

#include <algorithm>
#include <memory>

#include <QApplication>
#include <QCloseEvent>
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
#include "platform/controls/EventGuard.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/Icons.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/WindowMemory.h"
#include "reports/frmLabelOptions.h"
#include "reports/frmReportOptions.h"
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

const QString kEditFormName = QStringLiteral("frmEditAsset");
const QString kFindFormName = QStringLiteral("frmFindAsset");
const QString kViewerName = QStringLiteral("frmHPViewer");

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
    setWindowTitle(ToQString(kProduct));
    profile_.Load(session_.Paths().Profile());
    if (const auto printer = SavedPrinterSettings(session_.Paths().Folder())) UsePrinter(*printer);
    session_.SetObserver(this);
    session_.SetChosenFile(OfferConversion);

    area_ = new QMdiArea(this);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setBackground(palette().brush(QPalette::Mid));
    setCentralWidget(area_);
    connect(new QShortcut(Qt::CTRL | Qt::Key_F4, this), &QShortcut::activated, area_, &QMdiArea::closeActiveSubWindow);
    resize(kFirstSize.boundedTo(screen()->availableSize() * 0.9));

    MakeRoutes();
    MakeMenus();
    MakeToolbar();
    statusBar();
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
    connect(form, &CSForm::Unloaded, this, Guarded([this, reopens] {
                if (*reopens) ReopenEditForm();
            }));
    ShowChild(form);
}

void Tallymar::WithoutEditForm(const std::function<void()>& command) {
    const bool wasOpen = !EditFormClosed();
    if (!UnloadEditForm()) return;
    command();
    if (wasOpen) ReopenEditForm();
}

// What posts must not find the asset form open: its buffer could write a posted record back.
void Tallymar::RunPostReport(const std::function<void(frmReportOptions&)>& prepare) {
    WithoutEditForm([&] {
        frmReportOptions form(session_, engine_, this);
        prepare(form);
        form.ShowModal();
    });
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
    if (route != routes_.end()) Guarded([&] { route->second(index); })();
}

void Tallymar::MakeMenus() {
    auto* style = new MenuStyle;
    style->setParent(this);
    QMenu* menu = nullptr;
    for (const MenuItem& item : MenuItems()) {
        if (item.Command == Command::None) {
            menu = menuBar()->addMenu(ToQString(item.Caption));
            menu->setStyle(style);
            menu->setObjectName(ControlName(item));
            if (item.Name == "mnuWindow") windowMenu_ = menu;
            menu->menuAction()->setStatusTip(ToQString(HintForCaption(item.Caption)));
            continue;
        }
        if (item.Separated) menu->addSeparator();
        QAction* action = menu->addAction(ToQString(item.Caption));
        action->setObjectName(ControlName(item));
        action->setStatusTip(ToQString(HintForCaption(item.Caption)));
        connect(action, &QAction::triggered, this, [this, command = item.Command, index = item.Index] { Run(command, index); });
        switched_.push_back({action, item.Command, item.When});
    }
    connect(windowMenu_, &QMenu::aboutToShow, this, [this] { FillWindowMenu(); });
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
        switched_.push_back({action, button.Command, button.When});
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
    for (const Switched& one : switched_) one.Action->setEnabled(HasWindow(one.Asks) && IsEnabled(one.When, state));
}

void Tallymar::FillWindowMenu() {
    windowMenu_->clear();
    int number = 0;
    for (QMdiSubWindow* window : area_->subWindowList()) {
        // An ampersand in a company's name is no access key.
        QAction* action = windowMenu_->addAction(
            QStringLiteral("&%1 %2").arg(++number).arg(window->windowTitle().replace(u'&', QStringLiteral("&&"))));
        action->setCheckable(true);
        action->setChecked(window == area_->activeSubWindow());
        connect(action, &QAction::triggered, this, [this, window] { area_->setActiveSubWindow(window); });
    }
    if (number == 0) windowMenu_->addAction(tr("No windows are open"))->setEnabled(false);
}

bool Tallymar::AskFirstCompany() {
    frmInit form([this](QWidget* over) { return FileNew(over); }, [this](QWidget* over) { return FileOpen(over); });
    form.ShowModal();
    return !form.Cancelled();
}

bool Tallymar::OpenFirstCompany(const std::filesystem::path& path) {
    Guarded([&] {
        if (!session_.OpenCompany(path, prompts_)) return;
        session_.RememberLastCompany();
        Run(Command::EditAsset);
    })();
    return session_.IsOpen();
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
        CloseFrame(qobject_cast<QMdiSubWindow*>(shown->parentWidget()));
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
    QMdiSubWindow* window = area_->addSubWindow(form);
    window->setAttribute(Qt::WA_DeleteOnClose);
    form->show();
    // The area places windows side by side even where they then hang over its edge.
    const QSize room = area_->viewport()->size() - window->size();
    window->move(std::clamp(window->x(), 0, std::max(0, room.width())), std::clamp(window->y(), 0, std::max(0, room.height())));
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
        if (one.Asks == Command::EditFind) one.Action->setEnabled(false);
    }
}

void Tallymar::OpenEnable() {
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
    setWindowTitle(ToQString(kProduct));
}

void Tallymar::ShowCaption() {
    if (session_.IsOpen()) setWindowTitle(ToQString(std::string(kProduct) + " - " + session_.CompanyName()));
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
    QMainWindow::closeEvent(event);
}

}  // namespace tallymar
