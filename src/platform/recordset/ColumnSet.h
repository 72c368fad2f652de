#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tallymar::recordset {

// A set of the columns of one table, by their ordinals.
class ColumnSet {
 public:
    explicit ColumnSet(std::size_t columns = 0) : words_((columns + 63) / 64) {}

    void Add(std::size_t column) { words_[column / 64] |= Bit(column); }
    void Remove(std::size_t column) { words_[column / 64] &= ~Bit(column); }
    bool Has(std::size_t column) const { return (words_[column / 64] & Bit(column)) != 0; }
    void Clear() { words_.assign(words_.size(), 0); }

    bool IsEmpty() const {
        for (const std::uint64_t word : words_) {
            if (word != 0) return false;
        }
        return true;
    }
    bool Meets(const ColumnSet& other) const {
        for (std::size_t i = 0; i < words_.size(); ++i) {
            if ((words_[i] & other.words_[i]) != 0) return true;
        }
        return false;
    }
    bool Contains(const ColumnSet& other) const {
        for (std::size_t i = 0; i < words_.size(); ++i) {
            if ((other.words_[i] & ~words_[i]) != 0) return false;
        }
        return true;
    }
    ColumnSet Without(const ColumnSet& other) const {
        ColumnSet rest = *this;
        for (std::size_t i = 0; i < words_.size(); ++i) rest.words_[i] &= ~other.words_[i];
        return rest;
    }
    ColumnSet With(const ColumnSet& other) const {
        ColumnSet both = *this;
        for (std::size_t i = 0; i < words_.size(); ++i) both.words_[i] |= other.words_[i];
        return both;
    }

    template <typename Visit>
    void ForEach(Visit&& visit) const {
        for (std::size_t i = 0; i < words_.size(); ++i) {
            for (std::uint64_t word = words_[i]; word != 0; word &= word - 1) {
                visit(i * 64 + static_cast<std::size_t>(std::countr_zero(word)));
            }
        }
    }

    friend bool operator==(const ColumnSet&, const ColumnSet&) = default;

 private:
    static std::uint64_t Bit(std::size_t column) { return std::uint64_t{1} << (column % 64); }

    std::vector<std::uint64_t> words_;
};

}  // namespace tallymar::recordset
