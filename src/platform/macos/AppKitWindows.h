#pragma once

class QWidget;

namespace nimbrel::macos {

/// Shows one of the program's own windows in front of all, on the space where the user is, and makes the
/// program the active one; when the window closes, the application before it is. Main thread.
void bringForward(QWidget& window);

}  // namespace nimbrel::macos
