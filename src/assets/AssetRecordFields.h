#pragma once

#include "assets/AssetFieldValues.h"
#include "store/AssetRecord.h"

namespace tallymar {

// Puts a record into the fields. Lists take only what they have an entry for and otherwise stay where they stood. The computed
// fields are left to the field rules.
void RecordToFields(const AssetRecord& record, AssetFieldValues& values);

// Puts the fields into a record; what has no field, and an index that its list has no entry for, stays. A date field whose text
// is no date gives date 0.
void FieldsToRecord(const AssetFieldValues& values, AssetRecord& record);

}  // namespace tallymar
