#pragma once

#include <QIcon>
#include <QPalette>

namespace tallymar {

// The drawing ":/icons/<name>.svg" in the palette's text colour (its "#000000"), so that it reads on a light and a dark desktop,
// sharp at every scale. Empty when there is no such drawing.
QIcon TintedIcon(const QString& name, const QPalette& palette);

}  // namespace tallymar
