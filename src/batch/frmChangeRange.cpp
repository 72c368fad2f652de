#include "batch/frmChangeRange.h"

#include <array>

#include <QVBoxLayout>

#include "batch/ChangeAssets.h"
#include "batch/frmFromTo.h"
#include "platform/controls/CSCmdBtn.h"
#include "platform/controls/CSCombo.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/NumberEdit.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sitxEdit.h"
#include "store/CodeMeanings.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr CurrencyAmount kLongestClassLife = Units(99);
constexpr CurrencyAmount kLongestPeriod = CurrencyAmount::FromTenThousandths(999900);  // 99.99

template <typename Texts, typename Meanings>
CSCombo* List(const std::string& name, const Texts& texts, const Meanings& meanings, QWidget* form) {
    auto* list = Named(new CSCombo(form), name.c_str());
    list->Fill(texts);
    list->Explain(meanings);
    list->setCurrentIndex(-1);
    return list;
}

std::vector<std::string> Percentages() {
    std::vector<std::string> texts;
    for (const std::int16_t percent : kDecliningPercents) texts.push_back(std::to_string(percent));
    texts.emplace_back();
    return texts;
}

sidbEdit* Years(const std::string& name, CurrencyAmount most, QWidget* form) {
    return Named(new sidbEdit({CurrencyAmount(), most, 2, false}, form), name.c_str());
}

}  // namespace

frmChangeRange::frmChangeRange(CompanySession& session, QWidget* parent)
    : frmBatchForm("frmChangeRange", ToQString(kChangeRangeName), parent), session_(session) {
    auto* filters = new QGridLayout;
    FieldRows rows(filters);
    selection_ = AddAssetSelection(rows, this, true);
    SetNote(selection_.sitxDivision, tr("Division must be typed to its full 16 characters"));
    SetNote(selection_.sitxDepartment, tr("Department must be typed to its full 16 characters"));
    SetNote(selection_.sitxYear, YearNote());
    silgBook_ = Named(new silgEdit(kFirstBook, kLastBook, this), "silgBook");
    silgBook_->SetValue(kFirstBook);
    SetHint(silgBook_, tr("1 = Federal,  2 = State,  3 = Bookkeeping,  4 = A.M.T."));
    rows.Add(tr("Which Book (1 thru 4)"), silgBook_);

    from_ = MakeSide(tr("FROM"), tr("TO"), "From");
    to_ = MakeSide(tr("TO"), tr("FROM"), "To");
    for (QWidget* field :
         {static_cast<QWidget*>(from_.AssetType), static_cast<QWidget*>(from_.DeprType), static_cast<QWidget*>(from_.DeprMethod),
          static_cast<QWidget*>(from_.DBPercent), static_cast<QWidget*>(from_.ClassLife), static_cast<QWidget*>(from_.Period)}) {
        SetNote(field, tr("All six FROM fields must match: a blank one is no wildcard"));
    }
    SetNote(to_.ClassLife, tr("The class life itself stays, and sets this again when the asset is next changed"));

    auto* pairs = new QGridLayout;
    FromToRows fromTo(pairs);
    fromTo.Add(tr("Asset Type (RL, PP, IN)"), from_.AssetType, to_.AssetType);
    fromTo.Add(tr("Depr Type (MCRS, etc)"), from_.DeprType, to_.DeprType);
    fromTo.Add(tr("Depr Method (DB, SL, etc)"), from_.DeprMethod, to_.DeprMethod);
    fromTo.Add(tr("DB Percentage (200, 150, etc)"), from_.DBPercent, to_.DBPercent);
    fromTo.Add(tr("Class Life (3, 5, 7, etc)"), from_.ClassLife, to_.ClassLife);
    fromTo.Add(tr("Period (3, 5, 7, etc)"), from_.Period, to_.Period);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 14, 16, 12);
    all->setSpacing(12);
    all->addLayout(filters);
    all->addLayout(pairs);
    all->addLayout(
        MakeFoot(Named(new CSCmdBtn(tr("Change Assets"), this), "cmdChange"), [this](Prompts& prompts) { Change(prompts); }));
    // Row by row, From before To, as the eye goes.
    QWidget* before = silgBook_;
    const std::array<std::array<QWidget*, 2>, 6> order = {{{from_.AssetType, to_.AssetType},
                                                           {from_.DeprType, to_.DeprType},
                                                           {from_.DeprMethod, to_.DeprMethod},
                                                           {from_.DBPercent, to_.DBPercent},
                                                           {from_.ClassLife, to_.ClassLife},
                                                           {from_.Period, to_.Period}}};
    for (const auto& row : order) {
        for (QWidget* field : row) {
            setTabOrder(before, field);
            before = field;
        }
    }
}

frmChangeRange::Side frmChangeRange::MakeSide(const QString& which, const QString& other, const char* ending) {
    const auto name = [ending](const char* start) { return std::string(start) + ending; };
    const Side side{List(name("cboAT"), kAssetTypes, kAssetTypeMeanings, this),
                    List(name("cboDT"), kDeprTypes, kDeprTypeMeanings, this),
                    List(name("cboDM"), kDeprMethods, kDeprMethodMeanings, this),
                    List(name("cboDBP"), Percentages(), kDecliningPercentMeanings, this),
                    Years(name("sidbCL"), kLongestClassLife, this),
                    Years(name("sidbP"), kLongestPeriod, this)};
    const auto hint = [&](QWidget* field, const QString& what) {
        SetHint(field, tr("Enter the %1 %2.  May be the same as the %3 %2").arg(which, what, other));
    };
    hint(side.AssetType, tr("Asset Type"));
    hint(side.DeprType, tr("Depr Type"));
    hint(side.DeprMethod, tr("Depr Method"));
    hint(side.DBPercent, tr("DB Percent"));
    hint(side.ClassLife, tr("Asset Class"));
    hint(side.Period, tr("Asset Period"));
    return side;
}

DepreciationSetUp frmChangeRange::Entered(const Side& side) {
    return {.AssetType = side.AssetType->Text(),
            .DeprType = side.DeprType->Text(),
            .DeprMethod = side.DeprMethod->Text(),
            .DBPercent = side.DBPercent->Text(),
            .ClassLife = side.ClassLife->Value(),
            .Period = side.Period->Value()};
}

void frmChangeRange::Change(Prompts& prompts) {
    const std::int64_t changed = ChangeRange(session_,
                                             {.Division = selection_.sitxDivision->Text(),
                                              .Department = selection_.sitxDepartment->Text(),
                                              .Year = selection_.sitxYear->Text(),
                                              .Book = silgBook_->Value(),
                                              .From = Entered(from_),
                                              .To = Entered(to_)},
                                             prompts);
    ShowResult({NumberChangedText(changed)});
}

}  // namespace tallymar
