#include "platform/recordset/TableDef.h"

#include "platform/recordset/Names.h"

namespace tallymar::recordset {

namespace {

template <typename Item>
const Item* Find(const std::vector<Item>& items, std::string_view name) {
    for (const Item& item : items) {
        if (SameName(item.Name, name)) return &item;
    }
    return nullptr;
}

}  // namespace

const Field* TableDef::FindField(std::string_view name) const {
    return Find(Fields, name);
}

const Index* TableDef::FindIndex(std::string_view name) const {
    return Find(Indexes, name);
}

}  // namespace tallymar::recordset
