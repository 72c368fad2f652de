#include "store/CompanyLimits.h"

#include <string>

#include "platform/recordset/Names.h"
#include "platform/recordset/Recordset.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr const char* kTable = "Choices";
constexpr const char* kName = "Name";
constexpr const char* kValue = "Value";
constexpr const char* kLimits = "Limits";

recordset::TableDef ChoicesTable() {
    return {.Name = kTable,
            .Fields = {{.Name = kName, .Size = 32}, {.Name = kValue, .Size = 32}},
            .Indexes = {{.Name = kName, .Fields = {kName}, .Primary = true, .Required = true}}};
}

recordset::Recordset OpenChoices(recordset::Database& database) {
    recordset::Recordset choices = database.OpenRecordset(kTable);
    choices.SetIndex(kName);
    choices.Seek(kLimits);
    return choices;
}

}  // namespace

const LimitsName& NameOf(Limits choice) {
    return kLimitsNames[choice == Limits::ByLaw ? 1 : 0];
}

Limits LimitsOfWord(std::string_view word) {
    for (const LimitsName& name : kLimitsNames) {
        if (recordset::SameName(name.Word, word)) return name.Choice;
    }
    throw PlatformError(Failure::InvalidCall, "Limits are Delivered or Law, not \"" + std::string(word) + "\"");
}

Limits LimitsOf(recordset::Database& database) {
    if (!database.HasTable(kTable)) return Limits::AsDelivered;
    const recordset::Recordset choices = OpenChoices(database);
    if (choices.NoMatch()) return Limits::AsDelivered;
    const std::string word = choices.Get(kValue).ToText();
    for (const LimitsName& name : kLimitsNames) {
        if (name.Word == word) return name.Choice;
    }
    throw PlatformError(Failure::TypeMismatch, "The company's choice of limits is unreadable; choose them again in its profile");
}

void SetLimits(recordset::Database& database, Limits choice) {
    if (!database.HasTable(kTable)) {
        if (choice == Limits::AsDelivered) return;
        database.CreateTable(ChoicesTable());
    }
    recordset::Recordset choices = OpenChoices(database);
    if (choices.NoMatch()) {
        choices.AddNew();
        choices.Set(kName, kLimits);
    } else {
        choices.Edit();
    }
    choices.Set(kValue, NameOf(choice).Word);
    choices.Update();
}

}  // namespace tallymar
