#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <variant>

#include "Things.h"

// Random operations on recordsets, beside a model that does the same on a map of rows. Everything that can be observed must agree
// after every step: two recordsets on one table, indexes with many equal and Null keys, batches taken back, files closed and
// opened.
namespace tallymar::recordset {
namespace {

enum FieldOrdinal { kName, kGroup, kWhen, kAmount, kCount, kFlag, kFieldCount };

TableDef Table() {
    return {.Name = "Things",
            .Fields = {{"Name", FieldType::Text, 8, false},
                       {"Group(1)", FieldType::Text, 4, true},
                       {"When", FieldType::Date, 0, false},
                       {"Amount", FieldType::Currency, 0, false},
                       {"Count", FieldType::Integer, 0, false},
                       {"Flag", FieldType::Boolean, 0, false}},
            .Indexes = {{"Name", {"Name"}, true, true},
                        {"GroupWhen", {"Group(1)", "When"}, false, false},
                        {"Mixed", {"Amount", "Group(1)", "Flag", "Count"}, false, false}}};
}

using Cell = std::variant<std::monostate, std::string, double, std::int64_t>;
using Cells = std::vector<Cell>;

struct Row {
    int Id = 0;
    Cells Values;
};

// As a key compares: no trailing blanks, no case.
Cell KeyOf(const Cell& cell) {
    if (!std::holds_alternative<std::string>(cell)) return cell;
    std::string text = std::get<std::string>(cell);
    text.erase(text.find_last_not_of(' ') + 1);
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    }
    return text;
}

struct Order {
    std::string Name;
    std::vector<int> Keys;

    std::vector<Cell> KeysOf(const Cells& values) const {
        std::vector<Cell> keys;
        for (const int key : Keys) keys.push_back(KeyOf(values[static_cast<std::size_t>(key)]));
        return keys;
    }
    bool Less(const Row& a, const Row& b) const {
        const auto x = KeysOf(a.Values);
        const auto y = KeysOf(b.Values);
        return x != y ? x < y : a.Id < b.Id;
    }
};

const std::vector<Order> kOrders = {
    {"", {}}, {"Name", {kName}}, {"GroupWhen", {kGroup, kWhen}}, {"Mixed", {kAmount, kGroup, kFlag, kCount}}};

using Rows = std::map<int, Cells>;

// What a recordset must show.
struct Cursor {
    enum Place { Empty, Bof, OnRow, Eof, NoMatch, Gone };
    enum Pending { None, Edit, AddNew };

    const Order* By = &kOrders[0];
    Place At = Empty;
    Row Seen;  // the current row as last looked at; if it is gone, the place of the recordset
    Pending Edits = None;
    Cells Before;
    Cells After;

    void Look(const Rows& rows) {
        if (At != OnRow) return;
        const auto found = rows.find(Seen.Id);
        if (found == rows.end()) {
            At = Gone;
        } else {
            Seen.Values = found->second;
        }
    }
    std::vector<Row> Sorted(const Rows& rows) const {
        std::vector<Row> sorted;
        for (const auto& [id, values] : rows) sorted.push_back({id, values});
        std::sort(sorted.begin(), sorted.end(), [this](const Row& a, const Row& b) { return By->Less(a, b); });
        return sorted;
    }
    void Land(const Row& row) {
        At = OnRow;
        Seen = row;
    }
    void End(const Rows& rows, bool first) {
        Edits = None;
        const auto sorted = Sorted(rows);
        At = Empty;
        if (!sorted.empty()) Land(first ? sorted.front() : sorted.back());
    }
    bool Move(const Rows& rows, bool forward) {  // false: NoCurrentRecord
        Edits = None;
        if (At == (forward ? Bof : Eof)) {
            End(rows, forward);
            return true;
        }
        if (At != OnRow && At != Gone) return false;
        std::optional<Row> next;
        for (const Row& row : Sorted(rows)) {
            if (forward && !next && By->Less(Seen, row)) next = row;
            if (!forward && By->Less(row, Seen)) next = row;
        }
        if (next) {
            Land(*next);
        } else {
            At = At == Gone && rows.empty() ? Empty : forward ? Eof : Bof;
        }
        return true;
    }
};

class Driver {
 public:
    explicit Driver(unsigned seed) : random_(seed) {
        database_.emplace(Database::Create(path_));
        database_->CreateTable(Table());
        OpenRecordsets();
    }

    void Step() {
        const std::size_t which = Pick(2);
        Recordset& records = *records_[which];
        Cursor& cursor = cursors_[which];
        // How often each thing is done, in twentieths; what is left is for the batches and the reopening.
        using Action = void (Driver::*)(Recordset&, Cursor&);
        static constexpr std::pair<int, Action> kSteps[] = {
            {1, &Driver::SetIndex},     {2, &Driver::MoveEnd},     {5, &Driver::MoveSome},    {2, &Driver::Seek},
            {1, &Driver::KeepBookmark}, {1, &Driver::UseBookmark}, {2, &Driver::Edit},        {2, &Driver::AddNew},
            {1, &Driver::Update},       {1, &Driver::Cancel},      {1, &Driver::DeleteOrEdit}};
        int left = static_cast<int>(Pick(20));
        for (const auto& [share, step] : kSteps) {
            if (left >= 0 && left < share) (this->*step)(records, cursor);
            left -= share;
        }
        if (left >= 0) Pick(8) == 0 ? Reopen() : Batch();
        Compare();
    }

    std::size_t MostRows() const { return mostRows_; }

 private:
    std::size_t Pick(std::size_t below) { return std::uniform_int_distribution<std::size_t>(0, below - 1)(random_); }

    void OpenRecordsets() {
        for (std::size_t i = 0; i < 2; ++i) {
            records_[i].emplace(database_->OpenRecordset("things"));
            cursors_[i] = Cursor();
            cursors_[i].End(rows_, true);
        }
    }

    Cell RandomCell(int field) {
        static const std::vector<std::string> kNames = {"a", "A  ", "b1",     "B2",     "c",  "\xE9t\xE9",
                                                        "Z", "q",   "000001", "000002", "10", "9"};
        static const std::vector<std::string> kGroups = {"", "x", "X ", "y", "\xFC"};
        if (field != kFlag && Pick(6) == 0) return {};
        switch (field) {
            case kName:
                return kNames[Pick(kNames.size())] + (Pick(4) == 0 ? std::to_string(Pick(30)) : "");
            case kGroup:
                return kGroups[Pick(kGroups.size())];
            case kWhen:
                return 37000.0 + static_cast<double>(Pick(3)) / 4;
            case kAmount:
                return static_cast<std::int64_t>(Pick(3)) * 12345 - 10000;
            case kCount:
                return static_cast<std::int64_t>(Pick(4)) - 2;
            default:
                return Pick(2) == 0 ? std::int64_t{0} : std::int64_t{-1};
        }
    }

    static Value ValueOf(int field, const Cell& cell) {
        if (cell.index() == 0) return {};
        switch (field) {
            case kWhen:
                return Date::FromSerial(std::get<double>(cell));
            case kAmount:
                return CurrencyAmount::FromTenThousandths(std::get<std::int64_t>(cell));
            case kCount:
                return static_cast<std::int16_t>(std::get<std::int64_t>(cell));
            case kFlag:
                return std::get<std::int64_t>(cell) != 0;
            default:
                return std::string_view(std::get<std::string>(cell));
        }
    }

    void SetIndex(Recordset& records, Cursor& cursor) {
        cursor.By = &kOrders[Pick(kOrders.size())];
        records.SetIndex(cursor.By->Name);
        EXPECT_EQ(records.Index(), cursor.By->Name);
        cursor.End(rows_, true);
    }
    void MoveEnd(Recordset& records, Cursor& cursor) {
        const bool first = Pick(2) == 0;
        first ? records.MoveFirst() : records.MoveLast();
        cursor.End(rows_, first);
    }
    void MoveSome(Recordset& records, Cursor& cursor) {
        const bool forward = Pick(5) < 3;
        const std::size_t steps = Pick(3) == 0 ? 1 + Pick(40) : 1;
        for (std::size_t i = 0; i < steps; ++i) {
            const int number = NumberOf([&] { forward ? records.MoveNext() : records.MovePrevious(); });
            const bool moved = cursor.Move(rows_, forward);
            EXPECT_EQ(number, moved ? 0 : 3021);
            if (i + 1 < steps) CompareOne(records, cursor);
        }
    }
    void Seek(Recordset& records, Cursor& cursor) {
        if (cursor.By->Keys.empty()) {
            EXPECT_EQ(NumberOf([&] { records.Seek("a"); }), 3019);
            cursor.Edits = Cursor::None;
            return;
        }
        Cells wanted(kFieldCount);
        const auto sorted = cursor.Sorted(rows_);
        if (!sorted.empty() && Pick(2) == 0) wanted = sorted[Pick(sorted.size())].Values;
        const std::size_t depth = 1 + Pick(std::min<std::size_t>(cursor.By->Keys.size(), 3));
        for (std::size_t i = 0; i < depth; ++i) {
            const int key = cursor.By->Keys[i];
            if (Pick(3) == 0) wanted[static_cast<std::size_t>(key)] = RandomCell(key);
        }
        const auto key = [&](std::size_t i) {
            const int field = cursor.By->Keys[i];
            return ValueOf(field, wanted[static_cast<std::size_t>(field)]);
        };
        if (depth == 1) records.Seek(key(0));
        if (depth == 2) records.Seek({key(0), key(1)});
        if (depth == 3) records.Seek({key(0), key(1), key(2)});
        cursor.Edits = Cursor::None;
        cursor.At = Cursor::NoMatch;
        for (const Row& row : sorted) {
            auto have = cursor.By->KeysOf(row.Values);
            auto want = cursor.By->KeysOf(wanted);
            have.resize(depth);
            want.resize(depth);
            if (have != want) continue;
            cursor.Land(row);
            break;
        }
    }
    void KeepBookmark(Recordset& records, Cursor& cursor) {
        if (cursor.At != Cursor::OnRow) {
            EXPECT_EQ(NumberOf([&] { records.Bookmark(); }), 3021);
            return;
        }
        bookmarks_.push_back({records.Bookmark(), cursor.Seen.Id});
    }
    void UseBookmark(Recordset& records, Cursor& cursor) {
        if (bookmarks_.empty()) return;
        const auto& [bookmark, id] = bookmarks_[Pick(bookmarks_.size())];
        const int number = NumberOf([&] { records.SetBookmark(bookmark); });
        cursor.Edits = Cursor::None;
        const auto found = rows_.find(id);
        EXPECT_EQ(number, found == rows_.end() ? 3159 : 0);
        if (found != rows_.end()) cursor.Land({id, found->second});
    }
    void SetSome(Recordset& records, Cursor& cursor) {
        const std::size_t count = Pick(5);
        for (std::size_t i = 0; i < count; ++i) {
            const int field = static_cast<int>(Pick(kFieldCount));
            const Cell cell = Pick(4) == 0 ? cursor.Before[static_cast<std::size_t>(field)] : RandomCell(field);
            records.Set(field, ValueOf(field, cell));
            cursor.After[static_cast<std::size_t>(field)] = cell;
        }
    }
    void Edit(Recordset& records, Cursor& cursor) {
        const int number = NumberOf([&] { records.Edit(); });
        cursor.Edits = Cursor::None;
        EXPECT_EQ(number, cursor.At == Cursor::OnRow ? 0 : 3021);
        if (cursor.At != Cursor::OnRow) return;
        cursor.Edits = Cursor::Edit;
        cursor.Before = cursor.After = cursor.Seen.Values;
        SetSome(records, cursor);
    }
    void AddNew(Recordset& records, Cursor& cursor) {
        records.AddNew();
        cursor.Edits = Cursor::AddNew;
        cursor.Before = Cells(kFieldCount);
        cursor.Before[kFlag] = std::int64_t{0};
        cursor.After = cursor.Before;
        SetSome(records, cursor);
        if (Pick(4) != 0) {
            cursor.After[kName] = std::string("n") + std::to_string(Pick(9999));
            records.Set(kName, ValueOf(kName, cursor.After[kName]));
        }
        if (Pick(2) == 0) Update(records, cursor);
    }
    void Update(Recordset& records, Cursor& cursor) {
        const int number = NumberOf([&] { records.Update(); });
        if (cursor.Edits == Cursor::None) {
            EXPECT_EQ(number, 3020);
            return;
        }
        const bool adds = cursor.Edits == Cursor::AddNew;
        Cells target = cursor.After;
        const auto stored = rows_.find(cursor.Seen.Id);
        if (!adds && stored != rows_.end()) {
            target = stored->second;  // what the other recordset has changed meanwhile stays
            for (std::size_t i = 0; i < kFieldCount; ++i) {
                if (cursor.After[i] != cursor.Before[i]) target[i] = cursor.After[i];
            }
        }
        const bool changed = adds || cursor.After != cursor.Before;
        const bool nameChanged = adds || cursor.After[kName] != cursor.Before[kName];
        int expected = 0;
        if (nameChanged && target[kName].index() == 0) {
            expected = 3058;
        } else if (changed && !adds && stored == rows_.end()) {
            expected = 3021;
        } else {
            for (const auto& [id, values] : rows_) {
                const bool other = adds || id != cursor.Seen.Id;
                if (changed && other && KeyOf(values[kName]) == KeyOf(target[kName])) expected = 3022;
            }
        }
        EXPECT_EQ(number, expected);
        if (expected != 0) return;
        cursor.Edits = Cursor::None;
        if (adds) {
            rows_[nextId_++] = target;
        } else if (changed) {
            stored->second = target;
        }
    }
    void Cancel(Recordset& records, Cursor& cursor) {
        records.CancelUpdate();
        cursor.Edits = Cursor::None;
    }
    void DeleteOrEdit(Recordset& records, Cursor& cursor) {
        if (Pick(4) != 0) return Edit(records, cursor);
        const int number = NumberOf([&] { records.Delete(); });
        cursor.Edits = Cursor::None;
        EXPECT_EQ(number, cursor.At == Cursor::OnRow ? 0 : 3021);
        if (cursor.At != Cursor::OnRow) return;
        rows_.erase(cursor.Seen.Id);
        cursor.At = Cursor::Gone;
    }
    // Some steps as one batch, in which there may be further ones, ended in one of four ways.
    void Batch() {
        if (batches_ == 3) return;
        enum Way { Commits, TakesBack, FailsAndKeeps, FailsAndKeepsNothing };
        const auto way = static_cast<Way>(Pick(4));
        const Rows before = rows_;
        ++batches_;
        const auto body = [&](WriteBatch& batch) {
            for (std::size_t steps = 1 + Pick(40); steps > 0 && !testing::Test::HasFailure(); --steps) Step();
            if (way == TakesBack) batch.Rollback();
            if (way >= FailsAndKeeps) throw PlatformError(Failure::Overflow);
        };
        const OnFailure ending = way == FailsAndKeepsNothing ? OnFailure::AllOrNothing : OnFailure::KeepDone;
        EXPECT_EQ(NumberOf([&] { RunBatch(*database_, ending, body); }), way >= FailsAndKeeps ? 6 : 0);
        --batches_;
        if (way == TakesBack || way == FailsAndKeepsNothing) rows_ = before;
    }
    void Reopen() {
        if (batches_ > 0) return;
        for (auto& records : records_) records.reset();
        bookmarks_.clear();
        database_.reset();
        database_.emplace(Database::Open(path_));
        OpenRecordsets();
    }

    void Compare() {
        mostRows_ = std::max(mostRows_, rows_.size());
        for (std::size_t i = 0; i < 2; ++i) CompareOne(*records_[i], cursors_[i]);
        EXPECT_EQ(records_[0]->RecordCount(), static_cast<std::int64_t>(rows_.size()));
    }
    void CompareOne(Recordset& records, Cursor& cursor) {
        cursor.Look(rows_);
        EXPECT_EQ(records.HasCurrentRow(), cursor.At == Cursor::OnRow);
        EXPECT_EQ(records.Bof(), cursor.At == Cursor::Bof || cursor.At == Cursor::Empty);
        EXPECT_EQ(records.Eof(), cursor.At == Cursor::Eof || cursor.At == Cursor::Empty);
        EXPECT_EQ(records.NoMatch(), cursor.At == Cursor::NoMatch);
        EXPECT_EQ(records.EditPending(), cursor.Edits != Cursor::None);
        if (cursor.At == Cursor::OnRow) {
            const auto isBefore = [&](const Row& row) { return cursor.By->Less(row, cursor.Seen); };
            const std::vector<Row> sorted = cursor.Sorted(rows_);
            EXPECT_EQ(records.RowsBefore(), std::count_if(sorted.begin(), sorted.end(), isBefore));
        }
        const Cells* shown = cursor.Edits != Cursor::None ? &cursor.After
                             : cursor.At == Cursor::OnRow ? &cursor.Seen.Values
                                                          : nullptr;
        if (shown == nullptr) {
            EXPECT_EQ(NumberOf([&] { records.Get(kCount); }), 3021);
            return;
        }
        for (int field = 0; field < kFieldCount; ++field) {
            const Value expected = ValueOf(field, (*shown)[static_cast<std::size_t>(field)]);
            EXPECT_TRUE(records.Get(field) == expected) << "field " << field;
        }
    }

    test::TempFolder folder_;
    std::filesystem::path path_ = folder_ / "model.mdb";
    std::mt19937 random_;
    std::optional<Database> database_;
    std::optional<Recordset> records_[2];
    Cursor cursors_[2];
    Rows rows_;
    std::size_t mostRows_ = 0;
    int nextId_ = 1;
    std::vector<std::pair<std::string, int>> bookmarks_;
    int batches_ = 0;  // how deep the steps stand in batches
};

class RecordsetModel : public testing::TestWithParam<unsigned> {};

TEST_P(RecordsetModel, AgreesAfterEveryStep) {
    Driver driver(GetParam());
    for (int step = 0; step < 1500 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        driver.Step();
    }
    EXPECT_GT(driver.MostRows(), 30U);  // else the steps have become too tame
}

INSTANTIATE_TEST_SUITE_P(Seeds, RecordsetModel, testing::Values(1U, 2U, 3U, 20030815U));

}  // namespace
}  // namespace tallymar::recordset
