#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPointer>
#include <QWidget>

class QPushButton;

namespace tallymar {

// The base of every window but the main one: a child of the main window, or a modal one.
//
// Its fields are gone through by Tab, and by Enter and Down as well; Up goes back, in lists too (among option
// buttons the arrows choose). Ctrl+Page Down and Ctrl+Page Up
// turn its tabs. A focused field's hint stands in the form's status line. All of it holds for the fields that the form has when
// it is first shown.
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
    void ShowMessage(const QString& text);
    // The button that Escape presses.
    void SetCancelButton(QAbstractButton* button) { cancelButton_ = button; }

    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void Adopt();
    bool TurnTab(int step);
    // The command whose access key this is. The form takes it for itself: the main menu may have the same letter.
    QPushButton* CommandOf(const QKeyEvent& key) const;
    bool OnFieldKey(QWidget* field, int key, Qt::KeyboardModifiers modifiers);

    QLabel* hintLine_ = nullptr;
    QPointer<QAbstractButton> cancelButton_;
    QString notice_;  // why the field just left took its entry back
    bool adopted_ = false;
    bool unloaded_ = false;
};

}  // namespace tallymar
