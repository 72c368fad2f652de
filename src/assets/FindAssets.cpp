#include "assets/FindAssets.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

#include "platform/runtime/Format.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

struct ColumnDef {
    std::string_view Heading;
    std::string_view Column;
};

// By FindColumn.
constexpr std::array<ColumnDef, 6> kColumnDefs = {{{"Asset #", "AssetNum"},
                                                   {"Division", "Division"},
                                                   {"Department", "Department"},
                                                   {"G/L Number", "AccountNum"},
                                                   {"Date", "InService"},
                                                   {"Description", "Description"}}};

const ColumnDef& DefOf(FindColumn column) {
    return kColumnDefs[static_cast<std::size_t>(column)];
}

// What a search looks at.
constexpr std::string_view kSearchColumns[] = {"AssetNum", "Description", "Descrip2", "SerialNum", "AccountNum"};
constexpr char kBetweenTexts = '\0';  // no word reaches over it
constexpr std::string_view kBlanks = " \t";

// The text that sorts in the order of the days.
constexpr std::string_view kDatePicture = "yyyy/mm/dd";

// How a cell sorts: empty cells, then numbers as numbers, then other texts as texts, whatever their letter case. The head of the
// text decides nearly all comparisons without going to the text itself.
struct SortKey {
    enum class Kind : std::uint8_t { Empty, Number, Text };
    using HeadBytes = std::array<std::uint64_t, 2>;

    Kind Type;
    double Number;
    HeadBytes Head;
    std::string_view Whole;
    std::uint32_t Row;
};

// The capital of every byte.
const std::array<unsigned char, 256>& Capitals() {
    static const std::array<unsigned char, 256> capitals = [] {
        std::array<unsigned char, 256> table;
        for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<unsigned char>(ToUpper(static_cast<char>(i)));
        return table;
    }();
    return capitals;
}

unsigned char Weight(char c, bool anyCase) {
    const auto byte = static_cast<unsigned char>(c);
    return anyCase ? Capitals()[byte] : byte;
}

std::optional<double> NumberOf(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789.-") != std::string_view::npos) return std::nullopt;
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

SortKey::HeadBytes HeadOf(std::string_view text, bool anyCase) {
    SortKey::HeadBytes head{};
    for (std::size_t i = 0; i < sizeof head; ++i) {
        std::uint64_t& part = head[i / sizeof part];
        part = part << 8 | (i < text.size() ? Weight(text[i], anyCase) : 0U);
    }
    return head;
}

int CompareTexts(std::string_view a, std::string_view b, bool anyCase) {
    const std::size_t both = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < both; ++i) {
        const int difference = Weight(a[i], anyCase) - Weight(b[i], anyCase);
        if (difference != 0) return difference;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

SortKey GenericKey(std::string_view text, std::uint32_t row) {
    if (text.empty()) return {SortKey::Kind::Empty, 0.0, {}, text, row};
    if (const auto number = NumberOf(text)) return {SortKey::Kind::Number, *number, {}, text, row};
    return {SortKey::Kind::Text, 0.0, HeadOf(text, true), text, row};
}

SortKey StringKey(std::string_view text, std::uint32_t row) {
    return {SortKey::Kind::Text, 0.0, HeadOf(text, false), text, row};
}

bool Less(const SortKey& a, const SortKey& b, bool anyCase) {
    if (a.Type != b.Type) return a.Type < b.Type;
    if (a.Type == SortKey::Kind::Number) return a.Number < b.Number;
    if (a.Head != b.Head) return a.Head < b.Head;
    return CompareTexts(a.Whole, b.Whole, anyCase) < 0;
}

CurrencyAmount AmountOf(const recordset::Value& value) {
    return value.IsNull() ? CurrencyAmount() : value.Currency();
}

}  // namespace

DisposalColumns::DisposalColumns(const recordset::Recordset& assets)
    : soldAmount_(assets.Ordinal("SoldAmount")),
      soldExpense_(assets.Ordinal("SoldExpense")),
      abandoned_(assets.Ordinal("Abandoned")),
      casualty_(assets.Ordinal("Casualty")),
      sold_(assets.Ordinal("Sold")),
      likeKind_(assets.Ordinal("LikeKind")),
      notice4_(assets.Ordinal("Notice4")) {}

DisposalMarks DisposalColumns::Read(const recordset::Recordset& assets) const {
    return {.SoldAmount = AmountOf(assets.Get(soldAmount_)),
            .SoldExpense = AmountOf(assets.Get(soldExpense_)),
            .Abandoned = assets.Get(abandoned_).Boolean(),
            .Casualty = assets.Get(casualty_).Boolean(),
            .Sold = assets.Get(sold_).Boolean(),
            .LikeKind = assets.Get(likeKind_).Boolean(),
            .Notice4 = assets.Get(notice4_).Boolean()};
}

FindColumns FindColumns::For(bool byDate, bool byGLNumber) {
    using enum FindColumn;
    if (!byDate) return {{AssetNum, Division, byGLNumber ? AccountNum : Department, Description}};
    return {{AssetNum, byGLNumber ? AccountNum : Division, InService, Description}};
}

std::string_view FindColumns::Heading(int column) const {
    return DefOf(Columns[static_cast<std::size_t>(column)]).Heading;
}

std::optional<int> FindColumns::Find(std::string_view name) const {
    for (int column = 0; column < kCount; ++column) {
        const ColumnDef& def = DefOf(Columns[static_cast<std::size_t>(column)]);
        if (UCase(def.Heading) == UCase(name) || UCase(def.Column) == UCase(name)) return column;
    }
    return std::nullopt;
}

FindAssets::FindAssets(CompanySession& session, bool byDate, bool byGLNumber)
    : columns_(FindColumns::For(byDate, byGLNumber)), assets_(session.Database().OpenRecordset("Assets")), disposal_(assets_) {
    for (std::size_t column = 0; column < ordinals_.size(); ++column) {
        ordinals_[column] = assets_.Ordinal(DefOf(columns_.Columns[column]).Column);
    }
    for (const std::string_view column : kSearchColumns) searchOrdinals_.push_back(assets_.Ordinal(column));
    assets_.SetIndex("AssetNum");
    assets_.MoveFirst();
    const auto count = static_cast<std::size_t>(assets_.RecordCount());
    rows_.reserve(count);
    order_.reserve(count);
    shown_.reserve(count);
}

bool FindAssets::FillMore(std::int64_t rows) {
    if (filled_) return false;
    for (; rows > 0 && !assets_.Eof(); --rows, assets_.MoveNext()) Append();
    if (!assets_.Eof()) return true;
    filled_ = true;
    return false;
}

void FindAssets::FillAll() {
    FillMore(std::numeric_limits<std::int64_t>::max());
}

void FindAssets::Append() {
    Row row{.Start = static_cast<std::uint32_t>(texts_.size()),
            .SearchStart = static_cast<std::uint32_t>(searched_.size()),
            .Lengths = {},
            .Disposed = CheckDisposed(disposal_.Read(assets_))};
    for (std::size_t column = 0; column < ordinals_.size(); ++column) {
        const recordset::Value value = assets_.Get(ordinals_[column]);
        const std::size_t start = texts_.size();
        if (value.IsDate()) {
            texts_ += Format(value.AsDate(), kDatePicture);
        } else if (value.Type() == recordset::Value::Kind::Text) {
            texts_ += RTrim(value.Text());
        }
        // Columns of the find grid are at most 32 characters wide; a foreign file's longer ones are cut.
        texts_.resize(std::min(texts_.size(), start + std::numeric_limits<std::uint8_t>::max()));
        row.Lengths[column] = static_cast<std::uint8_t>(texts_.size() - start);
    }
    for (const int ordinal : searchOrdinals_) {
        const recordset::Value value = assets_.Get(ordinal);
        if (value.Type() == recordset::Value::Kind::Text) {
            for (const char c : RTrim(value.Text())) searched_ += static_cast<char>(Weight(c, true));
        }
        searched_ += kBetweenTexts;
    }
    const auto place = static_cast<std::uint32_t>(rows_.size());
    rows_.push_back(row);
    order_.push_back(place);
    if (Matches(place)) shown_.push_back(place);
}

bool FindAssets::Matches(std::uint32_t row) const {
    const std::size_t start = rows_[row].SearchStart;
    const std::size_t end = row + 1 < rows_.size() ? rows_[row + 1].SearchStart : searched_.size();
    const std::string_view text = std::string_view(searched_).substr(start, end - start);
    return std::all_of(words_.begin(), words_.end(),
                       [text](const std::string& word) { return text.find(word) != std::string_view::npos; });
}

void FindAssets::Search(std::string_view text) {
    words_.clear();
    while (!text.empty()) {
        const std::size_t start = std::min(text.find_first_not_of(kBlanks), text.size());
        const std::size_t end = std::min(text.find_first_of(kBlanks, start), text.size());
        if (end > start) words_.push_back(UCase(text.substr(start, end - start)));
        text.remove_prefix(end);
    }
    ShowMatches();
}

void FindAssets::ShowMatches() {
    shown_.clear();
    std::copy_if(order_.begin(), order_.end(), std::back_inserter(shown_), [this](std::uint32_t row) { return Matches(row); });
}

std::optional<int> FindAssets::RowOf(std::string_view assetNum) const {
    const auto found = std::find_if(shown_.begin(), shown_.end(),
                                    [&](std::uint32_t row) { return CompareTexts(Text(row, 0), RTrim(assetNum), true) == 0; });
    if (found == shown_.end()) return std::nullopt;
    return static_cast<int>(found - shown_.begin());
}

std::string_view FindAssets::Text(std::uint32_t row, int column) const {
    const Row& entry = rows_[row];
    std::size_t start = entry.Start;
    for (int before = 0; before < column; ++before) start += entry.Lengths[static_cast<std::size_t>(before)];
    return std::string_view(texts_).substr(start, entry.Lengths[static_cast<std::size_t>(column)]);
}

std::string FindAssets::Cell(int row, int column) const {
    const std::uint32_t entry = shown_.at(static_cast<std::size_t>(row));
    std::string text(Text(entry, column));
    if (column == 0 && rows_[entry].Disposed) text += kDisposedMark;
    return text;
}

std::string FindAssets::AssetNum(int row) const {
    return std::string(Text(shown_.at(static_cast<std::size_t>(row)), 0));
}

void FindAssets::Sort(int column) {
    // COMPAT: dates run against the other columns: the first click shows the newest.
    const bool isDate = columns_.Columns[static_cast<std::size_t>(column)] == FindColumn::InService;
    Sort(column, sortAscending_ != isDate);
    sortAscending_ = !sortAscending_;
}

void FindAssets::Sort(int column, bool ascending) {
    FillAll();
    const bool isDate = columns_.Columns[static_cast<std::size_t>(column)] == FindColumn::InService;
    std::vector<SortKey> keys;
    keys.reserve(order_.size());
    for (const std::uint32_t row : order_)
        keys.push_back(isDate ? StringKey(Text(row, column), row) : GenericKey(Text(row, column), row));
    std::stable_sort(keys.begin(), keys.end(), [ascending, isDate](const SortKey& a, const SortKey& b) {
        return ascending ? Less(a, b, !isDate) : Less(b, a, !isDate);
    });
    std::transform(keys.begin(), keys.end(), order_.begin(), [](const SortKey& key) { return key.Row; });
    sortedColumn_ = column;
    descending_ = !ascending;
    ShowMatches();
}

std::optional<int> FindAssets::Jump(std::string_view text, int from) const {
    const int count = RowCount();
    for (int i = 0; i < count; ++i) {
        const int row = (from + i) % count;
        const std::string_view cell = Text(shown_[static_cast<std::size_t>(row)], sortedColumn_);
        if (cell.size() >= text.size() && CompareTexts(cell.substr(0, text.size()), text, true) == 0) return row;
    }
    return std::nullopt;
}

bool SelectAsset(CompanySession& session, const std::string& shownNumber, Prompts& prompts) {
    const std::string number = shownNumber.substr(0, shownNumber.find('('));
    recordset::Recordset& assets = session.AssetsRecordset();
    assets.Seek(number);
    if (!assets.NoMatch()) return true;
    prompts.Message("Asset " + number + " no longer exists", "Tallymar", MessageKind::Warning);
    return false;
}

}  // namespace tallymar
