#include "irsforms/Form4562.h"

#include <optional>

#include "platform/runtime/Format.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

// COMPAT: what does not fit is dropped, from the rows and from the totals.
constexpr std::size_t kListedRows = 40;
constexpr std::size_t kElectRows = 40;
constexpr std::size_t kAmortRows = 10;
constexpr CurrencyAmount kNothing;
constexpr CurrencyAmount kHalfUse = Units(50);

constexpr std::array<std::string_view, 6> kPages = {"245621", "245622", "245623", "245624", "245625", "245626"};

// Rows of the class table; the rows of lines 19h and 19i come in pairs.
enum ClassRowNumber {
    kNoRow = 0,
    k3Year,
    k5Year,
    k7Year,
    k10Year,
    k15Year,
    k20Year,
    k25Year,
    kResidential,
    kNonresidential = 10
};

constexpr std::array<std::string_view, 8> kPeriods = {"", "3 YR", "5 YR", "7 YR", "10 YR", "15 YR", "20 YR", "25 YR"};

struct LifeRange {
    int First;
    int Last;
    ClassRowNumber Row;
};
// By the whole class life. COMPAT: a life of exactly 25 has no row, and no life at all is on the 7-year line.
constexpr LifeRange kPersonalProperty[] = {{0, 0, k7Year},    {1, 4, k3Year},    {5, 6, k5Year},    {7, 9, k7Year},
                                           {10, 14, k10Year}, {15, 19, k15Year}, {20, 24, k20Year}, {26, 32767, k25Year}};
constexpr LifeRange kOtherProperty[] = {{19, 24, k20Year}, {25, 32767, k25Year}};
struct ExactLife {
    CurrencyAmount Life;
    ClassRowNumber Row;
};
constexpr ExactLife kLandImprovements[] = {{Units(15), k15Year}, {Units(20), k20Year}, {Units(25), k25Year}};

constexpr CurrencyAmount kResidentialLife = CurrencyAmount::FromTenThousandths(275000);
constexpr CurrencyAmount kOldNonresidentialLife = CurrencyAmount::FromTenThousandths(315000);
constexpr CurrencyAmount kNonresidentialLife = Units(39);

int RowOfLife(std::span<const LifeRange> ranges, std::int64_t life) {
    for (const LifeRange& range : ranges) {
        if (life >= range.First && life <= range.Last) return range.Row;
    }
    return kNoRow;
}

// "HY", "MQ" or "MM"; nothing for a convention that the form has no letters for.
std::string_view ConventionText(const AssetRecord& asset, int book) {
    const std::string_view used = asset.IRSConvUsed[book].View();
    if (used == "Q") return "MQ";
    if (used == "Y") return "HY";
    if (used == "M") return "MM";
    return {};
}

// In the class rows; another method stands as its number in the method table.
std::string MethodText(const AssetRecord& asset, int book) {
    const int method = asset.DeprMethod[book];
    if (method == kSl) return "S/L";
    if (method == kDb && asset.DBPercent[book] == 200) return "200DB";
    if (method == kDb && asset.DBPercent[book] == 150) return "150DB";
    return std::to_string(method);
}

// In the listed rows, a modified ACRS asset shows its method and any other the number of its type.
std::string ListedMethodText(const AssetRecord& asset, int book) {
    std::string text = std::to_string(asset.DeprType[book]);
    if (asset.DeprType[book] == kMcrs) {
        const auto& percents = kDecliningPercents;
        text = std::find(percents.begin(), percents.end(), asset.DBPercent[book]) != percents.end() ? "DB" : "SL";
    }
    const std::string convention(ConventionText(asset, book));
    if (convention.empty()) return text;
    return asset.BusinessUse > kHalfUse ? text + "-" + convention : convention;
}

std::string MoneyText(CurrencyAmount amount) {
    return Format(amount, "#,##0.00");
}

}  // namespace

const FormInfo Form4562::kInfo = {.Name = "4562",
                                  .Title = "Form 4562",
                                  .Window = "frmCreate4562",
                                  .WindowTitle = "Create Form 4562",
                                  .CreateButton = "cmdCreate4562",
                                  .CreateCaption = "Create 4562",
                                  .EditButton = "cmdEdit4562",
                                  .EditCaption = "Edit Form 4562",
                                  .TypeCaption = "Form 4562 Type (1040, 1120, etc)",
                                  .Pages = kPages};

Form4562::Form4562() : IrsForm(50) {}

std::string Form4562::Message() const {
    return "Number of Assets processed " + std::to_string(AssetsRead);
}

void Form4562::Take(const AssetRecord& asset, FormScan& scan) {
    const int book = scan.Settings.Options.Book;
    const CurrencyAmount depreciation = asset.CurrDepr[book];
    inBook_ += depreciation;
    const int years = YearsAndMonths(asset.InService, scan.Settings.YearEnd).Years;
    const bool firstYear = years == 1;
    const bool hasAllowance = firstYear && (asset.Section179[book] > kNothing || asset.AddlDepr[book] > kNothing);
    if (depreciation <= kNothing && !hasAllowance) {
        if (depreciation < kNothing) LeaveOut(asset, "current depreciation below 0", depreciation);
        return;
    }
    if (asset.Period[book] < Units(1)) {
        LeaveOut(asset, "Period below 1", depreciation);
    } else if (years < 1) {
        LeaveOut(asset, "placed in service after the fiscal year", depreciation);
    } else if (asset.Listed[book]) {
        TakeListed(asset, book, firstYear);
    } else if (asset.DeprType[book] == kAmrt || asset.AssetType == "IN") {
        TakeAmortization(asset, book, firstYear);
    } else if (years > 1) {
        TakePriorYear(asset, book);
    } else {
        TakeClass(asset, book);
        if (asset.Section179[book] > kNothing) TakeElection(asset, book);
    }
}

// COMPAT: from the third building of its kind on, all share the second line, which shows the month of the last one.
int Form4562::ChooseBuildingRow(const AssetRecord& asset, int firstRow, std::string_view period) {
    const int row = class_.at(static_cast<std::size_t>(firstRow)).RowDepr.IsZero() ? firstRow : firstRow + 1;
    ClassRow& chosen = class_.at(static_cast<std::size_t>(row));
    const std::string inService = FormDate(asset.InService);
    if (!inService.empty()) chosen.RowPlaced = inService.substr(0, 3) + inService.substr(inService.size() - 4);
    chosen.RowPeriod = period;
    return row;
}

int Form4562::ChooseClassRow(const AssetRecord& asset, int book) {
    const std::int64_t life = asset.ClassLife.WholePart();
    int row = kNoRow;
    if (asset.AssetType == "PP") {
        row = RowOfLife(kPersonalProperty, life);
    } else if (asset.AssetType == "RL") {
        for (const ExactLife& exact : kLandImprovements) {
            if (asset.ClassLife == exact.Life) row = exact.Row;
        }
        if (asset.DeprMethod[book] == kSl) {
            if (asset.ClassLife == kResidentialLife) return ChooseBuildingRow(asset, kResidential, "27.5YR");
            if (asset.ClassLife == kOldNonresidentialLife) return ChooseBuildingRow(asset, kNonresidential, "31.5YR");
            if (asset.ClassLife == kNonresidentialLife) return ChooseBuildingRow(asset, kNonresidential, "39 YR");
            if (const int byLife = RowOfLife(kOtherProperty, life); byLife != kNoRow) row = byLife;
        }
    } else {
        row = RowOfLife(kOtherProperty, life);
    }
    if (row != kNoRow) class_.at(static_cast<std::size_t>(row)).RowPeriod = kPeriods.at(static_cast<std::size_t>(row));
    return row;
}

void Form4562::TakeClass(const AssetRecord& asset, int book) {
    const CurrencyAmount depreciation = asset.CurrDepr[book];
    // COMPAT: without current depreciation a first-year allowance is on no line either.
    if (depreciation.IsZero()) {
        if (asset.AddlDepr[book] > kNothing) {
            LeaveOut(asset, "no current depreciation; additional depreciation of " + MoneyText(asset.AddlDepr[book]) +
                                " is not on line 14");
        }
        return;
    }
    // COMPAT: lines 20a to 20c have never been filled. An asset placed in service this year under ADS ends the run, and the
    // preparer enters it by hand.
    if (asset.DeprType[book] == kAds) {
        throw PlatformError(Failure::TypeMismatch,
                            "Type mismatch: placed in service this year under ADS, which the form cannot take");
    }
    const int row = ChooseClassRow(asset, book);
    ClassRow& chosen = class_.at(static_cast<std::size_t>(row));
    chosen.AssetNums.emplace_back(asset.AssetNum.Trimmed());
    chosen.RowBasis += asset.Basis[book];
    chosen.RowMethod = MethodText(asset, book);
    chosen.RowDepr += depreciation;
    lines_[14] += asset.AddlDepr[book];
    if (const std::string_view convention = ConventionText(asset, book); !convention.empty()) {
        chosen.RowConvention = " " + std::string(convention);
    }
    if (row == kNoRow) LeaveOut(asset, "class life " + asset.ClassLife.ToText() + ", on no line", depreciation);
}

void Form4562::TakeElection(const AssetRecord& asset, int book) {
    if (election_.size() == kElectRows) {
        LeaveOut(asset, "the 41st Section 179 item or later, " + MoneyText(asset.Section179[book]));
        return;
    }
    election_.push_back({.AssetNum = std::string(asset.AssetNum.Trimmed()),
                         .ElectDesc = FirstOf(asset.Description, 28),
                         .ElectDate = FormDate(asset.InService),
                         .ElectCost = asset.Basis[book],
                         .ElectAmount = asset.Section179[book]});
}

void Form4562::TakePriorYear(const AssetRecord& asset, int book) {
    const int type = asset.DeprType[book];
    const bool modifiedAcrs = type == kMcrs || type == kAds || type == kMacs;
    lines_[modifiedAcrs ? 17 : 16] += asset.CurrDepr[book];
}

void Form4562::TakeListed(const AssetRecord& asset, int book, bool firstYear) {
    const CurrencyAmount depreciation = asset.CurrDepr[book];
    if (depreciation.IsZero() && asset.Section179[book].IsZero()) {
        LeaveOut(asset,
                 "no current depreciation; additional depreciation of " + MoneyText(asset.AddlDepr[book]) + " is not on line 25");
        return;
    }
    if (listed_.size() == kListedRows) {
        LeaveOut(asset, "the 41st listed property or later", depreciation, "the 41st listed property on");
        return;
    }
    if (asset.Description.empty()) LeaveOut(asset, "no description: in the totals of listed property and on no row");
    listed_.push_back({.AssetNum = std::string(asset.AssetNum.Trimmed()),
                       .ListedDesc = FirstOf(asset.Description, 10),
                       .ListedDate = FormDate(asset.InService),
                       .ListedPct = asset.BusinessUse,
                       .ListedCost = asset.Basis[book],
                       .ListedBasis = asset.Basis[book],
                       .ListedLife = asset.ClassLife.ToText(),
                       .ListedMethod = ListedMethodText(asset, book),
                       .ListedDepr = depreciation,
                       .ListedElected = firstYear ? asset.Section179[book] : kNothing});
    if (!firstYear || asset.AddlDepr[book].IsZero()) return;
    listedAllowance_ += asset.AddlDepr[book];
    LeaveOut(asset, "additional depreciation of " + MoneyText(asset.AddlDepr[book]) + " is on line 25 and in no total");
}

void Form4562::TakeAmortization(const AssetRecord& asset, int book, bool firstYear) {
    if (!firstYear) {
        lines_[43] += asset.CurrDepr[book];
        return;
    }
    if (amortization_.size() == kAmortRows) {
        LeaveOut(asset, "the 11th amortization or later", asset.CurrDepr[book], "the 11th amortization on");
        return;
    }
    amortization_.push_back({.AssetNum = std::string(asset.AssetNum.Trimmed()),
                             .AmortDesc = FirstOf(asset.Description, 18),
                             .AmortDate = FormDate(asset.InService),
                             .AmortCost = asset.Basis[book],
                             .AmortCode = asset.CodeSection,
                             .AmortLife = std::to_string(asset.ClassLife.WholePart()) + " YRS",
                             .AmortAmount = asset.CurrDepr[book]});
}

}  // namespace tallymar
