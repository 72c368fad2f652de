#include "interchange/frmExchangeParts.h"

#include <QGridLayout>
#include <QLabel>

#include "interchange/ExchangeBook.h"
#include "platform/controls/CSOptList.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"

namespace tallymar {

CSOptList* MakeBookList(const QString& caption, QWidget* parent) {
    QStringList items;
    for (const std::string_view name : kExchangeBooks) items << ToQString(name);
    auto* books = new CSOptList("optlBook", caption, items, parent);
    books->SetIndex(kFirstBook);
    return books;
}

std::string BookName(const CSOptList& books) {
    return std::string(kExchangeBooks.at(static_cast<std::size_t>(books.Index())));
}

frmCounts::frmCounts(const QString& caption, const std::vector<CountLine>& lines, QWidget* parent) : QGroupBox(caption, parent) {
    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (QLabel*& count : lblCount_) {
        const QString label = ToQString(lines.at(static_cast<std::size_t>(row)).Label);
        count = Named(new QLabel(this), "lblCount", row + 1);
        count->setAccessibleName(label);
        count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        count->setMinimumWidth(count->fontMetrics().horizontalAdvance(QStringLiteral("0000000")));
        count->setTextInteractionFlags(Qt::TextSelectableByMouse);
        grid->addWidget(new QLabel(label, this), row, 0);
        grid->addWidget(count, row++, 1);
    }
    grid->setRowStretch(row, 1);
    Show(lines);
}

void frmCounts::Show(const std::vector<CountLine>& lines) {
    for (std::size_t i = 0; i < lblCount_.size(); ++i) {
        lblCount_[i]->setText(ToQString(Format(static_cast<long long>(lines.at(i).Count), pictures::kCount)));
    }
}

}  // namespace tallymar
