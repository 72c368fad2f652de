#include "assets/KeptEntries.h"

#include <utility>
#include <variant>

#include "assets/AssetFields.h"

namespace tallymar {

namespace {

template <typename Values, typename T>
auto& ItemOf(Values& values, T AssetFieldValues::*member, int /*book*/) {
    return values.*member;
}
template <typename Values, typename T>
auto& ItemOf(Values& values, T BookFieldValues::*member, int book) {
    return values.Book[book].*member;
}

}  // namespace

void KeptEntries::Keep(KeptAsset asset) {
    std::erase_if(kept_, [&asset](const KeptAsset& earlier) { return earlier.What == asset.What; });
    kept_.push_back(std::move(asset));
}

KeptAsset KeptEntries::TakeLast() {
    KeptAsset last = std::move(kept_.back());
    kept_.pop_back();
    return last;
}

void EnterAgain(const KeptAsset& kept, AssetFieldValues& values) {
    for (const AssetFieldDef& field : AssetFields()) {
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            std::visit(
                [&](auto member) {
                    const auto& entered = ItemOf(kept.Entered, member, book);
                    if (entered != ItemOf(kept.Stored, member, book)) ItemOf(values, member, book) = entered;
                },
                field.Member);
        }
    }
}

}  // namespace tallymar
