#include "platform/recordset/CellValue.h"

#include <algorithm>
#include <limits>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset {

namespace {

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// A number of a column, from whatever another program has stored there: 64 bits, ties to even.
std::int64_t WholeOf(const Cell& cell) {
    if (cell.Type == Cell::Kind::Whole) return cell.Whole;
    const double rounded = RoundTiesToEven(cell.Real);
    if (!(rounded >= -0x1p63 && rounded < 0x1p63)) throw PlatformError(Failure::Overflow);
    return static_cast<std::int64_t>(rounded);
}

}  // namespace

void BindText(Statement& statement, int parameter, std::string_view text) {
    if (IsAscii(text)) {
        statement.BindText(parameter, text);
    } else {
        statement.BindTextCopy(parameter, ToUtf8(text));
    }
}

void BindCell(Statement& statement, int parameter, const Cell& cell) {
    switch (cell.Type) {
        case Cell::Kind::Null:
            return statement.BindNull(parameter);
        case Cell::Kind::Whole:
            return statement.Bind(parameter, cell.Whole);
        case Cell::Kind::Real:
            return statement.Bind(parameter, cell.Real);
        case Cell::Kind::Text:
            return BindText(statement, parameter, cell.TextView());
        case Cell::Kind::Blob:
            return statement.BindBlobCopy(parameter, cell.TextView());
    }
}

Value StrangeValueOf(FieldType type, const Cell& cell) {
    switch (cell.Type) {
        case Cell::Kind::Null:
            return {};
        case Cell::Kind::Text:
        case Cell::Kind::Blob:
            return Value(cell.TextView());
        case Cell::Kind::Whole:
        case Cell::Kind::Real:
            break;
    }
    switch (type) {
        case FieldType::Currency:
            return Value(CurrencyAmount::FromTenThousandths(WholeOf(cell)));
        case FieldType::Boolean:
            return Value(cell.Type == Cell::Kind::Whole ? cell.Whole != 0 : cell.Real != 0.0);
        case FieldType::Integer: {
            const std::int64_t whole = WholeOf(cell);
            if (whole < std::numeric_limits<std::int16_t>::min() || whole > std::numeric_limits<std::int16_t>::max()) {
                throw PlatformError(Failure::Overflow);
            }
            return Value(static_cast<std::int16_t>(whole));
        }
        default:
            return Value(Date::FromSerial(cell.Type == Cell::Kind::Real ? cell.Real : static_cast<double>(cell.Whole)));
    }
}

}  // namespace tallymar::recordset
