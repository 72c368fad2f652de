#include "platform/recordset/Recordset.h"

#include <span>
#include <utility>

#include "platform/recordset/RecordsetState.h"

namespace tallymar::recordset {

Recordset::Recordset(std::unique_ptr<RecordsetState> state) : state_(std::move(state)) {}

Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

const TableDef& Recordset::Definition() const {
    return state_->Definition();
}

void Recordset::SetIndex(std::string_view name) {
    state_->SetIndex(name);
}

const std::string& Recordset::Index() const {
    return state_->IndexName();
}

void Recordset::MoveFirst() {
    state_->MoveToEnd(true);
}

void Recordset::MoveLast() {
    state_->MoveToEnd(false);
}

void Recordset::MoveNext() {
    state_->Move(true);
}

void Recordset::MovePrevious() {
    state_->Move(false);
}

void Recordset::Seek(const Value& key) {
    state_->Seek(std::span(&key, 1));
}

void Recordset::Seek(std::initializer_list<Value> key) {
    state_->Seek(std::span(key.begin(), key.size()));
}

bool Recordset::Bof() const {
    return state_->Bof();
}

bool Recordset::Eof() const {
    return state_->Eof();
}

bool Recordset::NoMatch() const {
    return state_->NoMatch();
}

bool Recordset::HasCurrentRow() const {
    return state_->HasCurrentRow();
}

std::int64_t Recordset::RowsBefore() const {
    return state_->RowsBefore();
}

std::int64_t Recordset::RecordCount() const {
    return state_->RecordCount();
}

std::string Recordset::Bookmark() const {
    return state_->Bookmark();
}

void Recordset::SetBookmark(const std::string& bookmark) {
    state_->SetBookmark(bookmark);
}

std::int64_t Recordset::RowNumber() const {
    return state_->RowNumber();
}

int Recordset::Ordinal(std::string_view field) const {
    return state_->Ordinal(field);
}

Value Recordset::Get(int ordinal) const {
    return state_->Get(ordinal);
}

void Recordset::Edit() {
    state_->Edit();
}

void Recordset::AddNew() {
    state_->AddNew();
}

void Recordset::Set(int ordinal, const Value& value) {
    state_->Set(ordinal, value);
}

void Recordset::Update() {
    state_->Update();
}

void Recordset::CancelUpdate() {
    state_->CancelUpdate();
}

bool Recordset::EditPending() const {
    return state_->EditPending();
}

void Recordset::Delete() {
    state_->Delete();
}

}  // namespace tallymar::recordset
