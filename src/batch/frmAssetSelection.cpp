#include "batch/frmAssetSelection.h"

#include <QCoreApplication>

#include "platform/controls/CSForm.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/sitxEdit.h"
#include "store/AssetColumns.h"

namespace tallymar {

namespace {

constexpr int kYearDigits = 4;

QString Tr(const char* text) {
    return QCoreApplication::translate("AssetSelection", text);
}

}  // namespace

sitxEdit* MakeDivision(const char* name, QWidget* form) {
    return Named(new sitxEdit(ColumnOf(&AssetRecord::Division).Width(), form), name);
}

sitxEdit* MakeDepartment(const char* name, QWidget* form) {
    return Named(new sitxEdit(ColumnOf(&AssetRecord::Department).Width(), form), name);
}

sitxEdit* MakeYear(QWidget* form) {
    auto* year = Named(new sitxEdit(kYearDigits, form), "sitxYear");
    year->SetAllowed("0123456789");
    CSForm::SetHint(year, Tr("Enter a Fiscal Year or leave blank to select ALL Years"));
    return year;
}

AssetSelectionFields AddAssetSelection(FieldRows& rows, QWidget* form, bool yearBeside) {
    const AssetSelectionFields fields{MakeDivision("sitxDivision", form), MakeDepartment("sitxDepartment", form), MakeYear(form)};
    CSForm::SetHint(fields.sitxDivision, Tr("Enter a Division or leave blank to select ALL Divisions"));
    CSForm::SetHint(fields.sitxDepartment, Tr("Enter a Department or leave blank to select ALL Departments"));
    rows.Add(Tr("Division (Blank for ALL)"), fields.sitxDivision);
    rows.Add(Tr("Department (Blank for ALL)"), fields.sitxDepartment);
    if (yearBeside) rows.NextColumn();
    rows.Add(Tr("In-Service Year (Blank for ALL)"), fields.sitxYear);
    return fields;
}

QString YearNote() {
    return Tr("A year other than blank or 0 selects nothing");
}

}  // namespace tallymar
