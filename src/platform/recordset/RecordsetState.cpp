#include "platform/recordset/RecordsetState.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/recordset/Names.h"
#include "platform/recordset/Sql.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::recordset {

namespace {

constexpr std::size_t kMostReadAhead = 64;
// How far behind another program's writes a move outside a batch may be.
constexpr std::chrono::milliseconds kReadAheadLife(50);

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void BindConverted(Statement& statement, int parameter, std::string_view text) {
    if (IsAscii(text)) {
        statement.BindText(parameter, text);
    } else {
        statement.BindTextCopy(parameter, ToUtf8(text));
    }
}

void BindCell(Statement& statement, int parameter, const Cell& cell) {
    switch (cell.Type) {
        case Cell::Kind::Null:
            return statement.BindNull(parameter);
        case Cell::Kind::Whole:
            return statement.Bind(parameter, cell.Whole);
        case Cell::Kind::Real:
            return statement.Bind(parameter, cell.Real);
        case Cell::Kind::Text:
            return BindConverted(statement, parameter, cell.TextView());
        case Cell::Kind::Blob:
            return statement.BindBlobCopy(parameter, cell.TextView());
    }
}

constexpr Value::Kind KindOf(FieldType type) {
    switch (type) {
        case FieldType::Text:
            return Value::Kind::Text;
        case FieldType::Date:
            return Value::Kind::Date;
        case FieldType::Currency:
            return Value::Kind::Currency;
        case FieldType::Integer:
            return Value::Kind::Integer;
        case FieldType::Boolean:
            return Value::Kind::Boolean;
    }
    return Value::Kind::Null;
}

// A number of a column, from whatever another program has stored there: 64 bits, ties to even.
std::int64_t WholeOf(const Cell& cell) {
    if (cell.Type == Cell::Kind::Whole) return cell.Whole;
    const double rounded = RoundTiesToEven(cell.Real);
    if (!(rounded >= -0x1p63 && rounded < 0x1p63)) throw PlatformError(Failure::Overflow);
    return static_cast<std::int64_t>(rounded);
}

Value ValueOf(FieldType type, const Cell& cell) {
    switch (cell.Type) {
        case Cell::Kind::Null:
            return {};
        case Cell::Kind::Text:
        case Cell::Kind::Blob:
            return Value(cell.TextView());
        case Cell::Kind::Whole:
        case Cell::Kind::Real:
            break;
    }
    switch (type) {
        case FieldType::Currency:
            return Value(CurrencyAmount::FromTenThousandths(WholeOf(cell)));
        case FieldType::Boolean:
            return Value(cell.Type == Cell::Kind::Whole ? cell.Whole != 0 : cell.Real != 0.0);
        case FieldType::Integer: {
            const std::int64_t whole = WholeOf(cell);
            if (whole < std::numeric_limits<std::int16_t>::min() || whole > std::numeric_limits<std::int16_t>::max()) {
                throw PlatformError(Failure::Overflow);
            }
            return Value(static_cast<std::int16_t>(whole));
        }
        default:
            return Value(Date::FromSerial(cell.Type == Cell::Kind::Real ? cell.Real : static_cast<double>(cell.Whole)));
    }
}

bool SameCell(const Cell& a, const Cell& b) {
    if (a.Type != b.Type) return false;
    switch (a.Type) {
        case Cell::Kind::Null:
            return true;
        case Cell::Kind::Whole:
            return a.Whole == b.Whole;
        case Cell::Kind::Real:
            return a.Real == b.Real;
        default:
            return a.TextView() == b.TextView();
    }
}

}  // namespace

RecordsetState::RecordsetState(std::shared_ptr<DatabaseState> database, std::shared_ptr<TableState> table)
    : database_(std::move(database)), table_(std::move(table)), changed_(table_->Definition().Fields.size()) {
    for (const Field& field : Definition().Fields) {
        blank_.push_back(field.Type == FieldType::Boolean ? Cell::OfWhole(0) : Cell());
    }
    MoveToEnd(true);
}

void RecordsetState::RequireUsable() const {
    database_->RequireOpen();
    if (table_->Stale)
        throw PlatformError::About(Failure::InvalidCall, "the definition of " + table_->Definition().Name + " has changed");
}

// --- Moving

void RecordsetState::SetIndex(std::string_view name) {
    BeginMove();
    auto& orders = table_->Orders();
    const auto found = name.empty() ? orders.begin()
                                    : std::find_if(orders.begin() + 1, orders.end(),
                                                   [name](const RowOrder& order) { return SameName(order.Name(), name); });
    if (found == orders.end()) throw PlatformError::About(Failure::ItemNotFound, std::string(name));
    order_ = static_cast<std::size_t>(found - orders.begin());
    MoveToEnd(true);
}

void RecordsetState::BeginMove() {
    RequireUsable();
    pending_ = Pending::None;
}

void RecordsetState::MoveToEnd(bool forward) {
    BeginMove();
    readAhead_ = 1;
    position_ = Probe({.Descending = !forward}, {}, forward) ? Position::Row : Position::Empty;
}

void RecordsetState::Move(bool forward) {
    BeginMove();
    if (position_ == (forward ? Position::Bof : Position::Eof)) return MoveToEnd(forward);
    if (position_ != Position::Row && position_ != Position::Deleted) throw PlatformError(Failure::NoCurrentRecord);
    if (MoveInBlock(forward)) return;
    Follow();
    if (StepFromHere(forward)) {
        position_ = Position::Row;
    } else if (position_ == Position::Deleted && IsTableEmpty()) {
        position_ = Position::Empty;
    } else {
        position_ = forward ? Position::Eof : Position::Bof;
    }
}

bool RecordsetState::IsTableEmpty() const {
    Statement& statement = table_->Orders().front().Step({});
    const StatementRun run(statement);
    statement.Bind(1, std::int64_t{1});
    return !statement.Step();
}

bool RecordsetState::CanUseBlock() const {
    if (blockChanges_ != table_->Changes || blockBatch_ != database_->Batch()) return false;
    return blockBatch_ != 0 || std::chrono::steady_clock::now() - blockTime_ < kReadAheadLife;
}

bool RecordsetState::MoveInBlock(bool forward) {
    const bool onward = forward == forward_;
    if (!CanUseBlock()) {
        readAhead_ = 1;
        return false;
    }
    if (slot_ == (onward ? last_ : first_)) {
        // The end of what was read: a pass that gets here in good time has use for more.
        readAhead_ = onward ? std::min(readAhead_ * 2, kMostReadAhead) : 1;
        return false;
    }
    slot_ = onward ? slot_ + 1 : slot_ - 1;
    rowChanges_ = blockChanges_;
    rowBatch_ = blockBatch_;
    position_ = Position::Row;
    return true;
}

void RecordsetState::DropNeighbours() {
    first_ = last_ = slot_;
    readAhead_ = 0;
}

// Tries, from the last key to the first, the rows that share the keys before it and lie beyond it: each try is one probe of the
// index. The order of all tries together is the order of the index.
bool RecordsetState::StepFromHere(bool forward) {
    const std::span<const std::size_t> keys = Order().Keys();
    const std::size_t count = keys.size();
    std::uint32_t nulls = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (Cells()[keys[i]].Type == Cell::Kind::Null) nulls |= 1U << i;
    }
    const auto tryProbe = [&](std::size_t depth, bool beyond) {
        const std::size_t given = depth + (beyond && depth < count ? 1 : 0);
        const std::uint32_t mask = nulls & ((std::uint32_t{1} << given) - 1);
        return Probe({.Depth = static_cast<int>(depth), .Beyond = beyond, .Descending = !forward, .NullMask = mask},
                     keys.first(given), forward);
    };
    if ((!Order().IsUnique() || nulls != 0) && tryProbe(count, true)) return true;
    for (std::size_t depth = count; depth-- > 0;) {
        const bool isNull = (nulls >> depth & 1U) != 0;
        if (!forward && isNull) continue;  // Null is first
        if (tryProbe(depth, true)) return true;
        if (forward) continue;
        nulls |= 1U << depth;
        if (tryProbe(depth + 1, false)) return true;
    }
    return false;
}

// The keys are those of the current row.
bool RecordsetState::Probe(const sql::StepShape& shape, std::span<const std::size_t> keys, bool forward) {
    Statement& statement = Order().Step(shape);
    const StatementRun run(statement);
    int parameter = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if ((shape.NullMask >> i & 1U) == 0) BindKey(statement, ++parameter, keys[i]);
    }
    if (shape.Beyond && static_cast<std::size_t>(shape.Depth) == keys.size()) statement.Bind(++parameter, block_.Row(slot_));
    statement.Bind(++parameter, static_cast<std::int64_t>(std::max<std::size_t>(readAhead_, 1)));
    return Take(statement, forward);
}

bool RecordsetState::Take(Statement& statement, bool forward) {
    spare_.Clear(Definition().Fields.size());
    while (statement.Step()) spare_.Append(statement.Handle(), Definition().Fields);
    if (spare_.Size() == 0) return false;
    std::swap(block_, spare_);
    slot_ = first_ = 0;
    last_ = block_.Size() - 1;
    forward_ = forward;
    blockChanges_ = rowChanges_ = table_->Changes;
    blockBatch_ = rowBatch_ = database_->Batch();
    if (blockBatch_ == 0) blockTime_ = std::chrono::steady_clock::now();
    return true;
}

void RecordsetState::BindKey(Statement& statement, int parameter, std::size_t column) const {
    const Cell& cell = Cells()[column];
    const bool isText = Definition().Fields[column].Type == FieldType::Text;
    if (const std::string* stored = block_.Unconverted(slot_, column)) {
        statement.BindTextCopy(parameter, isText ? RTrim(*stored) : std::string_view(*stored));
    } else if (isText && cell.Type == Cell::Kind::Text) {
        BindConverted(statement, parameter, RTrim(cell.TextView()));
    } else {
        BindCell(statement, parameter, cell);
    }
}

void RecordsetState::Seek(std::span<const Value> key) {
    BeginMove();
    const std::span<const std::size_t> keys = Order().Keys();
    if (order_ == 0) throw PlatformError(Failure::NoCurrentIndex);
    if (key.empty() || key.size() > keys.size()) throw PlatformError(Failure::InvalidCall);
    sql::StepShape shape{.Depth = static_cast<int>(key.size())};
    for (std::size_t i = 0; i < key.size(); ++i) {
        const Field& field = Definition().Fields[keys[i]];
        if (key[i].IsNull()) {
            shape.NullMask |= 1U << i;
        } else if (key[i].Type() != KindOf(field.Type)) {
            throw PlatformError::About(Failure::TypeMismatch, field.Name);
        }
    }
    Statement& statement = Order().Step(shape);
    const StatementRun run(statement);
    int parameter = 0;
    for (const Value& value : key) {
        switch (value.Type()) {
            case Value::Kind::Null:
                break;
            case Value::Kind::Text:
                statement.BindTextCopy(++parameter, ToUtf8(RTrim(value.Text())));
                break;
            case Value::Kind::Date:
                statement.Bind(++parameter, value.AsDate().Serial());
                break;
            case Value::Kind::Currency:
                statement.Bind(++parameter, value.Currency().TenThousandths());
                break;
            case Value::Kind::Integer:
                statement.Bind(++parameter, std::int64_t{value.Integer()});
                break;
            case Value::Kind::Boolean:
                statement.Bind(++parameter, std::int64_t{value.Boolean() ? -1 : 0});
                break;
        }
    }
    statement.Bind(++parameter, std::int64_t{1});
    readAhead_ = 1;
    position_ = Take(statement, true) ? Position::Row : Position::NoMatch;
}

std::int64_t RecordsetState::RecordCount() {
    RequireUsable();
    const std::int64_t version = database_->FileVersion();
    if (!table_->RowCount || table_->RowCountVersion != version) {
        Statement& statement = table_->CountRows();
        const StatementRun run(statement);
        table_->RowCount = statement.Step() ? statement.Int64(0) : 0;
        table_->RowCountVersion = version;
    }
    return *table_->RowCount;
}

std::int64_t RecordsetState::RowNumber() {
    RequireRow();
    return block_.Row(slot_);
}

std::string RecordsetState::Bookmark() {
    return Definition().Name + ":" + std::to_string(RowNumber());
}

void RecordsetState::SetBookmark(const std::string& bookmark) {
    BeginMove();
    const std::string prefix = Definition().Name + ":";
    std::int64_t row = 0;
    const char* end = bookmark.data() + bookmark.size();
    if (!bookmark.starts_with(prefix)) throw PlatformError(Failure::InvalidBookmark);
    const auto [stop, error] = std::from_chars(bookmark.data() + prefix.size(), end, row);
    if (error != std::errc() || stop != end) throw PlatformError(Failure::InvalidBookmark);
    Statement& statement = table_->SelectByRow();
    const StatementRun run(statement);
    statement.Bind(1, row);
    if (!Take(statement, true)) throw PlatformError(Failure::InvalidBookmark);
    readAhead_ = 1;
    position_ = Position::Row;
}

// --- The current row

// If the row may have changed since it was read: what it is now. One whose key has changed is then at its new place; one that is
// gone leaves the recordset between its neighbours.
void RecordsetState::Follow() {
    if (position_ == Position::Row && rowChanges_ != table_->Changes && !ReadAgain()) position_ = Position::Deleted;
}

bool RecordsetState::ReadAgain() {
    Statement& statement = table_->SelectByRow();
    const StatementRun run(statement);
    statement.Bind(1, block_.Row(slot_));
    DropNeighbours();
    if (!statement.Step()) return false;
    block_.Overwrite(slot_, statement.Handle(), Definition().Fields);
    rowChanges_ = blockChanges_ = table_->Changes;
    rowBatch_ = blockBatch_ = database_->Batch();
    return true;
}

void RecordsetState::RequireRow() {
    if (position_ == Position::Row && rowChanges_ == table_->Changes) return;
    RequireUsable();
    Follow();
    if (position_ != Position::Row) throw PlatformError(Failure::NoCurrentRecord);
}

bool RecordsetState::HasCurrentRow() {
    RequireUsable();
    Follow();
    return position_ == Position::Row;
}

int RecordsetState::Ordinal(std::string_view field) const {
    const int ordinal = table_->FindOrdinal(field);
    if (ordinal < 0) throw PlatformError::About(Failure::ItemNotFound, std::string(field));
    return ordinal;
}

std::size_t RecordsetState::Checked(int ordinal) const {
    const auto column = static_cast<std::size_t>(ordinal);
    if (ordinal < 0 || column >= blank_.size()) throw PlatformError(Failure::ItemNotFound);
    return column;
}

Value RecordsetState::Get(int ordinal) {
    const std::size_t column = Checked(ordinal);
    const FieldType type = Definition().Fields[column].Type;
    if (pending_ == Pending::None) {
        RequireRow();
        return ValueOf(type, Cells()[column]);
    }
    if (table_->Stale) RequireUsable();
    return ValueOf(type, edited_[column]);
}

void RecordsetState::Edit() {
    BeginMove();
    RequireRow();
    // What another program has written since must not be taken for a change of ours. In a batch none can have written.
    const bool current = database_->Batch() != 0 && rowBatch_ == database_->Batch();
    if (!current && !ReadAgain()) {
        position_ = Position::Deleted;
        throw PlatformError(Failure::NoCurrentRecord);
    }
    edited_.assign(Cells(), Cells() + blank_.size());
    before_ = edited_;
    editChanges_ = table_->Changes;
    changed_.Clear();
    pending_ = Pending::Edit;
}

void RecordsetState::AddNew() {
    BeginMove();
    added_.Clear();
    edited_ = before_ = blank_;
    changed_.Clear();
    pending_ = Pending::AddNew;
}

void RecordsetState::Set(int ordinal, const Value& value) {
    const std::size_t column = Checked(ordinal);
    if (pending_ == Pending::None) throw PlatformError(Failure::UpdateWithoutEdit);
    const Field& field = Definition().Fields[column];
    if (value.IsNull()) return Put(column, field.Type == FieldType::Boolean ? Cell::OfWhole(0) : Cell());
    if (value.Type() != KindOf(field.Type)) throw PlatformError::About(Failure::TypeMismatch, field.Name);
    switch (field.Type) {
        case FieldType::Text:
            return SetText(column, value.Text());
        case FieldType::Currency:
            return Put(column, Cell::OfWhole(value.Currency().TenThousandths()));
        case FieldType::Integer:
            return Put(column, Cell::OfWhole(value.Integer()));
        case FieldType::Boolean:
            return Put(column, Cell::OfWhole(value.Boolean() ? -1 : 0));
        case FieldType::Date:
            // SQLite would make a Null of it.
            if (std::isnan(value.AsDate().Serial())) throw PlatformError::About(Failure::TypeMismatch, field.Name);
            return Put(column, Cell::OfReal(value.AsDate().Serial()));
    }
}

void RecordsetState::SetText(std::size_t column, std::string_view text) {
    const Cell cell = Cell::OfText(text);
    if (SameCell(cell, edited_[column])) return;
    // What the row holds already is never refused, even if another program has put it there against the column's limits.
    if (SameCell(cell, before_[column])) return Put(column, before_[column]);
    const Field& field = Definition().Fields[column];
    if (text.empty() && !field.AllowZeroLength) throw PlatformError::About(Failure::ZeroLengthNotAllowed, field.Name);
    if (text.size() > static_cast<std::size_t>(field.Size)) throw PlatformError::About(Failure::FieldTooSmall, field.Name);
    TextArena& texts = pending_ == Pending::Edit ? block_.Texts() : added_;
    Put(column, Cell::OfText(texts.Keep(text)));
}

void RecordsetState::Put(std::size_t column, const Cell& cell) {
    edited_[column] = cell;
    if (SameCell(cell, before_[column])) {
        changed_.Remove(column);
    } else {
        changed_.Add(column);
    }
}

void RecordsetState::RequireKeys() const {
    for (const Index& index : Definition().Indexes) {
        if (!index.Primary && !index.Required) continue;
        for (const std::string& name : index.Fields) {
            const std::size_t column = static_cast<std::size_t>(table_->FindOrdinal(name));
            if (edited_[column].Type != Cell::Kind::Null) continue;
            if (pending_ == Pending::AddNew || changed_.Has(column)) throw PlatformError::About(Failure::NullKey, name);
        }
    }
}

void RecordsetState::Update() {
    RequireUsable();
    if (pending_ == Pending::None) throw PlatformError(Failure::UpdateWithoutEdit);
    if (pending_ == Pending::AddNew) {
        RequireKeys();
        WriteNewRow();
    } else if (!changed_.IsEmpty()) {
        RequireKeys();
        WriteChanges();
    }
    pending_ = Pending::None;
}

void RecordsetState::WriteChanges() {
    const std::uint64_t before = table_->Changes;
    const bool sure = editChanges_ == before && rowBatch_ != 0 && rowBatch_ == database_->Batch() && !block_.HasUnconverted();
    const auto [statement, columns] = table_->Update(changed_, sure);
    int parameter = 0;
    columns->ForEach([&, update = statement](std::size_t column) { BindCell(*update, ++parameter, edited_[column]); });
    statement->Bind(++parameter, block_.Row(slot_));
    database_->Write(*statement);
    if (sqlite3_changes(database_->Db().Handle()) == 0) throw PlatformError(Failure::NoCurrentRecord);

    ++table_->Changes;
    if (editChanges_ != before) return;  // the row is read again when it is next looked at
    rowChanges_ = table_->Changes;
    changed_.ForEach([&](std::size_t column) {
        block_.Cells(slot_)[column] = edited_[column];
        block_.ForgetUnconverted(slot_, column);
    });
    if (blockChanges_ == before) blockChanges_ = table_->Changes;
    if (changed_.Meets(Order().KeySet())) DropNeighbours();
}

void RecordsetState::WriteNewRow() {
    const std::uint64_t before = table_->Changes;
    Statement& statement = table_->Insert();
    int parameter = 0;
    for (const Cell& cell : edited_) BindCell(statement, ++parameter, cell);
    statement.Bind(++parameter, table_->HighestRow);
    database_->Write(statement);

    table_->HighestRow =
        std::max(table_->HighestRow, static_cast<std::int64_t>(sqlite3_last_insert_rowid(database_->Db().Handle())));
    if (table_->RowCount) ++*table_->RowCount;
    ++table_->Changes;
    // The current row is as it was; its neighbours need not be.
    if (rowChanges_ == before) rowChanges_ = table_->Changes;
}

void RecordsetState::Delete() {
    BeginMove();
    RequireRow();
    const std::uint64_t before = table_->Changes;
    Statement& statement = table_->DeleteByRow();
    statement.Bind(1, block_.Row(slot_));
    database_->Write(statement);
    position_ = Position::Deleted;
    if (sqlite3_changes(database_->Db().Handle()) == 0) throw PlatformError(Failure::NoCurrentRecord);

    table_->HighestRow = std::max(table_->HighestRow, block_.Row(slot_));
    if (table_->RowCount) --*table_->RowCount;
    ++table_->Changes;
    if (blockChanges_ == before) blockChanges_ = table_->Changes;
}

}  // namespace tallymar::recordset
