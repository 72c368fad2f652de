#pragma once

#include <QLineEdit>
#include <QValidator>

namespace tallymar {

// What the entry controls have in common: a keystroke or paste that the control cannot take is refused as it is typed and changes
// nothing, the caret never jumps, and leaving the field puts the entry in its shown form.
//
// What the program sets is shown as it is, within limits or not: a control must never alter data that nobody has touched.
class EntryEdit : public QLineEdit {
    Q_OBJECT

 public:
    explicit EntryEdit(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 signals:
    // The value is another one: sent on each keystroke that makes it so, but not while a number being typed lies outside its
    // limits; and when the program sets it.
    void Changed();
    // The field does not take what is being typed, has taken an entry back on leaving, or holds one that counts for nothing;
    // which of these, for the status line.
    void Refused(const QString& why);
    void Left();

 protected:
    // May the text stand while it is being typed? May put it right (upper case, commas) and keep the caret where it belongs.
    virtual QValidator::State Check(QString& text, int& caret) const = 0;
    virtual void Enter() {}
    virtual void Leave() {}
    virtual QString WidestText() const = 0;

    // Why Check has just refused a text, where its user cannot see it from the text alone.
    virtual QString WhyRefused() const { return {}; }

    // Shows a text of the program's without checking it.
    void ShowText(const QString& text);
    // The text that stood before the change that Check is asked about.
    const QString& TextBefore() const { return textBefore_; }
    void SelectAllOnClick(bool on) { selectAllOnClick_ = on; }

    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

 private:
    class Checker;

    QString textBefore_;
    bool showing_ = false;
    bool selectAllOnClick_ = false;
    bool justEntered_ = false;
    bool windowLeft_ = false;  // the focus went with the whole window and will come back with it
};

}  // namespace tallymar
