#include "irsforms/FormSchD.h"

namespace tallymar {

namespace {

using Form = FormSchD;
template <typename Source>
using Field = PageField<Source>;
using L = FormLineOf;

constexpr CurrencyAmount kNothing;
constexpr std::size_t kRowsOnPage = 4;
constexpr std::size_t kDescriptionBesideDates = 14;

// A row as a page shows it: its amounts in dollars or with cents.
struct RowView {
    FormSchD::SaleRow Row;
    bool InDollars;
};

// An amount has a mask by its sign: a negative one stands without the sign between parentheses.
struct MaskPair {
    std::string_view Positive;
    std::string_view Negative;
};
struct Masks {
    MaskPair Cents;
    MaskPair Dollars;
};
constexpr Masks kRowMasks = {{"###,###.##", "(##,###.##)"}, {"#,###,###.", "( ###,###.)"}};
constexpr Masks kTotalMasks = {{" ###,###.##", "(##,###.##)"}, {"##,###,###.", "( ###,###.)"}};
constexpr Masks kContinuationMasks = {{"#######.##", "(#####.##)"}, {"#########.", "(#######.)"}};
constexpr Masks kContinuationTotalMasks = {{" #######.##", "(######.##)"}, {"##########.", "(########.)"}};

ShownAmount Signed(CurrencyAmount amount, const Masks& masks, bool inDollars, char zeroRule) {
    const MaskPair& pair = inDollars ? masks.Dollars : masks.Cents;
    return amount < kNothing ? ShownAmount{-amount, pair.Negative, zeroRule} : ShownAmount{amount, pair.Positive, zeroRule};
}

char ZeroRuleOf(const FormSchD::SaleRow& row) {
    return !row.ItemGain.IsZero() || !row.ItemPrice.IsZero() ? 'Y' : 'N';
}

ShownAmount RowAmount(const RowView& view, CurrencyAmount amount) {
    return Signed(amount, kRowMasks, view.InDollars, ZeroRuleOf(view.Row));
}
ShownAmount ContinuationAmount(const RowView& view, CurrencyAmount amount) {
    return Signed(amount, kContinuationMasks, view.InDollars, ZeroRuleOf(view.Row));
}
ShownAmount Total(const Form& form, CurrencyAmount amount) {
    return Signed(amount, kTotalMasks, form.InDollars(), 'N');
}
ShownAmount ContinuationTotal(const Form& form, CurrencyAmount amount) {
    return Signed(amount, kContinuationTotalMasks, form.InDollars(), 'N');
}

// A field that takes a negative amount one column further left, where its opening parenthesis has a place of its own.
template <int Line>
bool IsNegative(const Form& form) {
    return form.Line(Line) < kNothing;
}
template <int Line>
bool IsNotNegative(const Form& form) {
    return !IsNegative<Line>(form);
}

bool HasShortContinuation(const Form& form) {
    return form.ShortTerm().Rows > kRowsOnPage;
}
bool HasLongContinuation(const Form& form) {
    return form.LongTerm().Rows > kRowsOnPage;
}

constexpr auto kNameBlock = std::to_array<Field<Form>>({
    {10, 4, [](const Form& f) { return f.Company(); }, 58},
    {10, 64, [](const Form& f) { return f.Id(); }},
});

// ---- 2D1. Lines 4 to 6, 11 to 14 are entered by the preparer and have their places between these.

constexpr auto kPage1 = std::to_array<Field<Form>>({
    {17, 4, "SEE ATTACHED", 0, HasShortContinuation},
    {25, 37, [](const Form& f) { return f.ShortTerm().Price; }, Total, HasShortContinuation},
    {25, 57, [](const Form& f) { return f.ShortTerm().Gain; }, Total, HasShortContinuation},
    {26, 37, L{3}, Total},
    {28, 57, L{4}, Total},
    {30, 57, L{5}, Total},
    {32, 57, L{6}, Total},
    {33, 57, L{7}, Total, IsNotNegative<7>},
    {33, 56, L{7}, Total, IsNegative<7>},
    {40, 4, "SEE ATTACHED", 0, HasLongContinuation},
    {48, 37, [](const Form& f) { return f.LongTerm().Price; }, Total, HasLongContinuation},
    {48, 57, [](const Form& f) { return f.LongTerm().Gain; }, Total, HasLongContinuation},
    {48, 68, [](const Form& f) { return f.LongTerm().Gain28; }, Total, HasLongContinuation},
    {49, 37, L{10}, Total},
    {51, 57, L{11}, Total},
    {53, 57, L{12}, Total},
    {54, 37, "FORM 8814"},
    {54, 57, L{13}, Total},
    {56, 57, L{14}, Total},
    {57, 68, L{15}, Total},
    {59, 57, L{16}, Total, IsNotNegative<16>},
    {59, 56, L{16}, Total, IsNegative<16>},
});

bool IsLongText(const RowView& view) {
    return view.Row.ItemDesc.size() > kDescriptionBesideDates;
}
bool IsShortText(const RowView& view) {
    return !IsLongText(view);
}
// mm/dd/yy: ten characters would meet the price.
std::string ShortYear(const std::string& date) {
    return date.size() == 10 ? date.substr(0, 6) + date.substr(8) : date;
}

constexpr auto kShortRow = std::to_array<Field<RowView>>({
    {0, 4, [](const RowView& v) { return v.Row.ItemDesc; }, 50, IsLongText},
    {1, 4, [](const RowView& v) { return v.Row.ItemDesc; }, 14, IsShortText},
    {1, 18, [](const RowView& v) { return ShortYear(v.Row.ItemBought); }},
    {1, 28, [](const RowView& v) { return ShortYear(v.Row.ItemSold); }},
    {1, 37, [](const RowView& v) { return v.Row.ItemPrice; }, RowAmount},
    {1, 48, [](const RowView& v) { return v.Row.ItemCost; }, RowAmount},
    {1, 58, [](const RowView& v) { return v.Row.ItemGain; }, RowAmount},
});
constexpr auto kGain28OfRow = std::to_array<Field<RowView>>({
    {1, 69, [](const RowView& v) { return v.Row.ItemGain28; }, RowAmount},
});

std::vector<RowView> RowsOf(const Form& form, bool shortTerm) {
    std::vector<RowView> rows;
    for (const FormSchD::SaleRow& row : form.SaleTable()) {
        if (row.IsShort() == shortTerm) rows.push_back({row, form.InDollars()});
    }
    return rows;
}

void LayPart(PageSheet& page, const Form& form, bool shortTerm) {
    constexpr int kFirstShortLine = 16;
    constexpr int kFirstLongLine = 39;
    constexpr int kLinesOfRow = 2;
    int line = shortTerm ? kFirstShortLine : kFirstLongLine;
    for (const RowView& view : RowsOf(form, shortTerm)) {
        page.Lay(kShortRow, view, line);
        if (!shortTerm) page.Lay(kGain28OfRow, view, line);
        line += kLinesOfRow;
    }
}

PageSheet Page1(const Form& form) {
    PageSheet page("2D1");
    page.Lay(kNameBlock, form);
    page.Lay(kPage1, form);
    if (!HasShortContinuation(form)) LayPart(page, form, true);
    if (!HasLongContinuation(form)) LayPart(page, form, false);
    return page;
}

// ---- 2D2

constexpr int kLastLineOfPage2 = 53;

constexpr auto kPage2 = std::to_array<Field<Form>>({
    {5, 21, [](const Form& f) { return f.Company() + " " + f.Id(); }},
    {9, 67, L{17}, Total},
    {14, 67, L{18}, Total},
    {39, 67, L{29}, Total},
});

PageSheet Page2(const Form& form) {
    PageSheet page("2D2");
    page.Lay(kPage2, form);
    page.Reach(kLastLineOfPage2);
    return page;
}

// ---- 2D1C1 and 2D1C2: Schedule D-1

bool HasPrice(const RowView& view) {
    return view.Row.ColumnCode() != "2";
}
bool HasNoPrice(const RowView& view) {
    return !HasPrice(view);
}
bool HasCost(const RowView& view) {
    return view.Row.ColumnCode() != "3";
}
bool HasNoCost(const RowView& view) {
    return !HasCost(view);
}

constexpr auto kContinuationRow = std::to_array<Field<RowView>>({
    {0, 4, [](const RowView& v) { return v.Row.ItemDesc; }, 14},
    {0, 18, [](const RowView& v) { return v.Row.ItemBought; }},
    {0, 28, [](const RowView& v) { return v.Row.ItemSold; }},
    {0, 38, [](const RowView& v) { return v.Row.ItemPrice; }, ContinuationAmount, HasPrice},
    {0, 38, "EXPIRED", 0, HasNoPrice},
    {0, 48, [](const RowView& v) { return v.Row.ItemCost; }, ContinuationAmount, HasCost},
    {0, 48, "EXPIRED", 0, HasNoCost},
    {0, 58, [](const RowView& v) { return v.Row.ItemGain; }, ContinuationAmount},
});
constexpr auto kGain28OfContinuation = std::to_array<Field<RowView>>({
    {0, 69, [](const RowView& v) { return v.Row.ItemGain28; }, ContinuationAmount},
});
constexpr auto kShortTotals = std::to_array<Field<Form>>({
    {0, 37, [](const Form& f) { return f.ShortTerm().Price; }, ContinuationTotal},
    {0, 57, [](const Form& f) { return f.ShortTerm().Gain; }, ContinuationTotal},
});
constexpr auto kLongTotals = std::to_array<Field<Form>>({
    {0, 37, [](const Form& f) { return f.LongTerm().Price; }, ContinuationTotal},
    {0, 57, [](const Form& f) { return f.LongTerm().Gain; }, ContinuationTotal},
    {0, 68, [](const Form& f) { return f.LongTerm().Gain28; }, ContinuationTotal},
});

PageSheet Continuation(const Form& form, std::string_view code, bool shortTerm) {
    constexpr int kFirstLine = 15;
    constexpr int kTotalsLine = 64;
    PageSheet page(code);
    page.Lay(kNameBlock, form);
    int line = kFirstLine;
    for (const RowView& view : RowsOf(form, shortTerm)) {
        page.Lay(kContinuationRow, view, line);
        if (!shortTerm) page.Lay(kGain28OfContinuation, view, line);
        ++line;
    }
    const int totalsLine = std::max(kTotalsLine, line);
    if (shortTerm) {
        page.Lay(kShortTotals, form, totalsLine);
    } else {
        page.Lay(kLongTotals, form, totalsLine);
    }
    return page;
}

}  // namespace

void FormSchD::Write(FormOutput& output) {
    output.WriteWorkFile("SCHEDD1.001", WorkFileText());
    output.WritePage("2D1", Page1(*this));
    output.WritePage("2D2", Page2(*this));
    if (HasShortContinuation(*this)) output.WritePage("2D1C1", Continuation(*this, "2D1C1", true));
    if (HasLongContinuation(*this)) output.WritePage("2D1C2", Continuation(*this, "2D1C2", false));
}

}  // namespace tallymar
