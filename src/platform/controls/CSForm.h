#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPointer>
#include <QWidget>

class QPushButton;
class QTabWidget;

namespace tallymar {

class HintLine;
class WindowMemory;

// The base of every window but the main one: a child of the main window, or a modal one.
//
// Its fields are gone through by Tab, and by Enter and Down as well; Up goes back, in lists too (among option buttons and in a
// grid the arrows choose). Ctrl+Page Down, Ctrl+Page Up and their access keys turn its tabs. The access key of a command presses
// it at once, so that what is typed next goes where the command puts the keyboard. A focused field's hint stands in the form's
// status line. All of it holds for the fields that the form has when it is first shown.
class CSForm : public QWidget {
    Q_OBJECT

 public:
    // name: the window's, "frmEditCompany".
    CSForm(const char* name, const QString& title, QWidget* parent = nullptr);

    // Shows it over everything else of the program and returns when it has been unloaded.
    void ShowModal();
    // Closes it, whether it stands alone or within the main window. False when it stays: it may not go (MayUnload), or a command
    // is at work in it.
    bool Unload();

    // Puts the keyboard in the first field, unless it is in one.
    void FocusFirst();

    static void SetHint(QWidget* field, const QString& hint);
    static QString HintOf(const QWidget* field);

 signals:
    void Unloaded();

 protected:
    enum class Page { Next, Previous };

    // Page Down or the numeric pad's plus; Page Up or its minus. True when the form has a use for it; else the field gets the
    // key.
    virtual bool OnPage(Page) { return false; }
    virtual void OnFieldFocus(QWidget* /*field*/) {}
    // However the form is closed, asked first: false keeps it open, and the form has said why.
    virtual bool MayUnload() { return true; }
    virtual void OnUnload() {}

    // The status line, to be put at the form's foot.
    QLabel* MakeHintLine(const char* name = "TextMessage");
    // A hint. It gives way to the next one, and is passed over while a result or a warning stands.
    void ShowMessage(const QString& text);
    // What a command has done, and what became of an entry that a field did not take as it was typed. Both stay on the status
    // line, wherever the keyboard goes, until the next entry or command.
    void ShowResult(const QString& text);
    void ShowWarning(const QString& text);
    bool WarningStands() const;
    // The hint of the field that has the keyboard takes the line again.
    void EndNotice();

    // Turns to a tab as the keyboard does. The field that has the keyboard is left first, while it still stands there: a page
    // that goes or comes back must not run the rules of fields that its user never went to. False when the field does not let go.
    bool TurnTo(QTabWidget& tabs, int tab);
    // The field has been left for another tab: false keeps its tab, and the form has said why.
    virtual bool MayTurn(QWidget* /*left*/) { return true; }

    // What the form keeps from one opening to the next beside its size and place: asked for when it is shown first, and told when
    // it has been unloaded.
    virtual void Recall(const WindowMemory&) {}
    virtual void Remember(WindowMemory&) const {}

    // The button that Escape presses.
    void SetCancelButton(QAbstractButton* button) { cancelButton_ = button; }

    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void Adopt();
    void PlaceOver(const QWidget* over);
    void RememberAll();
    bool TurnTab(QTabWidget& tabs, int tab);
    bool StepTab(int step);
    void ShowNotice(const QString& text, bool isWarning);
    // The tab whose access key this is, of the tabs shown.
    QTabWidget* TabsOf(const QKeyEvent& key, int& tab) const;
    // The command whose access key this is. The form takes it for itself: the main menu may have the same letter.
    QPushButton* CommandOf(const QKeyEvent& key) const;
    bool OnFieldKey(QWidget* field, int key, Qt::KeyboardModifiers modifiers);

    HintLine* hintLine_ = nullptr;
    QPointer<QAbstractButton> cancelButton_;
    QRect placed_;               // where a modal form came up
    bool noticeStands_ = false;  // a result or a warning is on the status line
    bool adopted_ = false;
    bool unloaded_ = false;
};

}  // namespace tallymar
