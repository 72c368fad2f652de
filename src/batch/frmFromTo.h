#pragma once

#include <QGridLayout>
#include <QString>

namespace tallymar {

// Rows of a label and two fields, under the headings "Asset field to change", "Change From" and "Change To".
class FromToRows {
 public:
    explicit FromToRows(QGridLayout* grid);

    void Add(const QString& label, QWidget* from, QWidget* to);

 private:
    QGridLayout* grid_;
    int row_ = 1;
};

}  // namespace tallymar
