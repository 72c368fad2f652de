#include "formoutput/frmFormAmountEdit.h"

#include <algorithm>

#include "platform/controls/ScreenText.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::string_view kEmpty = "0.00";
constexpr int kCommas = 4;  // at most, in what the limits let in

NumberEdit::Limits PageLimits() {
    constexpr CurrencyAmount limit = CurrencyAmount::FromTenThousandths(99'999'999'999'900);  // 9,999,999,999.99
    return {CurrencyAmount::FromTenThousandths(-limit.TenThousandths()), limit, 2, true};
}

// Empty, "0.", ".00", "-0.00", "(   0.00)": nothing but zeros and what an amount is written with.
bool ReadsAsZero(std::string_view text) {
    return text.find_first_not_of(" 0.,()-") == std::string_view::npos;
}

}  // namespace

FormAmountEdit::FormAmountEdit(QWidget* parent) : sidbEdit(PageLimits(), parent) {
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);  // the text has its own blanks, cell by cell
}

void FormAmountEdit::Show(std::string_view pageText, int width) {
    width_ = width;
    setMaxLength(std::max(width, static_cast<int>(kEmpty.size())) + kCommas);  // Check holds it to the width without them
    ShowText(ToQString(ReadsAsZero(pageText) ? kEmpty : pageText));
}

std::string FormAmountEdit::Text() const {
    return ToWindows1252(text());
}

QValidator::State FormAmountEdit::Check(QString& text, int& caret) const {
    isTooWide_ = false;
    const QValidator::State state = sidbEdit::Check(text, caret);
    if (state == QValidator::Invalid || text.size() <= width_) return state;
    // The commas go before a digit does.
    const auto commas = text.left(caret).count(u',');
    text.remove(u',');
    caret -= static_cast<int>(commas);
    isTooWide_ = text.size() > width_ && text.size() >= TextBefore().size();
    return isTooWide_ ? QValidator::Invalid : state;
}

QString FormAmountEdit::WhyRefused() const {
    return isTooWide_ ? tr("The field has room for %1 characters").arg(width_) : sidbEdit::WhyRefused();
}

}  // namespace tallymar
