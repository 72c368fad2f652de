#pragma once

#include "platform/page/Delivery.h"

class QPrinter;
class QWidget;

namespace tallymar {

// Puts the pages from one to another on a printer's paper. The paper's corner stands for the corner of what the printer can
// reach, so that nothing at the edge is lost; on a printer without margins, such as one that makes files, the two are the same.
// Fails with Failure::DeviceError when the printer does not take the pages.
void PrintPages(const PageDocument& pages, QPrinter& printer, int from, int to);

// Asks for a printer, pages and copies, and prints. False when the user cancels.
bool PrintWithDialog(const PageDocument& pages, QWidget* parent);

}  // namespace tallymar
