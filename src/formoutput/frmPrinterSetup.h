#pragma once

#include <array>

#include "formoutput/PrinterSettings.h"
#include "platform/controls/CSForm.h"
#include "store/AppPath.h"

class QListWidget;
class QRadioButton;

namespace tallymar {

class CSCmdBtn;
class sitxEdit;

// "Printer Setup": the program's printer, and where the form pages and soft fonts go, which are sent raw.
class frmPrinterSetup : public CSForm {
    Q_OBJECT

 public:
    explicit frmPrinterSetup(const AppPath& paths, QWidget* parent = nullptr);

 private:
    enum Way { kToPrinter, kToPort, kToFile, kWays };

    QWidget* MakeWays();
    void ShowPrinters();
    void ShowSettings(const PrinterSettings& settings);
    void ShowWay();
    // Of the controls. Refused in the status line, with the keyboard in the field: nullopt.
    std::optional<PrinterSettings> Read();
    void Browse();
    void Test();
    void Ok();

    AppPath paths_;
    std::string saved_;  // the printer that the settings name
    QListWidget* List1_ = nullptr;
    std::array<QRadioButton*, kWays> ways_{};
    sitxEdit* sitxPort_ = nullptr;
    sitxEdit* sitxFile_ = nullptr;
    CSCmdBtn* cmdBrowse_ = nullptr;
};

// Makes the printer of the settings the one that print dialogs begin with.
void UsePrinter(const PrinterSettings& settings);

}  // namespace tallymar
