#pragma once

#include <string_view>

#include "platform/recordset/Connection.h"
#include "platform/recordset/RowBlock.h"
#include "platform/recordset/TableDef.h"
#include "platform/recordset/Value.h"

// A cell as SQLite holds it and the value that a recordset shows of it. What a pass does for every column stands here, inline.
namespace tallymar::recordset {

inline Value::Kind KindOf(FieldType type) {
    switch (type) {
        case FieldType::Text:
            return Value::Kind::Text;
        case FieldType::Date:
            return Value::Kind::Date;
        case FieldType::Currency:
            return Value::Kind::Currency;
        case FieldType::Integer:
            return Value::Kind::Integer;
        case FieldType::Boolean:
            return Value::Kind::Boolean;
    }
    return Value::Kind::Null;
}

inline bool SameCell(const Cell& a, const Cell& b) {
    if (a.Type != b.Type) return false;
    switch (a.Type) {
        case Cell::Kind::Null:
            return true;
        case Cell::Kind::Whole:
            return a.Whole == b.Whole;
        case Cell::Kind::Real:
            return a.Real == b.Real;
        default:
            return a.TextView() == b.TextView();
    }
}

// Of a text, borrowed; a Boolean is -1 and 0.
inline Cell CellOf(const Value& value) {
    switch (value.Type()) {
        case Value::Kind::Null:
            return {};
        case Value::Kind::Text:
            return Cell::OfText(value.Text());
        case Value::Kind::Date:
            return Cell::OfReal(value.AsDate().Serial());
        case Value::Kind::Currency:
            return Cell::OfWhole(value.Currency().TenThousandths());
        case Value::Kind::Integer:
            return Cell::OfWhole(value.Integer());
        case Value::Kind::Boolean:
            return Cell::OfWhole(value.Boolean() ? -1 : 0);
    }
    return {};
}

// Of whatever another program has stored; Overflow when a number fits no value of the type.
Value StrangeValueOf(FieldType type, const Cell& cell);

inline Value ValueOf(FieldType type, const Cell& cell) {
    if (cell.Type == Cell::Kind::Null) return {};
    if (cell.Type == Cell::Kind::Text) return Value(cell.TextView());
    if (cell.Type == Cell::Kind::Whole && type == FieldType::Currency) {
        return Value(CurrencyAmount::FromTenThousandths(cell.Whole));
    }
    if (cell.Type == Cell::Kind::Whole && type == FieldType::Boolean) return Value(cell.Whole != 0);
    if (cell.Type == Cell::Kind::Real && type == FieldType::Date) return Value(Date::FromSerial(cell.Real));
    return StrangeValueOf(type, cell);
}

// Texts are bound as UTF-8 and must last until the run ends.
void BindText(Statement& statement, int parameter, std::string_view text);
void BindCell(Statement& statement, int parameter, const Cell& cell);

}  // namespace tallymar::recordset
