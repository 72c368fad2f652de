#include "irsforms/FormLines.h"

#include <algorithm>

#include "irsforms/FormTables.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"

namespace tallymar {

std::string FormDate(Date date) {
    return date.IsNone() ? std::string() : Format(date, pictures::kLabelDate);
}

std::string DecimalText(CurrencyAmount amount) {
    return amount.TenThousandths() % 100 == 0 ? Format(amount, "0.00") : amount.ToText();
}

void WriteJsonLines(JsonWriter& json, std::string_view name, const FormLines& lines, std::span<const int> except) {
    json.BeginObject(name);
    for (int line = 0; line <= lines.Last(); ++line) {
        if (lines[line].IsZero() || std::find(except.begin(), except.end(), line) != except.end()) continue;
        json.Text(std::to_string(line), DecimalText(lines[line]));
    }
    json.End();
}

}  // namespace tallymar
