#pragma once

#include <vector>

#include <QGroupBox>

class QRadioButton;

namespace tallymar {

// A titled list of which one item is chosen. Its buttons carry the list's name with their place: "optlBook(0)".
class CSOptList : public QGroupBox {
    Q_OBJECT

 public:
    CSOptList(const char* name, const QString& caption, const QStringList& items, QWidget* parent = nullptr);

    int Index() const;  // of the item chosen, from 0
    void SetIndex(int index);
    void SetHints(const QString& hint);  // of every item, for the form's status line

 signals:
    void Clicked();  // another item is chosen, by the user or by the program

 private:
    std::vector<QRadioButton*> buttons_;
};

}  // namespace tallymar
