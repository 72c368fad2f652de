#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QWidget>

namespace tallymar {

// Names a control as the program names it: "sitxCompany", in an array "sidbBasis(1)".
template <typename Widget>
Widget* Named(Widget* widget, const char* name, int index = -1) {
    const QString plain = QString::fromLatin1(name);
    widget->setObjectName(index < 0 ? plain : QStringLiteral("%1(%2)").arg(plain).arg(index));
    return widget;
}

// Joins a label to the field that it names, for the keyboard and for those who hear the screen.
void Join(QLabel* label, QWidget* field);

// Rows of label and field, aligned in columns: the layout of every data form.
class FieldRows {
 public:
    explicit FieldRows(QGridLayout* grid);

    // A row of one field, or of several side by side after one label.
    QLabel* Add(const QString& caption, QWidget* field) { return Add(caption, QList<QWidget*>{field}); }
    QLabel* Add(const QString& caption, const QList<QWidget*>& fields);
    void AddWide(QWidget* widget);  // below the fields, without a label
    // Further rows go into a second pair of columns, from the top.
    void NextColumn();

 private:
    QGridLayout* grid_;
    int row_ = 0;
    int column_ = 0;
};

}  // namespace tallymar
