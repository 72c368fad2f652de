#include "reports/ReportColumns.h"

#include <charconv>

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "reports/ReportOptions.h"
#include "store/Books.h"
#include "store/Vocabularies.h"

namespace tallymar {

std::string ExpandHeading(std::string_view heading, Date yearEnd, int book) {
    std::string text;
    while (true) {
        const std::size_t open = heading.find('{');
        text += heading.substr(0, open);
        if (open == std::string_view::npos) return text;
        const std::size_t close = heading.find('}', open);
        std::string_view item = heading.substr(open + 1, close - open - 1);
        heading.remove_prefix(close + 1);
        if (item == "book") {
            text += book == 1 ? "Fed" : BookOf(book).ShortName;
            continue;
        }
        int days = 0;
        if (const std::size_t plus = item.find('+'); plus != std::string_view::npos) {
            std::from_chars(item.data() + plus + 1, item.data() + item.size(), days);
            item = item.substr(0, plus);
        }
        text += Format(yearEnd.AddDays(days), item);
    }
}

namespace cells {

namespace {

constexpr CurrencyAmount kNothing;
constexpr std::string_view kNoNumber = "  ";  // in the place of a method or percent

// An asset whose whole cost was expensed is no longer told by its type, method and percent.
bool ExpensedWhole(const CellSource& source) {
    return source.Asset.Basis[source.IdBook] == source.Asset.Section179[source.IdBook];
}

Cell Type(CellSource& source) {
    return ExpensedWhole(source) ? std::string("179E") : std::string(DeprTypeCode(source.Asset.DeprType[source.IdBook]));
}

Cell Method(CellSource& source) {
    return std::string(ExpensedWhole(source) ? kNoNumber : DeprMethodCode(source.Asset.DeprMethod[source.IdBook]));
}

Cell Life(CellSource& source) {
    return source.Asset.Period[source.IdBook];
}

Cell LifeOrEmpty(CellSource& source) {
    const CurrencyAmount life = source.Asset.Period[source.IdBook];
    if (life.IsZero()) return std::string();
    return life;
}

Cell DisposalMark(CellSource& source) {
    return std::string(source.IsDisposed ? "*" : "");
}

}  // namespace

Cell Percent(CellSource& source) {
    if (ExpensedWhole(source)) return std::string(kNoNumber);
    return source.Asset.DBPercent[source.IdBook];
}

Cell AssetNumber(CellSource& source) {
    return source.Asset.AssetNum.ToString();
}
Cell Description(CellSource& source) {
    return source.Asset.Description;
}
Cell InService(CellSource& source) {
    return source.Asset.InService;
}
Cell BusinessUse(CellSource& source) {
    return source.Asset.BusinessUse;
}
Cell Basis(CellSource& source) {
    return source.Asset.Basis[source.Book];
}
Cell Section179(CellSource& source) {
    return source.Asset.Section179[source.Book];
}
Cell PrevDepr(CellSource& source) {
    return source.Asset.PrevDepr[source.Book];
}
Cell CurrDepr(CellSource& source) {
    return source.Asset.CurrDepr[source.Book];
}

Cell DisposalStatus(CellSource& source) {
    const AssetRecord& asset = source.Asset;
    if (!source.IsDisposed) return std::string(asset.Notice4 ? "Notice-4" : "");
    if (asset.Sold) return std::string("Sold");
    if (asset.LikeKind) return std::string("LikeKind");
    if (asset.Abandoned) return std::string("Abandon");
    return std::string(asset.Casualty ? "Casualty" : "");
}

Cell FlagStatus(CellSource& source) {
    const AssetRecord& asset = source.Asset;
    if (asset.Sold) return std::string("Sold");
    if (asset.Notice4) return std::string("Notice-4");
    if (asset.LikeKind) return std::string("LikeKind");
    if (asset.Abandoned) return std::string("Abandon");
    if (asset.Casualty) return std::string("Casualty");
    if (asset.Auto[source.Book]) return std::string("Auto");
    return std::string(asset.Listed[source.Book] ? "Listed" : "");
}

Cell Convention(CellSource& source) {
    return source.Asset.IRSConvUsed[source.IdBook].ToString();
}

Cell MarkedConvention(CellSource& source) {
    std::string text = source.Asset.IRSConvUsed[source.IdBook].ToString();
    if (source.Asset.AddlDepr[source.IdBook] > kNothing) {
        source.HasAdditional = true;
        text += " (A)";
    } else if (source.Asset.Section179[source.IdBook] > kNothing) {
        source.HasExpense = true;
        text += " (E)";
    }
    return text;
}

Cell FirstYearAddition(CellSource& source) {
    const CurrencyAmount addition = source.Asset.AddlDepr[source.Book];
    return addition > kNothing && source.Years >= 1 ? addition : kNothing;
}

Cell PrevDeprWith179(CellSource& source) {
    const CurrencyAmount earlier = source.Asset.PrevDepr[source.Book];
    return source.Include179 && source.Years >= 2 ? earlier + source.Asset.Section179[source.Book] : earlier;
}

Cell PrevDeprWith179AndAddl(CellSource& source) {
    const CurrencyAmount earlier = source.Asset.PrevDepr[source.Book];
    if (!source.Include179 || source.Years < 2) return earlier;
    return earlier + source.Asset.Section179[source.Book] + source.Asset.AddlDepr[source.Book];
}

Cell CurrDeprWith179(CellSource& source) {
    const CurrencyAmount current = source.Asset.CurrDepr[source.Book];
    if (!source.Include179 || source.Years != 1) return current;
    return current + source.Asset.Section179[source.Book] + source.Asset.AddlDepr[source.Book];
}

Cell NetBookValue(CellSource& source) {
    const CurrencyAmount taken = source.Amount(kPrevious) + source.Amount(kCurrent);
    return source.Include179 ? source.Amount(kCost) - taken : source.Amount(kCost) - source.Amount(kExpense) - taken;
}

}  // namespace cells

namespace {

constexpr auto L = Justify::Left;
constexpr auto R = Justify::Right;

constexpr ColumnRow kIdentification[] = {
    {1, 1, 8, L, false, pictures::kText, "Asset", "Number", cells::AssetNumber},
    {2, 10, 23, L, false, pictures::kText, "", "Description", cells::Description},
    {3, 44, 10, R, false, pictures::kReportDate, "Date", "Acquired", cells::InService},
    {4, 46, 8, L, false, "", "", "Status", cells::DisposalStatus},
    {5, 59, 5, R, false, pictures::kUsePercent, "Bus", "Use %", cells::BusinessUse},
    {6, 65, 4, R, false, pictures::kLifeOrBlank, "", "Life", cells::Life},
    {7, 68, 6, L, false, "", "", "Type", cells::Type},
    {8, 76, 4, L, false, "", "", "Meth", cells::Method},
    {9, 85, 4, R, false, pictures::kDecliningPercent, "", "%", cells::Percent},
    {10, 88, 4, L, false, "", "", "Conv", cells::Convention},
};

constexpr ColumnRow kNarrowIdentification[] = {
    {1, 1, 7, L, false, pictures::kText, "", "#", cells::AssetNumber},
    {2, 9, 23, L, false, pictures::kText, "", "Description", cells::Description},
    {3, 42, 10, R, false, pictures::kReportDate, "Date", "Acquired", cells::InService},
    {4, 43, 1, L, false, "", "", "", cells::DisposalMark},
    {5, 49, 5, R, false, pictures::kLife, "", "Life", cells::LifeOrEmpty},
    {6, 51, 6, L, false, "", "", "Type", cells::Type},
    {7, 61, 4, R, false, pictures::kDecliningPercentNarrow, "", "%", cells::Percent},
    {8, 63, 4, L, false, "", "", "Mthd", cells::Method},
};

}  // namespace

constinit const ColumnTable kIdentificationColumns = kIdentification;
constinit const ColumnTable kNarrowIdentificationColumns = kNarrowIdentification;

}  // namespace tallymar
