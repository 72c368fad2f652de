#include "irsforms/PageSheet.h"

#include <algorithm>

#include "irsforms/FormatPicture.h"
#include "platform/runtime/Windows1252.h"
#include "store/FormPageFile.h"

namespace tallymar {

PageSheet::PageSheet(std::string_view pageCode) : firstLine_(FirstLineOfPage(pageCode)) {}

void PageSheet::Reach(int line) {
    last_ = std::max(last_, line);
}

void PageSheet::AddText(int line, int column, std::string text) {
    Reach(line);
    std::replace_if(text.begin(), text.end(), IsControl, ' ');
    Field field{.Column = column, .Text = std::move(text), .IsAmount = false, .Amount = {}, .Mask = {}};
    lines_[line].push_back(std::move(field));
}

void PageSheet::AddAmount(int line, int column, const ShownAmount& shown) {
    Reach(line);
    if (shown.ZeroRule == 'N' && shown.Amount.IsZero()) return;
    const std::string_view mask = shown.Mask.empty() ? FormFile::kDefaultMask : shown.Mask;
    lines_[line].push_back({.Column = column,
                            .Text = FormatPicture(shown.Amount, mask),
                            .IsAmount = true,
                            .Amount = shown.Amount,
                            .Mask = std::string(mask),
                            .ZeroRule = shown.ZeroRule});
}

void PageSheet::MakeRoom(std::vector<Field>& fields) {
    std::stable_sort(fields.begin(), fields.end(), [](const Field& a, const Field& b) { return a.Column < b.Column; });
    for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
        Field& next = fields[i + 1];
        const auto room = static_cast<std::size_t>(std::max(next.Column - fields[i].Column, 0));
        const std::size_t blanks = std::min(next.Text.find_first_not_of(' '), next.Text.size());
        std::string& text = fields[i].Text;
        if (!fields[i].IsAmount && text.size() > room + blanks) text.resize(room + blanks);
        const int end = fields[i].Column + static_cast<int>(text.size());
        if (end <= next.Column) continue;
        const std::size_t over = std::min(text.size() - std::min(room, text.size()), blanks);
        next.Column = end;
        next.Text.erase(0, over);
        if (next.IsAmount) next.Mask.erase(0, over);  // the places that its blanks came from
    }
}

bool PageSheet::Write(FormFile& file) const {
    file.EndOfFile = true;
    if (!file.OpenFormFile()) return false;
    int column = 0;
    file.WriteTextField(column, firstLine_, 0);
    int line = 1;
    for (auto [number, fields] : lines_) {
        file.SkipFormLines(number - line);
        line = number;
        MakeRoom(fields);
        for (Field& field : fields) {
            if (field.IsAmount) {
                file.WriteAmountField(field.Column, field.Amount, field.Mask, field.ZeroRule, 0);
            } else {
                file.WriteTextField(field.Column, field.Text, 0);
            }
        }
    }
    file.SkipFormLines(last_ - line + 1);
    file.CloseFormFile();
    return true;
}

}  // namespace tallymar
