#include "shell/frmHelp.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/WindowMemory.h"
#include "store/AppPath.h"

namespace tallymar {

namespace {

constexpr QSize kFirstSize(980, 680);
constexpr int kListWidth = 300;
constexpr int kLargestZoom = 12;
constexpr int kSmallestZoom = -4;

const QString kScheme = QStringLiteral("qthelp");
const QString kBookHome[] = {QStringLiteral("qthelp://tallymar.tallymar/doc/index.html"),
                             QStringLiteral("qthelp://tallymar.helptutorial/doc/index.html")};

QWidget* Column(QWidget* above, QWidget* below) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(4, 4, 4, 4);
    column->addWidget(above);
    column->addWidget(below, 1);
    return page;
}

}  // namespace

// Shows pages of the help and nothing else: no other address is followed, so that a page cannot reach out.
class HelpBrowser : public QTextBrowser {
 public:
    HelpBrowser(QHelpEngine& engine, QWidget* parent) : QTextBrowser(parent), engine_(engine) {
        setOpenLinks(true);
        setOpenExternalLinks(false);
    }
    QVariant loadResource(int /*type*/, const QUrl& name) override {
        const QUrl address = source().resolved(name);
        return address.scheme() == kScheme ? engine_.fileData(address) : QByteArray();
    }

 protected:
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override {
        const QUrl address = source().resolved(name);
        if (address.scheme() == kScheme && engine_.findFile(address).isValid()) QTextBrowser::doSetSource(address, type);
    }

 private:
    QHelpEngine& engine_;
};

std::filesystem::path frmHelp::HelpCollection(const AppPath& paths) {
    return paths.Find("help/Tallymar.qhc");
}

frmHelp::frmHelp(const std::filesystem::path& collection, QWidget* parent)
    : CSForm("frmHelp", tr("Tallymar Help"), parent), engine_(std::make_unique<QHelpEngine>(PathToQString(collection))) {
    setWindowFlags(Qt::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    engine_->setReadOnly(true);  // delivered files: others read them too
    engine_->setupData();

    page_ = Named(new HelpBrowser(*engine_, this), "HelpPage");
    page_->setAccessibleName(tr("Page"));
    tabs_ = Named(new QTabWidget(this), "SSTab1");
    tabs_->addTab(MakeContents(), tr("&Contents"));
    tabs_->addTab(MakeIndex(), tr("&Index"));
    tabs_->addTab(MakeSearch(), tr("&Search"));

    const auto button = [this](const QString& text, const char* name, const QString& hint) {
        auto* made = Named(new CSCmdBtn(text, this), name);
        SetHint(made, hint);
        return made;
    };
    auto* cmdBack = button(tr("&Back"), "cmdBack", tr("Go back to the page before (Alt+Left)"));
    auto* cmdForward = button(tr("&Forward"), "cmdForward", tr("Go forward again (Alt+Right)"));
    auto* cmdTutorial = button(tr("&Tutorial"), "cmdTutorial", tr("Follow the sample company through its year"));
    auto* cmdClose = button(tr("C&lose"), "cmdClose", tr("Close the help"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdBack);
    buttons->addWidget(cmdForward);
    buttons->addWidget(cmdTutorial);
    buttons->addStretch(1);
    buttons->addWidget(cmdClose);

    auto* split = new QSplitter(this);
    split->addWidget(tabs_);
    split->addWidget(page_);
    split->setStretchFactor(1, 1);
    split->setSizes({kListWidth, kFirstSize.width() - kListWidth});

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(8, 8, 8, 4);
    all->addLayout(buttons);
    all->addWidget(split, 1);
    all->addWidget(MakeHintLine());
    resize(kFirstSize.boundedTo(screen()->availableSize() * 0.9));

    const auto showWays = [this, cmdBack, cmdForward] {
        cmdBack->setEnabled(page_->isBackwardAvailable());
        cmdForward->setEnabled(page_->isForwardAvailable());
    };
    showWays();
    connect(page_, &QTextBrowser::historyChanged, this, showWays);
    // The contents follow the page; they are read beside, and may come after it.
    const auto follow = [this](const QUrl& address) {
        QHelpContentWidget* contents = engine_->contentWidget();
        contents->setCurrentIndex(contents->indexOf(address.adjusted(QUrl::RemoveFragment)));
    };
    connect(page_, &QTextBrowser::sourceChanged, this, follow);
    connect(engine_->contentModel(), &QHelpContentModel::contentsCreated, this, [this, follow] {
        engine_->contentWidget()->expandToDepth(0);
        follow(Shown());
    });
    connect(cmdBack, &QPushButton::clicked, page_, &QTextBrowser::backward);
    connect(cmdForward, &QPushButton::clicked, page_, &QTextBrowser::forward);
    connect(cmdTutorial, &QPushButton::clicked, this, [this] { ShowContents(HelpBook::HelpTutorial); });
    connect(cmdClose, &QPushButton::clicked, this, &CSForm::Unload);
    SetCancelButton(cmdClose);
}

frmHelp::~frmHelp() {
    // The lists ask the engine until they are gone.
    delete tabs_;
    delete page_;
}

QWidget* frmHelp::MakeContents() {
    QHelpContentWidget* contents = Named(engine_->contentWidget(), "HelpContents");
    contents->setAccessibleName(tr("Contents"));
    connect(contents, &QHelpContentWidget::linkActivated, this, &frmHelp::Open);
    connect(contents, &QTreeView::clicked, this, [this, contents](const QModelIndex& row) {
        if (const QHelpContentItem* item = engine_->contentModel()->contentItemAt(row)) Open(item->url());
        contents->setExpanded(row, true);
    });
    return contents;
}

QWidget* frmHelp::MakeIndex() {
    index_ = Named(new QLineEdit, "sitxIndex");
    index_->setPlaceholderText(tr("Word of the index"));
    index_->setToolTip(tr("Type the beginning of a word; Enter opens its page"));
    index_->setAccessibleName(tr("Word of the index"));
    QHelpIndexWidget* list = Named(engine_->indexWidget(), "HelpIndex");
    list->setAccessibleName(tr("Index"));
    connect(index_, &QLineEdit::textChanged, list, [list](const QString& text) { list->filterIndices(text); });
    connect(index_, &QLineEdit::returnPressed, list, &QHelpIndexWidget::activateCurrentItem);
    connect(list, &QHelpIndexWidget::documentActivated, this, [this](const QHelpLink& link) { Open(link.url); });
    connect(list, &QHelpIndexWidget::documentsActivated, this,
            [this](const QList<QHelpLink>& links) { Open(links.front().url); });
    return Column(index_, list);
}

QWidget* frmHelp::MakeSearch() {
    words_ = Named(new QLineEdit, "sitxSearch");
    words_->setPlaceholderText(tr("Words to find"));
    words_->setToolTip(tr("Pages that hold every word; \"words between quotation marks\" as they stand (Ctrl+F)"));
    words_->setAccessibleName(tr("Words to find"));
    hits_ = Named(new QListWidget, "lstFound");
    hits_->setAccessibleName(tr("Pages found"));
    hits_->setWordWrap(true);
    hits_->setAlternatingRowColors(true);
    connect(words_, &QLineEdit::returnPressed, this, Guarded([this] { Search(); }));
    const auto open = [this](const QListWidgetItem* item) {
        if (const QUrl address = item->data(Qt::UserRole).toUrl(); address.isValid()) Open(address);
    };
    connect(hits_, &QListWidget::itemClicked, this, open);
    connect(hits_, &QListWidget::itemActivated, this, open);
    return Column(words_, hits_);
}

void frmHelp::ReadTexts() {
    if (!texts_.empty()) return;
    const class_Hourglass wait;
    for (const QString& book : engine_->registeredDocumentations()) {
        for (const QUrl& address : engine_->files(book, QString(), QStringLiteral("html"))) {
            const QString html = QString::fromUtf8(engine_->fileData(address));
            const QString title = html.section(QStringLiteral("<title>"), 1).section(QStringLiteral("</title>"), 0, 0);
            texts_.push_back({address, QTextDocumentFragment::fromHtml(title).toPlainText(),
                              QTextDocumentFragment::fromHtml(html).toPlainText()});
        }
    }
}

void frmHelp::ShowMessageHelp(const QString& text) {
    ReadTexts();
    const auto place = FindMessage(texts_, text);
    if (!place) {
        ShowKey({QStringLiteral("QMessageBox")});
        return;
    }
    Open(place->Address);
    page_->find(place->Words);
    page_->setFocus();
}

void frmHelp::Search() {
    ReadTexts();
    hits_->clear();
    for (const HelpHit& hit : SearchHelp(texts_, words_->text())) {
        auto* item = new QListWidgetItem(hit.Title + u'\n' + hit.Excerpt, hits_);
        item->setData(Qt::UserRole, hit.Address);
    }
    if (hits_->count() == 0) {
        new QListWidgetItem(tr("Nothing was found"), hits_);
        return;
    }
    hits_->setCurrentRow(0);
    hits_->setFocus();
    Open(hits_->item(0)->data(Qt::UserRole).toUrl());
}

void frmHelp::Open(const QUrl& address) {
    page_->setSource(address);
}

QUrl frmHelp::Shown() const {
    return page_->source();
}

void frmHelp::ShowContents(HelpBook book) {
    tabs_->setCurrentIndex(0);
    Open(kBookHome[static_cast<int>(book)]);
    engine_->contentWidget()->setFocus();
}

void frmHelp::ShowIndex() {
    tabs_->setCurrentIndex(1);
    if (Shown().isEmpty()) Open(kBookHome[0]);
    index_->setFocus();
}

void frmHelp::ShowKey(const QStringList& keys) {
    for (const QString& key : keys) {
        const QList<QHelpLink> links = engine_->documentsForIdentifier(key);
        if (links.isEmpty()) continue;
        Open(links.front().url);
        page_->setFocus();
        return;
    }
    ShowContents();
}

void frmHelp::Zoom(int steps) {
    const int wanted = qBound(kSmallestZoom, zoom_ + steps, kLargestZoom);
    page_->zoomIn(wanted - zoom_);
    zoom_ = wanted;
}

void frmHelp::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Left) {
        page_->backward();
    } else if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Right) {
        page_->forward();
    } else if (event->matches(QKeySequence::Find)) {
        tabs_->setCurrentIndex(2);
        words_->setFocus();
        words_->selectAll();
    } else if (event->matches(QKeySequence::ZoomIn) || event->matches(QKeySequence::ZoomOut)) {
        Zoom(event->matches(QKeySequence::ZoomIn) ? 1 : -1);
    } else {
        CSForm::keyPressEvent(event);
    }
}

void frmHelp::Recall(const WindowMemory& memory) {
    if (const auto kept = memory.PlaceOf(objectName())) PutBack(*this, *kept);
}

void frmHelp::Remember(WindowMemory& memory) const {
    memory.KeepPlace(objectName(), {.Frame = {pos(), size()}, .Maximised = isMaximized()});
}

QStringList HelpKeysOf(const QWidget* focus) {
    if (const auto* menu = qobject_cast<const QMenu*>(focus)) {
        const QAction* item = menu->activeAction();
        return {(item ? item->objectName() : menu->objectName()).section(u'(', 0, 0), menu->objectName()};
    }
    QStringList controls;
    for (const QWidget* each = focus; each; each = each->parentWidget()) {
        const bool isForm = qobject_cast<const CSForm*>(each) || qobject_cast<const QMainWindow*>(each);
        if (!isForm && !each->isWindow()) {
            // Of a control array, "sidbBasis(2)", all have one place. Names of the toolkit's own parts mean nothing here.
            if (const QString name = each->objectName().section(u'(', 0, 0); !name.isEmpty() && !name.startsWith(u"qt_"))
                controls << name;
            continue;
        }
        const QString window = isForm ? each->objectName() : QString::fromLatin1(each->metaObject()->className());
        QStringList keys;
        for (const QString& control : controls) keys << window + u'.' + control;
        return keys << window;
    }
    return {};
}

}  // namespace tallymar
