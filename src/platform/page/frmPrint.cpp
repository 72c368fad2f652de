#include "platform/page/frmPrint.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QWidget>

#include "platform/controls/Hourglass.h"
#include "platform/controls/ScreenText.h"
#include "platform/page/QtPagePainter.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr int kTwipsPerInch = 1440;

void SetUp(QPrinter& printer, const PageDocument& pages) {
    const bool lying = pages.Paper().Width > pages.Paper().Height;
    printer.setPageSize(QPageSize(QPageSize::Letter));
    printer.setPageOrientation(lying ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setFullPage(true);
    printer.setDocName(ToQString(pages.Title));
    printer.setCreator(QStringLiteral("Tallymar"));
}

}  // namespace

void PrintPages(const PageDocument& pages, QPrinter& printer, int from, int to) {
    SetUp(printer, pages);
    const PlatformError refused(Failure::DeviceError,
                                "The printer \"" + ToWindows1252(printer.printerName()) + "\" does not take the pages.");
    QPainter painter;
    if (!painter.begin(&printer)) throw refused;
    const double dotsPerInch = printer.resolution();
    const PagePainter drawing(pages, dotsPerInch / kTwipsPerInch);
    for (int page = from; page <= to; ++page) {
        if (page > from && !printer.newPage()) throw refused;
        drawing.Paint(painter, page);
    }
    if (!painter.end() || printer.printerState() == QPrinter::Error) throw refused;
}

bool PrintWithDialog(const PageDocument& pages, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    SetUp(printer, pages);
    QPrintDialog dialog(&printer, parent);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCollateCopies);
    dialog.setMinMax(1, pages.PageCount());
    dialog.setFromTo(1, pages.PageCount());
    if (dialog.exec() != QDialog::Accepted) return false;
    const bool range = printer.printRange() == QPrinter::PageRange;
    const int from = range ? std::max(1, printer.fromPage()) : 1;
    const int to = range && printer.toPage() > 0 ? std::min(printer.toPage(), pages.PageCount()) : pages.PageCount();
    const class_Hourglass hourglass;
    PrintPages(pages, printer, from, to);
    return true;
}

}  // namespace tallymar
