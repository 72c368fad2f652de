#pragma once

#include <array>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

inline constexpr int kFirstBook = 1;
inline constexpr int kLastBook = 4;

// One value for each book: 1 Federal, 2 State, 3 Bookkeeping, 4 A.M.T. Slot 0 exists and is never used with a meaning. An index
// outside 0 to 4 fails with Failure::SubscriptOutOfRange.
template <typename T>
class PerBook {
 public:
    T& operator[](int book) { return values_[Checked(book)]; }
    const T& operator[](int book) const { return values_[Checked(book)]; }

    friend bool operator==(const PerBook&, const PerBook&) = default;

 private:
    static std::size_t Checked(int book) {
        if (book < 0 || book > kLastBook) throw PlatformError(Failure::SubscriptOutOfRange);
        return static_cast<std::size_t>(book);
    }

    std::array<T, kLastBook + 1> values_{};
};

}  // namespace tallymar
