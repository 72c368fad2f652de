#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formoutput/FormFields.h"
#include "formoutput/FormPageText.h"

namespace tallymar {

// Failure::InvalidCall, saying why, for a text that the field has no room for or, in a field of an amount, that is none: digits
// with at most one point, commas before groups of three, a sign in front or parentheses around them; or nothing.
void RequireFits(const FormField& field, std::string_view text);

inline constexpr std::string_view kUnsavedChanges = "Changes on this page are not saved";

// The page that is shown and what its user has put into its fields. Fields are counted from 0, in the order of the .FPF file.
//
// COMPAT: a page that is left without being saved loses its edits; they are remembered by the page's file name as long as this
// lives, and Undo brings them back when the page is shown again.
class PageEdits {
 public:
    // text: of the page that is shown, which somebody else owns.
    explicit PageEdits(FormPageText& text) : text_(text) {}

    // The text is now that of another page, as its file has it, or of the same one again. What was unsaved is put away.
    void Show(std::string fileName, std::vector<FormField> fields);

    const std::vector<FormField>& FieldList() const { return fieldList_; }
    // What the user has put into the field; none where nothing has been stored, or not any more.
    const std::optional<std::string>& FieldText(int field) const { return fieldText_.at(static_cast<std::size_t>(field)); }

    // The text of the field on the page, without the blanks at its end.
    std::string Get(int field) const;
    // Stores the text in FieldText and on the page, an amount filled up with blanks on its right.
    void Store(int field, std::string_view text);

    // The page differs from its file.
    bool IsDirty() const { return !done_.empty(); }
    // What was unsaved when this page was left the last time, and can come back.
    bool HasLost() const { return done_.empty() && lost_.contains(fileName_); }

    // Takes the last stored change back; on a page without changes brings the lost ones back, all of them. The field that the
    // eye should go to; -1 when there was nothing to undo.
    int Undo();

    // The page has been written to its file: nothing on it can be lost any more.
    void Saved();

 private:
    struct Change {
        int Field;
        std::string Before;  // on the page
        std::string After;
        std::optional<std::string> StoredBefore;
    };
    void Put(int field, const std::string& text);

    std::string fileName_;
    FormPageText& text_;
    std::vector<FormField> fieldList_;
    std::vector<std::optional<std::string>> fieldText_;
    std::vector<Change> done_;
    std::map<std::string, std::vector<Change>> lost_;
};

}  // namespace tallymar
