#include "platform/page/DetailTable.h"

#include "platform/runtime/PlatformError.h"

namespace tallymar {

void DetailTable::AddColumn(std::string_view heading, DetailKind kind, std::string_view picture, bool summed) {
    if (rows_ > 0) throw PlatformError(Failure::InvalidCall, "A table gets its columns before its rows.");
    columns_.push_back({std::string(heading), kind, std::string(picture), summed});
}

void DetailTable::AddRow() {
    cells_.resize(cells_.size() + columns_.size());
    next_ = rows_ * columns_.size();
    ++rows_;
}

DetailCell& DetailTable::Next(DetailKind kind) {
    if (next_ >= cells_.size()) throw PlatformError(Failure::SubscriptOutOfRange);
    const DetailColumn& column = columns_[next_ % columns_.size()];
    if (column.Kind != kind) throw PlatformError(Failure::TypeMismatch, "Column \"" + column.Heading + "\": Type mismatch");
    return cells_[next_++];
}

void DetailTable::Add(std::string_view text) {
    Next(DetailKind::Text) = std::string(text);
}

void DetailTable::Add(Date date) {
    Next(DetailKind::Date) = date;
}

void DetailTable::Add(std::int64_t number) {
    if (next_ < cells_.size() && columns_[next_ % columns_.size()].Kind == DetailKind::Money) {
        cells_[next_++] = CurrencyAmount::FromInteger(number);
    } else {
        Next(DetailKind::Integer) = number;
    }
}

void DetailTable::Add(CurrencyAmount amount) {
    Next(DetailKind::Money) = amount;
}

void DetailTable::AddEmpty() {
    if (next_ >= cells_.size()) throw PlatformError(Failure::SubscriptOutOfRange);
    ++next_;
}

}  // namespace tallymar
