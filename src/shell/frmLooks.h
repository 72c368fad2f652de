#pragma once

class QApplication;

namespace tallymar {

// The font, the icon and the name that all windows have.
void SetLooks(QApplication& application);

}  // namespace tallymar
