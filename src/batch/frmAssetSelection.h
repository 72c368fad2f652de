#pragma once

#include <QString>

class QWidget;

namespace tallymar {

class FieldRows;
class sitxEdit;

// The fields by which commands over many assets choose them; each form adds what is peculiar to its own.
struct AssetSelectionFields {
    sitxEdit* sitxDivision = nullptr;
    sitxEdit* sitxDepartment = nullptr;
    sitxEdit* sitxYear = nullptr;
};

sitxEdit* MakeDivision(const char* name, QWidget* form);
sitxEdit* MakeDepartment(const char* name, QWidget* form);
sitxEdit* MakeYear(QWidget* form);

// "Division (Blank for ALL)", "Department (Blank for ALL)" and, below them or beside, "In-Service Year (Blank for ALL)", with
// their hints.
AssetSelectionFields AddAssetSelection(FieldRows& rows, QWidget* form, bool yearBeside = false);

// What a year does not do, for the line under its hint.
QString YearNote();

}  // namespace tallymar
