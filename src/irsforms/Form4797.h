#pragma once

#include <array>
#include <string>
#include <vector>

#include "irsforms/IrsForm.h"

namespace tallymar {

// Form 4797, Sales of Business Property, from the assets of a book that are marked sold. Amounts are dollars; texts and dates are
// as the form prints them.
class Form4797 : public IrsForm {
 public:
    static const FormInfo kInfo;

    // A sale of Part I or II, or one that is only counted.
    struct SaleRow {
        std::string AssetNum;
        std::string SaleDesc;
        std::string SaleAcquired;
        std::string SaleSold;
        CurrencyAmount SalePrice;
        CurrencyAmount SaleDepr;
        CurrencyAmount SaleCost;
        CurrencyAmount SaleGain;
        CurrencyAmount SaleLoss;  // always 0
        std::string SaleTerm;     // "L" long, "S" short, "M" both
        std::string SaleFlag = "N";

        friend bool operator==(const SaleRow&, const SaleRow&) = default;
    };
    // A property of Part III.
    struct RecaptureRow {
        std::string AssetNum;
        std::string RecapDesc;
        std::string RecapAcquired;
        std::string RecapSold;
        std::string RecapSection;  // "1245", "1250", "1252", "1254", "1255"
        CurrencyAmount RecapPrice;
        CurrencyAmount RecapCost;
        CurrencyAmount RecapDepr;
        CurrencyAmount RecapAdjusted;
        CurrencyAmount RecapGain;
        CurrencyAmount RecapSec1245;
        CurrencyAmount RecapFinal;

        friend bool operator==(const RecaptureRow&, const RecaptureRow&) = default;
    };

    Form4797();

    std::unique_ptr<IrsForm> Clone() const override { return std::make_unique<Form4797>(*this); }
    const FormInfo& Info() const override { return kInfo; }
    void Take(const AssetRecord& asset, FormScan& scan) override;
    void ComputeLines(const FormSettings& settings) override;
    void Write(FormOutput& output) override;
    void ExchangeWorkFile(WorkFile& file) override;
    std::string Message() const override;
    void WriteTables(JsonWriter& json) const override;

    bool IsPartnership() const { return type_ == "1065" || type_ == "1120S"; }  // or S corporation
    // COMPAT: page 2 shows cents only for an "N", which the Round column never reads.
    bool KeepsCents() const { return round_ == "N"; }
    const std::vector<SaleRow>& LongTable() const { return longTable_; }
    const std::vector<RecaptureRow>& RecaptureTable() const { return recaptureTable_; }
    bool HasLikeKind() const { return !likeKind_.empty(); }

 private:
    void TakeLong(const AssetRecord& asset, SaleRow sale);
    void AddSale(const AssetRecord& asset, SaleRow sale, std::string_view term);
    bool OnlyCounted(const AssetRecord& asset, const SaleRow& sale);

    std::string type_;
    std::string round_;
    std::vector<SaleRow> longTable_;
    std::vector<RecaptureRow> recaptureTable_;
    std::vector<SaleRow> casualty_;
    std::vector<SaleRow> likeKind_;
    int sold_ = 0;
};

}  // namespace tallymar
