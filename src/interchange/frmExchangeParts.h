#pragma once

#include <array>
#include <string>
#include <vector>

#include <QGroupBox>

#include "interchange/DosExchange.h"

class QLabel;

namespace tallymar {

class CSOptList;

// The choice of a book, or of the exchange of a whole company.
CSOptList* MakeBookList(const QString& caption, QWidget* parent);
// "Company", "Federal", "State", "Book" or "AMT".
std::string BookName(const CSOptList& books);

// "Import Statistics" and "Export Statistics": three counts, lblCount(1) to lblCount(3).
class frmCounts : public QGroupBox {
    Q_OBJECT

 public:
    frmCounts(const QString& caption, const std::vector<CountLine>& lines, QWidget* parent);

    void Show(const std::vector<CountLine>& lines);

 private:
    std::array<QLabel*, 3> lblCount_{};
};

}  // namespace tallymar
