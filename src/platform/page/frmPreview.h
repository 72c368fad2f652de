#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/controls/CSForm.h"
#include "platform/page/Delivery.h"
#include "platform/prompts/Prompts.h"

class QComboBox;
class QLineEdit;
class QListView;
class QSpinBox;
class QPushButton;

namespace tallymar {

class frmPreviewPages;

// The preview of a finished document: the page list, the pages, search, and from here print and save.
// Keys: Page Up and Down, Home, End; Ctrl+G to a page; Ctrl+F, F3 and Shift+F3; Ctrl+plus, minus, 0 (page) and 1 (paper size);
// Ctrl+P, Ctrl+S.
class frmPreview : public CSForm {
    Q_OBJECT

 public:
    // Asks for file names by prompts, which must outlive the window; without any, by dialogs of its own.
    explicit frmPreview(std::shared_ptr<const PrintedDocument> document, QWidget* parent = nullptr, Prompts* prompts = nullptr);
    ~frmPreview() override;

 protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool OnPage(Page page) override;

 private:
    QWidget* MakeToolbar();
    QListView* MakePageList();
    void MakeSaveMenu(QPushButton* button);
    void ShowPageNumber(int page);
    void ShowZoom();
    void ChooseZoom(int index);
    void Search(bool backward);
    // What a key asks for in this window, whichever control has the focus; empty when nothing.
    std::function<void()> CommandOf(const QKeyEvent& event);
    void Print();
    void SaveAs(FileFormat format);

    std::shared_ptr<const PrintedDocument> document_;
    std::unique_ptr<Prompts> ownPrompts_;
    Prompts& prompts_;
    frmPreviewPages* pages_ = nullptr;
    QListView* pageList_ = nullptr;
    QSpinBox* pageNumber_ = nullptr;
    QComboBox* zoom_ = nullptr;
    QLineEdit* search_ = nullptr;
    QLabel* searchResult_ = nullptr;
    QString searched_;
};

// Where the finished document goes: a preview of its own, a file whose name is asked for, or a printer. False when the user
// cancels. The preview is a window above parent's, which it goes with; it deletes itself when closed.
bool DeliverDocument(OutputTarget target, std::shared_ptr<const PrintedDocument> document, Prompts& prompts, QWidget* parent);

// Asks for the file that a document of this title is to be saved to, FileFormat::Pdf being offered with the others; those of rows
// only when it has some. The user has agreed to replace what is there. nullopt: cancelled.
std::optional<std::filesystem::path> AskDocumentFile(std::string_view title, bool hasRows, FileFormat format, Prompts& prompts);

// Asks for a name, FileFormat::Pdf being offered with the others, and writes the file. False when the user cancels.
bool SaveDocument(const PrintedDocument& document, FileFormat format, Prompts& prompts);

}  // namespace tallymar
