#include "platform/page/frmPreview.h"

#include <algorithm>
#include <array>

#include <QAbstractListModel>
#include <QApplication>
#include <QCache>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QSplitter>
#include <QVBoxLayout>

#include "platform/controls/CSCombo.h"
#include "platform/controls/EventGuard.h"
#include "platform/controls/Hourglass.h"
#include "platform/controls/QtPrompts.h"
#include "platform/controls/ScreenText.h"
#include "platform/page/frmPreviewPages.h"
#include "platform/page/frmPrint.h"
#include "platform/runtime/FileName.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr int kThumbnailSide = 120;  // pixels of the longer edge
constexpr std::array<int, 8> kZoomPercents = {50, 75, 90, 100, 125, 150, 200, 300};

struct SaveFormat {
    FileFormat Format;
    const char* Caption;
    const char* FilterName;
    const char* Extension;
};

constexpr std::array<SaveFormat, 4> kSaveFormats = {{
    {FileFormat::Pdf, "&PDF File...", "PDF Files (*.pdf)", "pdf"},
    {FileFormat::Text, "&Text File...", "Text Files (*.txt)", "txt"},
    {FileFormat::Csv, "&Comma-Separated Rows...", "Comma-Separated Rows (*.csv)", "csv"},
    {FileFormat::Workbook, "&Excel Workbook...", "Excel Workbooks (*.xlsx)", "xlsx"},
}};

// The document's title offered as its file name. The extension is part of it: with one there the dialog changes it along with the
// type that is chosen.
std::string OfferedName(std::string_view title, const std::string& extension) {
    const std::string name = ToUtf8(AsFileName(title));
    return name.empty() ? name : name + "." + extension;
}

// The pages as small pictures, each drawn when it first comes into sight.
class ThumbnailModel : public QAbstractListModel {
 public:
    ThumbnailModel(std::shared_ptr<const PrintedDocument> document, double pixelRatio, QObject* parent)
        : QAbstractListModel(parent),
          document_(std::move(document)),
          pixelRatio_(pixelRatio),
          scale_(double{kThumbnailSide} / std::max(document_->Pages.Paper().Width, document_->Pages.Paper().Height)),
          painter_(document_->Pages, scale_),
          pictures_(kKept) {}

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : document_->Pages.PageCount(); }

    QVariant data(const QModelIndex& index, int role) const override {
        const int page = index.row() + 1;
        switch (role) {
            case Qt::DisplayRole:
                return QString::number(page);
            case Qt::AccessibleTextRole:
                return frmPreview::tr("Page %1").arg(page);
            case Qt::TextAlignmentRole:
                return int{Qt::AlignCenter};
            case Qt::DecorationRole:
                return Picture(page);
            default:
                return {};
        }
    }

 private:
    static constexpr int kKept = 200;

    QPixmap Picture(int page) const {
        if (const QPixmap* kept = pictures_.object(page)) return *kept;
        const QSizeF size = QSizeF(document_->Pages.Paper().Width, document_->Pages.Paper().Height) * scale_;
        QPixmap picture((size * pixelRatio_).toSize());
        picture.setDevicePixelRatio(pixelRatio_);
        picture.fill(Qt::white);
        {
            QPainter painter(&picture);
            painter.setRenderHint(QPainter::Antialiasing);
            painter_.Paint(painter, page);
            painter.setPen(QColor(160, 160, 160));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(QRectF(QPointF(), picture.deviceIndependentSize()).adjusted(0.5, 0.5, -0.5, -0.5));
        }
        pictures_.insert(page, new QPixmap(picture));
        return picture;
    }

    std::shared_ptr<const PrintedDocument> document_;
    double pixelRatio_;
    double scale_;
    PagePainter painter_;
    mutable QCache<int, QPixmap> pictures_;
};

QPushButton* AddButton(QHBoxLayout* row, const char* name, const QString& text, const QString& tip) {
    auto* button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoDefault(false);
    row->addWidget(button);
    return button;
}

QPushButton* AddSmallButton(QHBoxLayout* row, const char* name, const QString& text, const QString& tip) {
    QPushButton* button = AddButton(row, name, text, tip);
    button->setFixedWidth(button->fontMetrics().height() * 2);
    return button;
}

QLabel* AddLabel(QHBoxLayout* row, const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    row->addWidget(label);
    return label;
}

}  // namespace

frmPreview::frmPreview(std::shared_ptr<const PrintedDocument> document, QWidget* parent, Prompts* prompts)
    : CSForm("frmPreview", tr("Preview"), parent),
      document_(std::move(document)),
      ownPrompts_(prompts ? nullptr : std::make_unique<QtPrompts>(this)),
      prompts_(prompts ? *prompts : *ownPrompts_) {
    const QString title = ToQString(document_->Pages.Title).trimmed();
    if (!title.isEmpty()) setWindowTitle(tr("Preview - %1").arg(title));

    pages_ = new frmPreviewPages(document_);
    pageList_ = MakePageList();
    auto* splitter = new QSplitter;
    splitter->addWidget(pageList_);
    splitter->addWidget(pages_);
    splitter->setStretchFactor(1, 1);
    splitter->setCollapsible(1, false);
    splitter->setSizes({kThumbnailSide + 48, 1000});

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeToolbar());
    layout->addWidget(splitter, 1);
    layout->addWidget(MakeHintLine());

    connect(pages_, &frmPreviewPages::PageChanged, this, &frmPreview::ShowPageNumber);
    connect(pages_, &frmPreviewPages::ZoomChanged, this, &frmPreview::ShowZoom);
    ShowPageNumber(1);
    ShowZoom();
    pages_->setFocus();
    resize(1100, 800);
}

frmPreview::~frmPreview() = default;

QListView* frmPreview::MakePageList() {
    auto* list = new QListView;
    list->setObjectName(QStringLiteral("PageList"));
    list->setAccessibleName(tr("Page list"));
    list->setViewMode(QListView::IconMode);
    list->setFlow(QListView::TopToBottom);
    list->setWrapping(false);
    list->setMovement(QListView::Static);
    list->setUniformItemSizes(true);  // or every page would be drawn to be measured
    list->setIconSize(QSize(kThumbnailSide, kThumbnailSide));
    const PaperSize& paper = document_->Pages.Paper();
    const int longer = std::max(paper.Width, paper.Height);
    list->setGridSize(QSize(kThumbnailSide + 24, kThumbnailSide * paper.Height / longer + list->fontMetrics().height() + 18));
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setModel(new ThumbnailModel(document_, devicePixelRatioF(), list));
    connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        if (current.isValid() && current.row() + 1 != pages_->CurrentPage()) pages_->GoTo(current.row() + 1);
    });
    return list;
}

QWidget* frmPreview::MakeToolbar() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    QPushButton* print = AddButton(row, "cmdPrint", tr("&Print..."), tr("Print (Ctrl+P)"));
    MakeSaveMenu(AddButton(row, "cmdSave", tr("&Save As"), tr("Save to a file (Ctrl+S)")));
    row->addSpacing(12);

    QPushButton* previous = AddSmallButton(row, "cmdPrevious", QStringLiteral("\u25C0"), tr("Previous page (Ctrl+Page Up)"));
    pageNumber_ = new QSpinBox;
    pageNumber_->setObjectName(QStringLiteral("PageNumber"));
    pageNumber_->setAccessibleName(tr("Page number"));
    pageNumber_->setToolTip(tr("Page number (Ctrl+G)"));
    pageNumber_->setRange(1, document_->Pages.PageCount());
    pageNumber_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    pageNumber_->setKeyboardTracking(false);
    pageNumber_->setAlignment(Qt::AlignRight);
    row->addWidget(pageNumber_);
    AddLabel(row, tr("of %1").arg(document_->Pages.PageCount()), pageNumber_);
    QPushButton* next = AddSmallButton(row, "cmdNext", QStringLiteral("\u25B6"), tr("Next page (Ctrl+Page Down)"));
    row->addSpacing(12);

    zoom_ = new CSCombo;
    zoom_->setObjectName(QStringLiteral("Zoom"));
    zoom_->setAccessibleName(tr("Zoom"));
    zoom_->setToolTip(tr("Zoom (Ctrl+plus, Ctrl+minus; Ctrl+0 whole page, Ctrl+1 paper size)"));
    zoom_->addItem(tr("Whole page"));
    zoom_->addItem(tr("Page width"));
    for (const int percent : kZoomPercents) zoom_->addItem(tr("%1%").arg(percent));
    AddLabel(row, tr("&Zoom"), zoom_);
    row->addWidget(zoom_);
    row->addStretch(1);

    search_ = new QLineEdit;
    search_->setObjectName(QStringLiteral("SearchText"));
    search_->setAccessibleName(tr("Search text"));
    search_->setPlaceholderText(tr("Text to find"));
    search_->setToolTip(tr("Search (Ctrl+F)"));
    search_->setClearButtonEnabled(true);
    search_->setMinimumWidth(search_->fontMetrics().averageCharWidth() * 24);
    AddLabel(row, tr("&Find"), search_);
    row->addWidget(search_);
    QPushButton* back = AddSmallButton(row, "cmdFindPrevious", QStringLiteral("\u25B2"), tr("Find previous (Shift+F3)"));
    QPushButton* on = AddSmallButton(row, "cmdFindNext", QStringLiteral("\u25BC"), tr("Find next (F3)"));
    searchResult_ = new QLabel;
    searchResult_->setObjectName(QStringLiteral("SearchResult"));
    searchResult_->setMinimumWidth(searchResult_->fontMetrics().horizontalAdvance(tr("00,000 of 00,000")));
    row->addWidget(searchResult_);
    QPushButton* close = AddButton(row, "cmdClose", tr("&Close"), tr("Close the preview (Esc)"));
    SetCancelButton(close);

    connect(print, &QPushButton::clicked, this, Guarded([this] { Print(); }));
    connect(previous, &QPushButton::clicked, this, [this] { pages_->GoTo(pages_->CurrentPage() - 1); });
    connect(next, &QPushButton::clicked, this, [this] { pages_->GoTo(pages_->CurrentPage() + 1); });
    connect(pageNumber_, &QSpinBox::valueChanged, this, [this](int page) {
        if (page != pages_->CurrentPage()) pages_->GoTo(page);
    });
    connect(zoom_, &QComboBox::activated, this, &frmPreview::ChooseZoom);
    connect(search_, &QLineEdit::returnPressed, this, [this] { Search(false); });
    connect(search_, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (text.isEmpty()) Search(false);  // the marks go with the text
    });
    connect(back, &QPushButton::clicked, this, [this] { Search(true); });
    connect(on, &QPushButton::clicked, this, [this] { Search(false); });
    connect(close, &QPushButton::clicked, this, [this] { Unload(); });
    return bar;
}

void frmPreview::MakeSaveMenu(QPushButton* button) {
    auto* menu = new QMenu(button);
    const bool hasRows = !document_->Details.Columns().empty();
    for (const SaveFormat& format : kSaveFormats) {
        QAction* action = menu->addAction(tr(format.Caption));
        const bool ofRows = format.Format == FileFormat::Csv || format.Format == FileFormat::Workbook;
        action->setEnabled(hasRows || !ofRows);
        connect(action, &QAction::triggered, this, Guarded([this, chosen = format.Format] { SaveAs(chosen); }));
    }
    button->setMenu(menu);
}

void frmPreview::ShowPageNumber(int page) {
    pageNumber_->setValue(page);
    const QModelIndex index = pageList_->model()->index(page - 1, 0);
    pageList_->setCurrentIndex(index);
    pageList_->scrollTo(index);
    const int count = document_->Pages.PageCount();
    for (QPushButton* button : findChildren<QPushButton*>()) {
        if (button->objectName() == QLatin1String("cmdPrevious")) button->setEnabled(page > 1);
        if (button->objectName() == QLatin1String("cmdNext")) button->setEnabled(page < count);
    }
}

void frmPreview::ShowZoom() {
    const QSignalBlocker quiet(zoom_);
    const int percent = static_cast<int>(pages_->Zoom() * 100 + 0.5);
    const int custom = 2 + static_cast<int>(kZoomPercents.size());
    while (zoom_->count() > custom) zoom_->removeItem(custom);
    if (pages_->FitMode() != frmPreviewPages::Fit::None) {
        zoom_->setCurrentIndex(pages_->FitMode() == frmPreviewPages::Fit::Page ? 0 : 1);
        return;
    }
    const QString text = tr("%1%").arg(percent);
    if (zoom_->findText(text) < 0) zoom_->addItem(text);
    zoom_->setCurrentIndex(zoom_->findText(text));
}

void frmPreview::ChooseZoom(int index) {
    if (index == 0) {
        pages_->SetFit(frmPreviewPages::Fit::Page);
    } else if (index == 1) {
        pages_->SetFit(frmPreviewPages::Fit::Width);
    } else if (const auto percent = static_cast<std::size_t>(index - 2); percent < kZoomPercents.size()) {
        pages_->SetZoom(kZoomPercents[percent] / 100.0);
    }
    ShowZoom();
}

void frmPreview::Search(bool backward) {
    if (search_->text() != searched_) {
        searched_ = search_->text();
        // A character that no page can hold is found nowhere; as "?" it would be.
        pages_->SetHits(FitsWindows1252(searched_) ? SearchPages(document_->Pages, ToWindows1252(searched_))
                                                   : std::vector<PageHit>());
    }
    pages_->ShowNextHit(backward);
    const std::optional<std::size_t> current = pages_->CurrentHit();
    if (searched_.isEmpty()) {
        searchResult_->clear();
    } else if (!current) {
        searchResult_->setText(tr("Not found"));
    } else {
        searchResult_->setText(tr("%L1 of %L2").arg(*current + 1).arg(pages_->Hits().size()));
    }
}

std::function<void()> frmPreview::CommandOf(const QKeyEvent& event) {
    if (event.key() == Qt::Key_F3) {
        return [this, backward = bool(event.modifiers() & Qt::ShiftModifier)] { Search(backward); };
    }
    if (!(event.modifiers() & Qt::ControlModifier)) return {};
    switch (event.key()) {
        case Qt::Key_P:
            return [this] { Print(); };
        case Qt::Key_S:
            return [this] { SaveAs(FileFormat::Pdf); };
        case Qt::Key_F:
            return [this] {
                search_->setFocus(Qt::ShortcutFocusReason);
                search_->selectAll();
            };
        case Qt::Key_G:
            return [this] {
                pageNumber_->setFocus(Qt::ShortcutFocusReason);
                pageNumber_->selectAll();
            };
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return [this] { pages_->ZoomStep(true); };
        case Qt::Key_Minus:
            return [this] { pages_->ZoomStep(false); };
        case Qt::Key_0:
            return [this] { ChooseZoom(0); };
        case Qt::Key_1:
            return [this] { pages_->SetZoom(1); };
        case Qt::Key_PageDown:
            return [this] { pages_->GoTo(pages_->CurrentPage() + 1); };
        case Qt::Key_PageUp:
            return [this] { pages_->GoTo(pages_->CurrentPage() - 1); };
        default:
            return {};
    }
}

// Taken before shortcuts, so that a preview within the main window has its keys to itself.
bool frmPreview::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && CommandOf(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return CSForm::event(event);
}

void frmPreview::keyPressEvent(QKeyEvent* event) {
    if (const std::function<void()> command = CommandOf(*event)) {
        Guarded(command)();
        return;
    }
    switch (event->key()) {
        case Qt::Key_PageDown:
            pages_->StepOn();
            return;
        case Qt::Key_PageUp:
            pages_->StepBack();
            return;
        case Qt::Key_Home:
            pages_->GoTo(1);
            return;
        case Qt::Key_End:
            pages_->GoTo(document_->Pages.PageCount());
            return;
        default:
            CSForm::keyPressEvent(event);
    }
}

bool frmPreview::OnPage(Page page) {
    page == Page::Next ? pages_->StepOn() : pages_->StepBack();
    return true;
}

void frmPreview::Print() {
    if (PrintWithDialog(document_->Pages, this)) ShowResult(tr("Sent to the printer."));
}

void frmPreview::SaveAs(FileFormat format) {
    if (SaveDocument(*document_, format, prompts_)) ShowResult(tr("Saved."));
}

std::optional<std::filesystem::path> AskDocumentFile(std::string_view title, bool hasRows, FileFormat format, Prompts& prompts) {
    FileDialog dialog;
    dialog.Title = "Save As";
    for (const SaveFormat& known : kSaveFormats) {
        if (!hasRows && (known.Format == FileFormat::Csv || known.Format == FileFormat::Workbook)) continue;
        if (known.Format == format) {
            dialog.FilterIndex = dialog.Filters.size();
            dialog.DefaultExtension = known.Extension;
            dialog.FileName = OfferedName(title, known.Extension);
        }
        dialog.Filters.push_back({known.FilterName, std::string("*.") + known.Extension});
    }
    const std::optional<std::filesystem::path> path = prompts.AskSaveFile(dialog);
    if (!path) return std::nullopt;
    // The dialog has asked about the name that was typed only.
    const std::filesystem::path target = DeliveryPath(*path);
    if (target != *path && std::filesystem::exists(target) &&
        !prompts.AskYesNo("\"" + target.string() + "\" already exists. Replace it?", dialog.Title)) {
        return std::nullopt;
    }
    return target;
}

bool SaveDocument(const PrintedDocument& document, FileFormat format, Prompts& prompts) {
    const bool hasRows = !document.Details.Columns().empty();
    const auto target = AskDocumentFile(document.Pages.Title, hasRows, format, prompts);
    if (!target) return false;
    const class_Hourglass hourglass;
    DeliverToFile(document.Pages, document.Details, *target);
    return true;
}

bool DeliverDocument(OutputTarget target, std::shared_ptr<const PrintedDocument> document, Prompts& prompts, QWidget* parent) {
    if (target == OutputTarget::File) return SaveDocument(*document, FileFormat::Pdf, prompts);
    if (target == OutputTarget::Printer) return PrintWithDialog(document->Pages, parent);
    auto* preview = new frmPreview(std::move(document), parent);
    preview->setWindowFlag(Qt::Window);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    const QRect room = preview->screen()->availableGeometry();
    preview->resize(room.size() * 0.9);
    preview->move(room.center() - preview->rect().center());
    preview->show();
    return true;
}

}  // namespace tallymar
