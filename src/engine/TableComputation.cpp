#include "engine/ADepre.h"
#include "engine/DepreciationTableFile.h"
#include "engine/EngineMath.h"
#include "store/Vocabularies.h"

namespace tallymar {

void ADepre::ComputeFromTable() {
    const std::string name = DepreciationTableFile::NameFor(DeprTypeCode(record_.DeprType), DeprMethodCode(record_.DeprMethod),
                                                            record_.Period, record_.AssetType);
    const std::filesystem::path path = DepreciationTableFile::Find(tableFolder_, name);
    if (path.empty()) return SetStatus(kStatusTableNotFound);
    // Read afresh each time: a corrected file holds from the next asset on.
    const DepreciationTableFile table(path);
    yearResult_ = PercentageToCent(maxDepr_, table.Percentage(serviceMonth_, yearOfLife_));
    if (!disposed_) return;

    const double month = Real(yearResult_) / 12.0;
    if (record_.Convention() != 'Y') {
        yearResult_ = ToAmount(month * Real(saleMonth_));
    } else if (record_.ClassLife == Units(15)) {
        yearResult_ = ToAmount(month * Real(saleMonth_ - 1));
    } else if (record_.ClassLife > Units(15)) {
        yearResult_ = ToAmount(month * (Real(saleMonth_) - 0.5));
    }
    SetStatus(kStatusDepreciatedToSale);
}

}  // namespace tallymar
