#include "platform/recordset/RowEdit.h"

#include <cmath>

#include "platform/recordset/CellValue.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar::recordset {

RowEdit::RowEdit(const TableState& table) : table_(table), changed_(table.Definition().Fields.size()) {
    for (const Field& field : table.Definition().Fields) {
        blank_.push_back(field.Type == FieldType::Boolean ? Cell::OfWhole(0) : Cell());
    }
    for (const Index& index : table.Definition().Indexes) {
        if (!index.Primary && !index.Required) continue;
        for (const std::string& name : index.Fields) required_.push_back(static_cast<std::size_t>(table.FindOrdinal(name)));
    }
}

void RowEdit::BeginEdit(const Cell* row, TextArena& texts, const ReadMark& read) {
    edited_.assign(row, row + blank_.size());
    before_ = edited_;
    texts_ = &texts;
    read_ = read;
    changed_.Clear();
    pending_ = Pending::Edit;
}

void RowEdit::BeginNew() {
    edited_ = before_ = blank_;
    added_.Clear();
    texts_ = &added_;
    changed_.Clear();
    pending_ = Pending::New;
}

void RowEdit::Set(std::size_t column, const Value& value) {
    if (pending_ == Pending::None) throw PlatformError(Failure::UpdateWithoutEdit);
    const Field& field = table_.Definition().Fields[column];
    if (value.IsNull()) return Put(column, field.Type == FieldType::Boolean ? Cell::OfWhole(0) : Cell());
    if (value.Type() != KindOf(field.Type)) throw PlatformError::About(Failure::TypeMismatch, field.Name);
    if (field.Type == FieldType::Text) return SetText(column, value.Text());
    // SQLite would make a Null of it.
    if (value.IsDate() && std::isnan(value.AsDate().Serial())) throw PlatformError::About(Failure::TypeMismatch, field.Name);
    Put(column, CellOf(value));
}

void RowEdit::SetText(std::size_t column, std::string_view text) {
    const Cell cell = Cell::OfText(text);
    if (SameCell(cell, edited_[column])) return;
    // What the row holds already is never refused, even if another program has put it there against the column's limits.
    if (SameCell(cell, before_[column])) return Put(column, before_[column]);
    const Field& field = table_.Definition().Fields[column];
    if (text.empty() && !field.AllowZeroLength) throw PlatformError::About(Failure::ZeroLengthNotAllowed, field.Name);
    if (text.size() > static_cast<std::size_t>(field.Size)) throw PlatformError::About(Failure::FieldTooSmall, field.Name);
    Put(column, Cell::OfText(texts_->Keep(text)));
}

void RowEdit::Put(std::size_t column, const Cell& cell) {
    if (SameCell(cell, edited_[column])) return;
    edited_[column] = cell;
    if (SameCell(cell, before_[column])) {
        changed_.Remove(column);
    } else {
        changed_.Add(column);
    }
}

void RowEdit::RequireKeys() const {
    for (const std::size_t column : required_) {
        if (edited_[column].Type != Cell::Kind::Null) continue;
        if (pending_ == Pending::Edit && !changed_.Has(column)) continue;
        throw PlatformError::About(Failure::NullKey, table_.Definition().Fields[column].Name);
    }
}

}  // namespace tallymar::recordset
