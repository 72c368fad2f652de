#include <algorithm>
#include <charconv>

#include "platform/recordset/CellValue.h"
#include "platform/recordset/Names.h"
#include "platform/recordset/RecordsetState.h"
#include "platform/runtime/Windows1252.h"

// How a recordset moves: by an index, a step, a key or a bookmark.
namespace tallymar::recordset {

namespace {

constexpr std::size_t kMostReadAhead = 64;
// How far behind another program's writes a move outside a batch may be.
constexpr std::chrono::milliseconds kReadAheadLife(50);

}  // namespace

void RecordsetState::SetIndex(std::string_view name) {
    BeginMove();
    auto& orders = table_->Orders();
    const auto found = name.empty() ? orders.begin()
                                    : std::find_if(orders.begin() + 1, orders.end(),
                                                   [name](const RowOrder& order) { return SameName(order.Name(), name); });
    if (found == orders.end()) throw PlatformError::About(Failure::ItemNotFound, std::string(name));
    order_ = static_cast<std::size_t>(found - orders.begin());
    database_->TraceLine("index", IndexName());
    MoveToEnd(true);
}

void RecordsetState::BeginMove() {
    RequireUsable();
    edit_.End();
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
    if (!(blockRead_ == Now())) return false;
    return blockRead_.IsInBatch() || std::chrono::steady_clock::now() - blockTime_ < kReadAheadLife;
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
    rowRead_ = blockRead_;
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
    std::uint32_t nulls = NullKeys();
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

std::uint32_t RecordsetState::NullKeys() const {
    const std::span<const std::size_t> keys = Order().Keys();
    std::uint32_t nulls = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (Cells()[keys[i]].Type == Cell::Kind::Null) nulls |= 1U << i;
    }
    return nulls;
}

// The same tries as those of a step back, each counted.
std::int64_t RecordsetState::RowsBefore() {
    RequireRow();
    const std::size_t count = Order().Keys().size();
    std::uint32_t nulls = NullKeys();
    std::int64_t rows = !Order().IsUnique() || nulls != 0 ? CountBefore(count, true, nulls) : 0;
    for (std::size_t depth = count; depth-- > 0;) {
        if ((nulls >> depth & 1U) != 0) continue;  // Null is first
        rows += CountBefore(depth, true, nulls);
        nulls |= 1U << depth;
        rows += CountBefore(depth + 1, false, nulls);
    }
    return rows;
}

std::int64_t RecordsetState::CountBefore(std::size_t depth, bool beyond, std::uint32_t nulls) {
    const std::span<const std::size_t> keys = Order().Keys();
    const std::size_t given = depth + (beyond && depth < keys.size() ? 1 : 0);
    const sql::StepShape shape{.Depth = static_cast<int>(depth),
                               .Beyond = beyond,
                               .Descending = true,
                               .NullMask = nulls & ((std::uint32_t{1} << given) - 1)};
    Statement& statement = Order().Count(shape);
    const StatementRun run(statement);
    int parameter = 0;
    BindShape(statement, parameter, shape, keys.first(given));
    return statement.Step() ? statement.Int64(0) : 0;
}

void RecordsetState::BindShape(Statement& statement, int& parameter, const sql::StepShape& shape,
                               std::span<const std::size_t> keys) const {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if ((shape.NullMask >> i & 1U) == 0) BindKey(statement, ++parameter, keys[i]);
    }
    if (shape.Beyond && static_cast<std::size_t>(shape.Depth) == keys.size()) statement.Bind(++parameter, block_.Row(slot_));
}

// The keys are those of the current row.
bool RecordsetState::Probe(const sql::StepShape& shape, std::span<const std::size_t> keys, bool forward) {
    Statement& statement = Order().Step(shape);
    const StatementRun run(statement);
    int parameter = 0;
    BindShape(statement, parameter, shape, keys);
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
    blockRead_ = rowRead_ = Now();
    if (!blockRead_.IsInBatch()) blockTime_ = std::chrono::steady_clock::now();
    return true;
}

void RecordsetState::BindKey(Statement& statement, int parameter, std::size_t column) const {
    const Cell& cell = Cells()[column];
    const bool isText = Definition().Fields[column].Type == FieldType::Text;
    if (const std::string* stored = block_.Unconverted(slot_, column)) {
        statement.BindTextCopy(parameter, isText ? RTrim(*stored) : std::string_view(*stored));
    } else if (isText && cell.Type == Cell::Kind::Text) {
        BindText(statement, parameter, RTrim(cell.TextView()));
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
        if (value.IsNull()) continue;
        if (value.Type() == Value::Kind::Text) {
            BindText(statement, ++parameter, RTrim(value.Text()));
        } else {
            BindCell(statement, ++parameter, CellOf(value));
        }
    }
    statement.Bind(++parameter, std::int64_t{1});
    readAhead_ = 1;
    position_ = Take(statement, true) ? Position::Row : Position::NoMatch;
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

}  // namespace tallymar::recordset
