#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/CompanySession.h"
#include "store/Disposal.h"

namespace tallymar {

// Where a recordset holds what tells whether its current asset has been disposed of.
class DisposalColumns {
 public:
    explicit DisposalColumns(const recordset::Recordset& assets);
    DisposalMarks Read(const recordset::Recordset& assets) const;

 private:
    int soldAmount_;
    int soldExpense_;
    int abandoned_;
    int casualty_;
    int sold_;
    int likeKind_;
    int notice4_;
};

inline constexpr std::string_view kDisposedMark = "(*)";

enum class FindColumn : std::uint8_t { AssetNum, Division, Department, AccountNum, InService, Description };

struct FindColumns {
    static constexpr int kCount = 4;
    std::array<FindColumn, kCount> Columns;

    static FindColumns For(bool byDate, bool byGLNumber);
    std::string_view Heading(int column) const;
    // The column of that heading or column name, in any letter case; nullopt when there is none.
    std::optional<int> Find(std::string_view name) const;
};

// The list of all assets in the find window: a view of the company, sorted on a click, narrowed to what is searched for, with a
// jump to what is typed.
//
// It reads the company through a recordset of its own, as far as it is asked to: a window shows the first rows at once and lets
// the rest come while it waits for its user. Of a row it keeps, in two blocks of text, what its cells show and sort by and what a
// search looks at (about 120 bytes a row). What others change or delete afterwards shows in the next window.
class FindAssets {
 public:
    FindAssets(CompanySession& session, bool byDate, bool byGLNumber);

    const FindColumns& Columns() const { return columns_; }

    // Reads that many rows more. False when all are in.
    bool FillMore(std::int64_t rows);
    void FillAll();
    bool IsFilled() const { return filled_; }

    // Narrows the list to the assets that have every word of the text somewhere in their number, description (either line),
    // serial or G/L number, in any letter case; of the rows read so far, and of those read later. A blank text shows all.
    void Search(std::string_view text);
    // Of the rows read so far, those outside the search too.
    int AssetsRead() const { return static_cast<int>(order_.size()); }

    // The rows that the search lets through.
    int RowCount() const { return static_cast<int>(shown_.size()); }
    std::string Cell(int row, int column) const;
    // The number without the mark.
    std::string AssetNum(int row) const;

    // A click on a heading; reads what is missing first. The direction turns with every click, whatever the column. Equal rows
    // keep their order.
    void Sort(int column);
    // The same with a direction that is told, as the command line does.
    void Sort(int column, bool ascending);
    bool SortAscending() const { return sortAscending_; }
    int SortedColumn() const { return sortedColumn_; }  // the first until a sort
    bool IsDescending() const { return descending_; }   // how the rows stand now

    // The next row, from `from` on and around the end, whose cell of the sorted column begins with the text, in any letter case.
    std::optional<int> Jump(std::string_view text, int from) const;
    // The row of that asset number; nullopt when it has not been read or the search leaves it out.
    std::optional<int> RowOf(std::string_view assetNum) const;

 private:
    struct Row {
        std::uint32_t Start;        // of its texts in texts_
        std::uint32_t SearchStart;  // of what a search looks at, in searched_
        std::array<std::uint8_t, FindColumns::kCount> Lengths;
        bool Disposed;
    };

    void Append();
    bool Matches(std::uint32_t row) const;
    void ShowMatches();
    std::string_view Text(std::uint32_t row, int column) const;

    FindColumns columns_;
    recordset::Recordset assets_;
    std::array<int, FindColumns::kCount> ordinals_;
    DisposalColumns disposal_;
    std::vector<int> searchOrdinals_;
    std::vector<Row> rows_;
    std::string texts_;
    std::string searched_;              // the texts of each row in capitals
    std::vector<std::uint32_t> order_;  // of rows_, as sorted
    std::vector<std::uint32_t> shown_;  // those of them that match
    std::vector<std::string> words_;    // in capitals
    bool filled_ = false;
    bool sortAscending_ = true;
    bool descending_ = false;
    int sortedColumn_ = 0;
};

// Moves the company's recordset to the asset of that number; false, after a message, when it is no longer there.
bool SelectAsset(CompanySession& session, const std::string& shownNumber, Prompts& prompts);

}  // namespace tallymar
