#pragma once

#include <string>
#include <string_view>

#include "platform/recordset/TableDef.h"
#include "platform/recordset/Value.h"

// The text form of one column's value in files and on the command line, in UTF-8.
//
// Dates are YYYY-MM-DD, with THH:MM:SS after it when there is a time of day; amounts have a point, at most four decimals and no
// commas; integers are plain, booleans True and False. A moment that the calendar form cannot tell exactly (finer than a second,
// or a year that has not four digits) is its count of days after an "@". What one way writes, the other reads back to the same
// value. What other programs of a United States desk write is read too: dates as m/d/yyyy, the year with four digits; amounts
// with a dollar sign, with commas between the thousands, and negative ones in parentheses; Yes and No.
namespace tallymar {

// A text value is a view of `buffer`, which must outlive it. Failures, each with a text that says what is wrong with this one:
// TypeMismatch (no such number, date or True/False; a character that Windows-1252 does not have), Overflow (a date outside the
// years 100 to 9999 too), FieldTooSmall, ZeroLengthNotAllowed.
recordset::Value ParseFieldText(const recordset::Field& field, std::string_view utf8, std::string& buffer);

// How a message repeats a text that it complains of: in quotation marks, a control character as a question mark; of a text too
// long for any message only its length.
std::string QuotedFieldText(std::string_view utf8);

// Null, but for a Boolean, which is never empty: InvalidUseOfNull.
recordset::Value NullFieldValue(const recordset::Field& field);

// Nothing for Null. A text comes as it is, without quotes.
void AppendFieldText(const recordset::Value& value, std::string& utf8);

}  // namespace tallymar
