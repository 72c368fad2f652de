#include "irsforms/Form4797.h"

namespace tallymar {

namespace {

using Form = Form4797;
using Sale = Form::SaleRow;
using Recapture = Form::RecaptureRow;
template <typename Source>
using Field = PageField<Source>;
using L = FormLineOf;

constexpr CurrencyAmount kNothing;
constexpr std::size_t kRowsOnPage = 4;
constexpr std::size_t kPropertiesOnPage = 4;
constexpr std::string_view kPriceMask = "######.";
constexpr std::string_view kDeprMask = "#########.";
constexpr std::string_view kCostMask = "#######.";
constexpr std::string_view kGainMask = "########.";
constexpr std::string_view kLossMask = "(########.)";

// The name block, alike on page 1 and the continuations.
constexpr auto kNameBlock = std::to_array<Field<Form>>({
    {10, 5, [](const Form& f) { return f.Company(); }, 58},
    {10, 65, [](const Form& f) { return f.Id(); }},
});

constexpr auto kSaleRow = std::to_array<Field<Sale>>({
    {0, 4, &Sale::SaleDesc, 14},
    {0, 19, &Sale::SaleAcquired},
    {0, 30, &Sale::SaleSold},
    {0, 41, &Sale::SalePrice, kPriceMask, 'Y'},
    {0, 49, &Sale::SaleDepr, kDeprMask, 'Y'},
    {0, 60, &Sale::SaleCost, kCostMask, 'Y'},
    {0, 69, &Sale::SaleGain, kGainMask, 'Y'},
});

bool IsLossOfPartnership(const Form& form) {
    return form.IsPartnership() && form.Line(7) < kNothing;
}
bool IsNoLossOfPartnership(const Form& form) {
    return !IsLossOfPartnership(form);
}
bool IsNoPartnership(const Form& form) {
    return !form.IsPartnership();
}

constexpr auto kPage1 = std::to_array<Field<Form>>({
    {12, 69, L{1}, kGainMask},
    {23, 69, L{3}, kGainMask},
    {24, 69, L{4}, kGainMask},
    {25, 58, "LIKE-KIND", 0, [](const Form& f) { return f.HasLikeKind(); }},
    {25, 69, L{5}, kGainMask},
    {26, 69, L{6}, kGainMask},
    {28, 69, L{7}, kGainMask, 'N', IsNoLossOfPartnership},
    {28, 67, [](const Form& f) { return -f.Line(7); }, kLossMask, 'N', IsLossOfPartnership},
    {36, 69, L{8}, kGainMask},
    {38, 69, L{9}, kGainMask},
    {48, 67, L{11}, kLossMask},
    {49, 69, L{12}, kGainMask},
    {50, 69, L{13}, kGainMask},
    {51, 69, L{14}, kGainMask},
    {52, 69, L{15}, kGainMask},
    {53, 69, L{16}, kGainMask},
    {55, 69, L{17}, kGainMask},
    {57, 69, L{18}, kGainMask, 'Y'},
    // 18b(2); what 18b(1) takes off is the preparer's to enter. COMPAT: only a partnership and an S corporation leave the
    // individual's lines out; an estate, a trust or a corporation has them too.
    {64, 69, L{18}, kGainMask, 'N', IsNoPartnership},
});

struct Part {
    std::string_view Term;
    int FirstLine;
    std::string_view Continuation;
};
constexpr Part kParts[] = {{"L", 19, "247973"}, {"S", 44, "247974"}};

struct PartRows {
    std::vector<Sale> Rows;  // those with a description
    Sale Totals;             // of all
};

PartRows RowsOf(const Form& form, const Part& part) {
    PartRows rows;
    rows.Totals.SaleDesc = "SEE ATTACHMENT";
    for (const Sale& sale : form.LongTable()) {
        if (sale.SaleTerm != part.Term && sale.SaleTerm != "M") continue;
        rows.Totals.SalePrice += sale.SalePrice;
        rows.Totals.SaleDepr += sale.SaleDepr;
        rows.Totals.SaleCost += sale.SaleCost;
        rows.Totals.SaleGain += sale.SaleGain;
        if (!sale.SaleDesc.empty()) rows.Rows.push_back(sale);
    }
    return rows;
}

PageSheet Page1(const Form& form) {
    PageSheet page("247971");
    page.Lay(kNameBlock, form);
    page.Lay(kPage1, form);
    for (const Part& part : kParts) {
        const PartRows rows = RowsOf(form, part);
        if (rows.Rows.size() > kRowsOnPage) {
            page.Lay(kSaleRow, rows.Totals, part.FirstLine);
            continue;
        }
        int line = part.FirstLine;
        for (const Sale& sale : rows.Rows) page.Lay(kSaleRow, sale, line++);
    }
    return page;
}

PageSheet Continuation(const Form& form, const Part& part, PartRows rows) {
    constexpr int kFirstLine = 15;
    constexpr int kTotalsLine = 64;
    PageSheet page(part.Continuation);
    page.Lay(kNameBlock, form);
    int line = kFirstLine;
    for (const Sale& sale : rows.Rows) page.Lay(kSaleRow, sale, line++);
    rows.Totals.SaleDesc.clear();
    page.Lay(kSaleRow, rows.Totals, std::max(kTotalsLine, line));
    return page;
}

// ---- 247972: Part III

constexpr auto kPage2 = std::to_array<Field<Form>>({
    {5, 21, [](const Form& f) { return f.Company() + " " + f.Id(); }},
});

constexpr auto kPropertyNames = std::to_array<Field<Recapture>>({
    {12, 6, &Recapture::RecapDesc, 32},
    {12, 57, &Recapture::RecapAcquired},
    {12, 68, &Recapture::RecapSold},
});

struct PropertyLine {
    int Line;
    CurrencyAmount Recapture::*Amount;
    bool Only1245 = false;
};
constexpr PropertyLine kPropertyLines[] = {{18, &Recapture::RecapPrice},        {19, &Recapture::RecapCost},
                                           {20, &Recapture::RecapDepr},         {21, &Recapture::RecapAdjusted},
                                           {23, &Recapture::RecapGain},         {25, &Recapture::RecapDepr, true},
                                           {26, &Recapture::RecapSec1245, true}};
constexpr int kPropertyColumns[] = {35, 46, 57, 68};
constexpr std::string_view kElsewhere[] = {"  SEE   ", "PREVIOUS", "  PAGE  "};
constexpr struct {
    int Line;
    int FormLine;
} kSummary[] = {{52, 30}, {53, 31}, {55, 32}};
constexpr int kLastLineOfPage2 = 62;

PageSheet Page2(const Form& form) {
    const std::string_view mask = form.KeepsCents() ? "#######.##" : "#########.";
    PageSheet page("247972");
    page.Lay(kPage2, form);
    const std::vector<Recapture>& properties = form.RecaptureTable();
    if (properties.size() > kPropertiesOnPage) {
        for (const int column : kPropertyColumns) {
            int line = 18;
            for (const std::string_view text : kElsewhere) page.AddText(line++, column + 1, std::string(text));
        }
    } else {
        for (std::size_t i = 0; i < properties.size(); ++i) {
            page.Lay(kPropertyNames, properties[i], static_cast<int>(i));
            for (const PropertyLine& line : kPropertyLines) {
                if (line.Only1245 && properties[i].RecapSection != "1245") continue;
                page.AddAmount(line.Line, kPropertyColumns[i], {properties[i].*line.Amount, mask});
            }
        }
    }
    for (const auto& total : kSummary) page.AddAmount(total.Line, 68, {form.Line(total.FormLine), mask, 'Y'});
    page.Reach(kLastLineOfPage2);
    return page;
}

}  // namespace

void Form4797::Write(FormOutput& output) {
    output.WriteWorkFile("F47971.001", WorkFileText());
    output.WritePage("247971", Page1(*this));
    output.WritePage("247972", Page2(*this));
    for (const Part& part : kParts) {
        PartRows rows = RowsOf(*this, part);
        if (rows.Rows.size() <= kRowsOnPage) continue;
        output.WritePage(std::string(part.Continuation), Continuation(*this, part, std::move(rows)));
    }
}

}  // namespace tallymar
