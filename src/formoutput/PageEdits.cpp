#include "formoutput/PageEdits.h"

#include <algorithm>
#include <utility>

#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr std::string_view kDigits = "0123456789";

// "1234", "1,234": commas before groups of three, or none.
bool IsWhole(std::string_view text) {
    constexpr std::size_t kGroup = 3;
    std::size_t first = text.find(',');
    if (text.substr(0, first).find_first_not_of(kDigits) != std::string_view::npos) return false;
    if (first == std::string_view::npos) return true;
    if (first == 0 || first > kGroup) return false;
    for (text.remove_prefix(first); !text.empty(); text.remove_prefix(kGroup + 1)) {
        const std::string_view group = text.substr(0, kGroup + 1);
        if (group.size() != kGroup + 1 || group.front() != ',') return false;
        if (group.substr(1).find_first_not_of(kDigits) != std::string_view::npos) return false;
    }
    return true;
}

bool IsAmount(std::string_view text) {
    text = Trim(text);
    if (text.empty()) return true;
    if (text.starts_with('(') && text.ends_with(')')) {
        text = Trim(text.substr(1, text.size() - 2));
    } else if (text.starts_with('-')) {
        text.remove_prefix(1);
    }
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
    return text.find_first_of(kDigits) != std::string_view::npos && IsWhole(text.substr(0, point)) &&
           decimals.find_first_not_of(kDigits) == std::string_view::npos;
}

}  // namespace

void RequireFits(const FormField& field, std::string_view text) {
    if (text.size() > static_cast<std::size_t>(field.Width)) {
        throw PlatformError(Failure::InvalidCall, "\"" + std::string(text) + "\" is too long: the field has room for " +
                                                      std::to_string(field.Width) + " characters");
    }
    if (field.IsAmount && !IsAmount(text))
        throw PlatformError(Failure::InvalidCall, "\"" + std::string(text) + "\" is no amount");
    if (std::any_of(text.begin(), text.end(), IsControl)) {
        throw PlatformError(Failure::InvalidCall, "A field of a page holds no control characters");
    }
}

void PageEdits::Show(std::string fileName, std::vector<FormField> fields) {
    if (!done_.empty()) {
        std::vector<Change>& lost = lost_[fileName_];
        lost.insert(lost.end(), done_.begin(), done_.end());
        done_.clear();
    }
    fileName_ = std::move(fileName);
    fieldList_ = std::move(fields);
    fieldText_.assign(fieldList_.size(), std::nullopt);
}

std::string PageEdits::Get(int field) const {
    const FormField& at = fieldList_.at(static_cast<std::size_t>(field));
    return text_.GetFieldText(at.Column + 1, at.Line, at.Width);
}

void PageEdits::Put(int field, const std::string& text) {
    const FormField& at = fieldList_.at(static_cast<std::size_t>(field));
    text_.SetFieldText(at.Column + 1, at.Line, text, at.Width);
}

void PageEdits::Store(int field, std::string_view text) {
    const FormField& at = fieldList_.at(static_cast<std::size_t>(field));
    const std::string before = Get(field);
    std::string put(text);
    if (at.IsAmount && put.size() < static_cast<std::size_t>(at.Width)) put.resize(static_cast<std::size_t>(at.Width), ' ');
    Put(field, put);
    std::optional<std::string>& stored = fieldText_.at(static_cast<std::size_t>(field));
    if (std::string after = Get(field); after != before) done_.push_back({field, before, std::move(after), stored});
    stored = std::move(put);
}

int PageEdits::Undo() {
    if (!done_.empty()) {
        const Change change = std::move(done_.back());
        done_.pop_back();
        Put(change.Field, change.Before);
        fieldText_.at(static_cast<std::size_t>(change.Field)) = change.StoredBefore;
        return change.Field;
    }
    const auto lost = lost_.find(fileName_);
    if (lost == lost_.end()) return -1;
    const std::vector<Change> changes = std::move(lost->second);
    lost_.erase(lost);
    int last = -1;
    for (const Change& change : changes) {
        // The file may have been written anew, with other fields, since.
        if (static_cast<std::size_t>(change.Field) >= fieldList_.size()) continue;
        Store(change.Field, change.After);
        last = change.Field;
    }
    return last;
}

void PageEdits::Saved() {
    done_.clear();
    lost_.erase(fileName_);
}

}  // namespace tallymar
