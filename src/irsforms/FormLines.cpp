#include "irsforms/FormLines.h"

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

void WriteJsonLines(JsonWriter& json, std::string_view name, const FormLines& lines) {
    json.BeginObject(name);
    for (int line = 0; line <= lines.Last(); ++line) {
        if (!lines[line].IsZero()) json.Text(std::to_string(line), DecimalText(lines[line]));
    }
    json.End();
}

}  // namespace tallymar
