#pragma once

#include <array>
#include <tuple>
#include <vector>

#include "platform/recordset/Recordset.h"
#include "platform/runtime/PerBook.h"
#include "store/AssetColumns.h"
#include "store/AssetRecord.h"

namespace tallymar {

// Moves an asset between the current row of a recordset on Assets and an AssetRecord. None of the operations moves the recordset.
// The database's failures (no current record, a duplicate AssetNum, a lock, a text longer than its column) reach the caller; a
// failed write leaves the stored row as it was and no edit pending.
class AssetRecordAccess {
 public:
    // Looks the columns up once, since files of earlier releases hold them in another order. Failure::ItemNotFound when one is
    // missing.
    explicit AssetRecordAccess(recordset::Recordset& assets);

    // A Null reads as empty, 0 or date 0, but in a Boolean column it fails with InvalidUseOfNull. FedLife is set from ClassLife,
    // and a blank CodeSection below a class life of 11 becomes "1245".
    void ReadAssetRecord(AssetRecord& record);
    // Rewrites the row. An empty TaxGroup is stored as six blanks.
    void WriteAssetRecord(const AssetRecord& record);
    // What a computation may have changed of the book, no other column: for a row that WriteAssetRecord has rewritten in the same
    // batch, where it leaves exactly what WriteAssetRecord would.
    void WriteComputed(const AssetRecord& record, int book);
    // The same, TaxGroup as it stands: for a row that becomes another company's asset.
    void ReplaceAssetRecord(const AssetRecord& record);
    // Adds a row, TaxGroup as it stands.
    void AddAssetRecord(const AssetRecord& record);

 private:
    void Store(const AssetRecord& record, bool blankTaxGroup);
    template <typename SetColumns>
    void Finish(SetColumns setColumns);

    recordset::Recordset* assets_;
    std::vector<int> ordinals_;  // in the order in which the columns are visited
    PerBook<std::array<int, std::tuple_size_v<decltype(kComputedMembers)>>> computedOrdinals_;  // of kComputedMembers
};

// Fails as a command would that reads a row with this value in the column: what a user may put there has to be read again.
void RequireReadable(const AssetColumn& column, const recordset::Value& value);

}  // namespace tallymar
