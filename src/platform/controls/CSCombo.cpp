#include "platform/controls/CSCombo.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "platform/controls/ScreenText.h"

namespace tallymar {

namespace {

constexpr int kMeaningRole = Qt::UserRole + 1;
constexpr int kGreyPercent = 62;  // of the text's colour: quieter, and still read with ease

// An entry and, behind the widest of them, what it means. The list itself holds the entries alone, so letters choose and values
// are stored by them.
class MeaningDelegate : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const QString meaning = index.data(kMeaningRole).toString();
        if (meaning.isEmpty()) return;
        const bool chosen = option.state & QStyle::State_Selected;
        QColor color = option.palette.color(chosen ? QPalette::HighlightedText : QPalette::Text);
        color.setAlphaF(chosen ? 1.0F : kGreyPercent / 100.0F);
        painter->save();
        painter->setFont(option.font);
        painter->setPen(color);
        painter->drawText(option.rect.adjusted(MeaningStart(option, index), 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, meaning);
        painter->restore();
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        const QString meaning = index.data(kMeaningRole).toString();
        const int gap = option.fontMetrics.averageCharWidth();
        if (!meaning.isEmpty()) size.setWidth(MeaningStart(option, index) + option.fontMetrics.horizontalAdvance(meaning) + gap);
        return size;
    }

 private:
    static int MeaningStart(const QStyleOptionViewItem& option, const QModelIndex& index) {
        int widest = 0;
        for (int row = 0; row < index.model()->rowCount(); ++row) {
            const QString code = index.siblingAtRow(row).data().toString();
            widest = std::max(widest, option.fontMetrics.horizontalAdvance(code));
        }
        return widest + 3 * option.fontMetrics.averageCharWidth();
    }
};

}  // namespace

CSCombo::CSCombo(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

void CSCombo::Add(std::string_view text) {
    addItem(ToQString(text));
}

void CSCombo::ExplainOne(std::string_view entry, std::string_view meaning) {
    const int place = findText(ToQString(entry), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (place < 0) return;
    if (!dynamic_cast<MeaningDelegate*>(itemDelegate())) setItemDelegate(new MeaningDelegate(this));
    setItemData(place, ToQString(meaning), kMeaningRole);
    const QString spoken = entry.empty() ? tr("blank") : ToQString(entry);
    setItemData(place, QStringLiteral("%1, %2").arg(spoken, ToQString(meaning)), Qt::AccessibleTextRole);
}

void CSCombo::showPopup() {
    view()->setAccessibleName(accessibleName());
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + view()->verticalScrollBar()->sizeHint().width());
    QComboBox::showPopup();
}

std::string CSCombo::Text() const {
    return ToWindows1252(currentText());
}

bool CSCombo::Choose(std::string_view text) {
    const int place = findText(ToQString(text), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (place < 0) return false;
    setCurrentIndex(place);
    return true;
}

void CSCombo::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    if (step == 0) {
        QComboBox::keyPressEvent(event);
        return;
    }
    const int place = currentIndex() + step;
    if (place < 0 || place >= count()) return;
    setCurrentIndex(place);
    emit activated(place);
}

void CSCombo::wheelEvent(QWheelEvent* event) {
    event->ignore();  // an open list gets the wheel itself
}

}  // namespace tallymar
