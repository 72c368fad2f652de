#include "engine/ADepre.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "engine/EngineMath.h"
#include "engine/Methods.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/FindFile.h"
#include "platform/runtime/Windows1252.h"
#include "store/Books.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr int kBookkeeping = 3;

// Why a record cannot be computed; nullopt when it can. Every check runs whatever the earlier ones found, so that the last status
// is the one that stays. A missing asOf has none of its own.
std::optional<DeprStatus> Refusal(WorkingRecord& record, Date asOf) {
    std::optional<DeprStatus> refusal;
    if (asOf.IsNone()) refusal = kStatusNone;
    if (record.InService.IsNone()) refusal = kStatusInvalidInService;
    if (record.Period < Units(1)) refusal = kStatusPeriodIsZero;
    if (record.DeprType == kXxxx || record.DeprType == kStck || record.DeprType == kColl) {
        record.SwitchBasis = CurrencyAmount();
        refusal = MarkNonDepreciable(record).Status;
    }
    if (asOf < record.InService) refusal = kStatusBeforeInService;
    return refusal;
}

}  // namespace

YearAmount MarkNonDepreciable(WorkingRecord& record) {
    record.IRSConvUsed = "X";
    return {CurrencyAmount(), kStatusNonDepreciable};
}

double AnnualRate(const WorkingRecord& record) {
    return Real(PercentOf(Units(record.DBPercent))) / Real(record.Period);
}

ADepre::ADepre(TableFinder findTable) : tables_(std::move(findTable)) {}

ADepre::ADepre(std::filesystem::path tableFolder)
    : ADepre([folder = std::move(tableFolder)](const std::string& name) { return FindAnyCase(folder, name); }) {}

void ADepre::BeginRun(std::string roundText, std::shared_ptr<const Law> law) {
    roundText_ = std::move(roundText);
    law_ = std::move(law);
    tables_.Forget();
}

void ADepre::ComputeDepreciation(AssetRecord& record, Date asOfDate, bool useMidQuarter, int book) {
    record_.TakeFrom(record, book);
    record_.AutoLimits = nullptr;
    status_ = kStatusNone;
    if (const auto refusal = Refusal(record_, asOfDate)) {
        status_ = *refusal;
        record_.CurrDepr = CurrencyAmount();
    } else {
        if (law_ != nullptr) record_.AutoLimits = AutoLimitsByLaw(*law_, record, book);
        const YearFacts facts = FactsOfYear(record_, asOfDate, useMidQuarter);
        record_.CurrDepr = ComputeYear(facts);
        if (ComputeMonth > 0 && book == kBookkeeping) record_.CurrDepr = MonthOfBookkeeping(record_.CurrDepr, facts);
    }
    record_.GiveTo(record, book);
    if (trace_ != nullptr) TraceCall(record, asOfDate, book);
}

CurrencyAmount ADepre::ComputeYear(const YearFacts& facts) {
    Say(facts.SaleStatus);
    record_.YearThru = static_cast<std::int16_t>(facts.YearOfLife - 1);
    TakeMaxDepr(record_);
    if (facts.YearOfLife == 1) StampConvention(facts.UseMidQuarter);

    const YearAmount method = ComputeByType(facts);
    Say(method.Status);
    CurrencyAmount year = HoldToAutoLimit(record_, method.Amount);
    if (facts.SaleYear == 1) {
        if (record_.Auto) year = std::min(year, record_.DeprLimit);
        Say(kStatusDepreciatedToSale);
    } else if (facts.SaleYear > 1) {
        year = CurrencyAmount();
    }
    year = std::max(std::min(year, record_.MaxDepr - record_.PrevDepr), CurrencyAmount());
    RoundAmount(year, roundText_);
    return year;
}

YearAmount ADepre::ComputeByType(const YearFacts& facts) {
    switch (record_.DeprType) {
        case kMcrs:
            return ComputeMcrs(record_, facts);
        case kAcrs:
        case kAcam:
            return ComputeAcrs(record_, facts, tables_);
        case kMacs:
            return ComputeFromTable(record_, facts, tables_);
        case kAmrt:
        case kGenl:
        case kAds:
        case kAdr:
            return ComputeFormula(record_, facts);
        default:
            return {CurrencyAmount(), kStatusIncorrectType};
    }
}

void ADepre::StampConvention(bool useMidQuarter) {
    if (useMidQuarter) {
        record_.IRSConvUsed = "Q";
    } else if (record_.Convention() != 'N' && record_.Convention() != 'M') {
        record_.IRSConvUsed = "Y";
    }
}

// COMPAT: the amount of one month is the same whichever month of the year is asked for; the first year's Section 179 and
// additional amounts are spread over the months in service.
CurrencyAmount ADepre::MonthOfBookkeeping(CurrencyAmount year, const YearFacts& facts) const {
    CurrencyAmount month;
    if (year > CurrencyAmount()) {
        if (facts.YearOfLife > 1) {
            month = ToAmount(Real(year) / 12.0);
        } else if (facts.YearOfLife == 1 && facts.ServiceMonth >= 1 && facts.ServiceMonth <= ComputeMonth) {
            const double rest = Real(12 - (facts.ServiceMonth - 1));
            const CurrencyAmount section179 = ToAmount(Real(record_.Section179) / rest);
            const CurrencyAmount additional = ToAmount(Real(record_.AddlDepr) / rest);
            month = ToAmount(Real(year) / rest) + section179 + additional;
        }
    }
    RoundAmount(month, roundText_);
    return month;
}

void ADepre::Say(DeprStatus status) {
    if (status != kStatusNone) status_ = status;
}

void ADepre::TraceCall(const AssetRecord& record, Date asOfDate, int book) const {
    std::string line(record.AssetNum.Trimmed());
    line.append(" ")
        .append(book < kFirstBook ? "no book" : BookOf(book).Name)
        .append(" as of ")
        .append(FormatShortDate(asOfDate));
    line.append(": ").append(record.CurrDepr[book].ToText()).append(" ").append(DeprStatusText());
    trace_->Line("engine", ToUtf8(RTrim(line)));
}

std::string ADepre::DeprStatusText() const {
    return status_ == kStatusNone ? std::string()
                                  : tallymar::DeprStatusText(status_, record_.Abandoned, record_.DateSold, record_.InService);
}

std::string ADepre::MissingTable() const {
    return status_ == kStatusTableNotFound
               ? DepreciationTables::NameOf(record_.DeprType, record_.DeprMethod, record_.Period, record_.AssetType)
               : std::string();
}

}  // namespace tallymar
