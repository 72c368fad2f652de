#pragma once

#include <concepts>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "irsforms/FormFile.h"
#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// A page of a form is a table: a row says where on the page a value stands, what the value is, under which mask and zero rule,
// and when it is there at all. Source is what the values are taken from: a computed form, or a row of one of its tables.

// A numbered line of the form: Source::Line(Number).
struct FormLineOf {
    int Number;
};

template <typename Source>
class PageText {
 public:
    constexpr PageText(const char* literal) : what_(std::string_view(literal)) {}
    constexpr PageText(std::string Source::*member) : what_(member) {}
    template <typename Function>
    requires std::convertible_to<Function, std::string (*)(const Source&)>
    constexpr PageText(Function function) : what_(static_cast<std::string (*)(const Source&)>(function)) {}

    std::string Of(const Source& source) const {
        if (const auto* literal = std::get_if<std::string_view>(&what_)) return std::string(*literal);
        if (const auto* member = std::get_if<std::string Source::*>(&what_)) return source.**member;
        return std::get<2>(what_)(source);
    }

 private:
    std::variant<std::string_view, std::string Source::*, std::string (*)(const Source&)> what_;
};

template <typename Source>
class PageAmount {
 public:
    constexpr PageAmount(FormLineOf line) : what_(line) {}
    constexpr PageAmount(CurrencyAmount Source::*member) : what_(member) {}
    template <typename Function>
    requires std::convertible_to<Function, CurrencyAmount (*)(const Source&)>
    constexpr PageAmount(Function function) : what_(static_cast<CurrencyAmount (*)(const Source&)>(function)) {}

    CurrencyAmount Of(const Source& source) const {
        if constexpr (requires { source.Line(0); }) {
            if (const auto* line = std::get_if<FormLineOf>(&what_)) return source.Line(line->Number);
        }
        if (const auto* member = std::get_if<CurrencyAmount Source::*>(&what_)) return source.**member;
        return std::get<2>(what_)(source);
    }

 private:
    std::variant<FormLineOf, CurrencyAmount Source::*, CurrencyAmount (*)(const Source&)> what_;
};

// How an amount shows: a negative one may stand without its sign between the parentheses of its mask.
struct ShownAmount {
    CurrencyAmount Amount;
    std::string_view Mask;
    char ZeroRule = 'N';  // 'Y': shown also when 0
};

template <typename Source>
class PageField {
 public:
    using Condition = bool (*)(const Source&);
    using Showing = ShownAmount (*)(const Source&, CurrencyAmount);

    // A text, cut to `width` when that is not 0.
    constexpr PageField(int line, int column, PageText<Source> text, int width = 0, Condition when = nullptr)
        : Line(line), Column(column), What(text), Width(width), When(when) {}
    constexpr PageField(int line, int column, PageAmount<Source> amount, std::string_view mask, char zeroRule = 'N',
                        Condition when = nullptr)
        : Line(line), Column(column), What(amount), Mask(mask), ZeroRule(zeroRule), When(when) {}
    // An amount whose mask depends on it.
    constexpr PageField(int line, int column, PageAmount<Source> amount, Showing show, Condition when = nullptr)
        : Line(line), Column(column), What(amount), Show(show), When(when) {}

    int Line;  // of the page's file; in a table of a row, counted from the row
    int Column;
    std::variant<PageText<Source>, PageAmount<Source>> What;
    int Width = 0;
    std::string_view Mask = {};
    char ZeroRule = 'N';
    Showing Show = nullptr;
    Condition When = nullptr;
};

// One page, laid from tables and then written through a FormFile.
//
// The fields of a line follow each other from left to right. Leading blanks of a field give way to what stands before it; a text
// that would still run into the next field is cut there, and after an amount the next field moves to the right. So nothing is
// ever carried to another line. A control character of a text, such as a line break, is a blank on the page.
class PageSheet {
 public:
    explicit PageSheet(std::string_view pageCode);

    // `down` is added to every line of the table, `right` to every column. The page reaches down to the table's last line,
    // whatever stands there.
    template <typename Source>
    void Lay(std::span<const PageField<Source>> table, const Source& source, int down = 0, int right = 0) {
        for (const PageField<Source>& field : table) {
            Reach(field.Line + down);
            if (field.When && !field.When(source)) continue;
            if (const auto* text = std::get_if<PageText<Source>>(&field.What)) {
                std::string shown = text->Of(source);
                if (field.Width > 0 && shown.size() > static_cast<std::size_t>(field.Width)) {
                    shown.resize(static_cast<std::size_t>(field.Width));
                }
                AddText(field.Line + down, field.Column + right, std::move(shown));
            } else {
                const CurrencyAmount amount = std::get<PageAmount<Source>>(field.What).Of(source);
                const ShownAmount shown =
                    field.Show ? field.Show(source, amount) : ShownAmount{amount, field.Mask, field.ZeroRule};
                AddAmount(field.Line + down, field.Column + right, shown);
            }
        }
    }
    template <typename Table, typename Source>
    void Lay(const Table& table, const Source& source, int down = 0, int right = 0) {
        Lay(std::span<const PageField<Source>>(table), source, down, right);
    }
    void AddText(int line, int column, std::string text);
    void AddAmount(int line, int column, const ShownAmount& amount);
    void Reach(int line);

    // False when the file cannot be opened.
    bool Write(FormFile& file) const;

 private:
    struct Field {
        int Column;
        std::string Text;  // as it stands on the page
        bool IsAmount = false;
        CurrencyAmount Amount;
        std::string Mask;
        char ZeroRule = 'Y';
    };

    static void MakeRoom(std::vector<Field>& fields);

    std::string firstLine_;
    std::map<int, std::vector<Field>> lines_;
    int last_ = 1;
};

}  // namespace tallymar
