#pragma once

#include <QApplication>

namespace tallymar {

// The wait cursor, from here to the end of the scope. While one stands, no window may close: a command is at work in it.
class class_Hourglass {
 public:
    class_Hourglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~class_Hourglass() { QApplication::restoreOverrideCursor(); }
    class_Hourglass(const class_Hourglass&) = delete;
    class_Hourglass& operator=(const class_Hourglass&) = delete;

    static bool Stands() { return QApplication::overrideCursor() != nullptr; }
};

}  // namespace tallymar
