#pragma once

#include <vector>

#include <QGroupBox>

class QCheckBox;

namespace tallymar {

// A titled list of items that are checked or not. Its value is the sum of the checked items' values: 1, 2, 4 ... from the top.
// Its boxes carry the list's name with their place: "chklPrintPY(0)".
class CSChkList : public QGroupBox {
    Q_OBJECT

 public:
    CSChkList(const char* name, const QString& caption, const QStringList& items, QWidget* parent = nullptr);

    int Value() const;
    void SetValue(int value);
    void SetHints(const QString& hint);  // of every item, for the form's status line

 signals:
    void Clicked();  // an item has been checked or cleared, by the user or by the program

 private:
    std::vector<QCheckBox*> boxes_;
};

}  // namespace tallymar
