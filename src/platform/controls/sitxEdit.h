#pragma once

#include <string>
#include <string_view>

#include "platform/controls/EntryEdit.h"

namespace tallymar {

// Entry of text, at most so many Windows-1252 characters.
class sitxEdit : public EntryEdit {
    Q_OBJECT

 public:
    explicit sitxEdit(int maxLength, QWidget* parent = nullptr);

    // Only these characters are taken ("ABC"), or all but these. Each is a plain list; empty means every character.
    void SetAllowed(std::string_view characters) {
        allowed_ = QString::fromLatin1(characters.data(), qsizetype(characters.size()));
    }
    void SetRefused(std::string_view characters) {
        refused_ = QString::fromLatin1(characters.data(), qsizetype(characters.size()));
    }
    // Letters become capitals as they are typed.
    void SetUpperCase(bool on) { upperCase_ = on; }
    // Letters become capitals when the field is left.
    void SetUpperCaseOnLeaving(bool on) { upperCaseOnLeaving_ = on; }
    // A pattern such as "999-99-9999": each 9 takes a digit, what stands between is put in by itself. An entry may be shorter.
    void SetPattern(std::string_view pattern);

    std::string Text() const;
    void SetText(std::string_view text);

    static constexpr std::string_view kLettersAndDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

 protected:
    QValidator::State Check(QString& text, int& caret) const override;
    void Leave() override;
    QString WidestText() const override;

 private:
    bool Takes(QChar character) const;
    QValidator::State FitPattern(QString& text, int& caret) const;

    QString allowed_;
    QString refused_;
    QString pattern_;
    bool upperCase_ = false;
    bool upperCaseOnLeaving_ = false;
};

}  // namespace tallymar
