#pragma once

#include <string>
#include <string_view>

#include "platform/controls/EntryEdit.h"
#include "platform/runtime/Date.h"

namespace tallymar {

// Entry of a date in any form that a United States user types; on leaving it is shown as "8/15/2003". An empty field is no date.
// A text that is no date stays for the user to put right, marked, and counts as no date meanwhile.
class sidtEdit : public EntryEdit {
    Q_OBJECT

 public:
    explicit sidtEdit(QWidget* parent = nullptr);

    bool IsDate() const { return !Value().IsNone(); }
    Date Value() const;  // date 0 when the text is none
    void SetValue(Date date);

    std::string Text() const;
    void SetText(std::string_view text);

 protected:
    QValidator::State Check(QString& text, int& caret) const override;
    void Leave() override;
    QString WidestText() const override;

 private:
    void Mark();
    bool IsMarked() const;
};

}  // namespace tallymar
