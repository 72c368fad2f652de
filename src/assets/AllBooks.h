#pragma once

#include <string>
#include <vector>

#include "assets/AssetFieldValues.h"

// The four books of an asset side by side: what differs between them, and all of it.
namespace tallymar {

// What of a book's method (type, method or percentage), life, convention and basis is not as in the Federal book: "method, life".
// Empty when nothing is, and for the Federal book.
std::string DifferenceFromFederal(const AssetFieldValues& values, int book);

// A field of the book tabs, as each book has it.
struct AllBooksRow {
    std::string Label;  // "Asset Cost"; with its frame where other frames have the same label: "Tax Credit Year"
    PerBook<std::string> Texts;
    PerBook<bool> Differs;  // from the Federal book
    bool IsNumber = false;
};

std::vector<AllBooksRow> AllBooks(AssetFieldValues values);

}  // namespace tallymar
