#pragma once

#include <filesystem>

class QDropEvent;

namespace tallymar {

// The one file that is dragged over a window, or dropped on it. Empty when it is not one or does not lie on this computer, and
// while a modal window is up or a command is at work: whoever drags it there may not change anything behind them.
std::filesystem::path DraggedFile(const QDropEvent& event);

}  // namespace tallymar
