#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/recordset/TableDef.h"
#include "platform/recordset/Value.h"

namespace tallymar::recordset {

class RecordsetState;

// A table-type recordset: one current row of one table, in the order of the chosen index.
//
// Order: the index's fields ascending, Null first, then by row. Text keys compare without regard to the case of A to Z and to
// trailing blanks, in order, in Seek and in uniqueness; accented letters stand after Z, each case for itself.
// A move past an end gives Eof or Bof and no current row; a read, an edit or a further move that way fails with NoCurrentRecord.
// A move (a Seek, an Edit and an AddNew too) throws a pending edit away. A move costs one indexed step, whatever the size of the
// table; a pass is read ahead in blocks.
//
// Several recordsets may be open on a table. Each sees at once what the others of its Database write: its current row is read
// again, and if its key has changed the recordset is at the new place; a row deleted by another is no current row any more, and
// MoveNext goes to the one that followed it. What other programs write is seen by Edit at once, by a move within a twentieth of a
// second, and never inside a batch, where they cannot write. A batch looks afresh: the current row, if it was read before the
// batch began, is read again, so a command that has asked its user something looks in the batch at what it asked about. Texts
// read stay good until the recordset moves.
class Recordset {
 public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    const TableDef& Definition() const;

    // Choosing an index moves to its first row. ItemNotFound when there is none of the name; "" is row order.
    void SetIndex(std::string_view name);
    const std::string& Index() const;

    void MoveFirst();  // on an empty table Bof and Eof both become true, without a failure
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    // The first row whose key's leading fields equal the given values. Without one, NoMatch is true and there is no current row
    // (reads fail with NoCurrentRecord, Bof and Eof are false, a further move fails likewise until MoveFirst, MoveLast, a
    // bookmark or a Seek that finds).
    void Seek(const Value& key);
    void Seek(std::initializer_list<Value> key);

    bool Bof() const;
    bool Eof() const;
    bool NoMatch() const;
    bool HasCurrentRow() const;
    std::int64_t RecordCount() const;
    // How many rows stand before the current one in the order of the index: counted, some two milliseconds for ten thousand.
    std::int64_t RowsBefore() const;

    // Good until the row is deleted; not empty. Failure::InvalidBookmark when it is not (or no longer) one of this table.
    std::string Bookmark() const;
    void SetBookmark(const std::string& bookmark);
    // Of the current row: the row's for good, and higher than that of any row added before it.
    std::int64_t RowNumber() const;

    // Ordinals are places in the table, from 0, for loops over many rows. ItemNotFound for an unknown name.
    int Ordinal(std::string_view field) const;
    Value Get(int ordinal) const;  // the pending value while Edit or AddNew is under way
    Value Get(std::string_view field) const { return Get(Ordinal(field)); }

    void Edit();
    void AddNew();  // every field Null, Booleans False
    // Failures: UpdateWithoutEdit; TypeMismatch; FieldTooSmall (text longer than its column); ZeroLengthNotAllowed.
    // Setting what the row holds already is no change and never fails. A Boolean set to Null is False.
    void Set(int ordinal, const Value& value);
    void Set(std::string_view field, const Value& value) { Set(Ordinal(field), value); }
    // Writes the columns that changed. On failure (DuplicateKey, NullKey, a write failure of the database) the stored row is as
    // it was and the edit is still pending. After Edit the row stays current; after AddNew the current row is the one before.
    void Update();
    void CancelUpdate();
    bool EditPending() const;

    // The row is gone and there is no current row; MoveNext goes to the row that followed it, MovePrevious to the one before.
    void Delete();

 private:
    friend class Database;
    explicit Recordset(std::unique_ptr<RecordsetState> state);

    std::unique_ptr<RecordsetState> state_;
};

}  // namespace tallymar::recordset
