// Where the user left a window, from one opening to the next.
#pragma once

class QWidget;

namespace kalvo {

class Registry;

// Puts a window, known by its object name, where it was left. The place is kept with the
// user's settings of the toolkit. A former release kept it among the program's own settings:
// such a value is removed.
void restorePlace(QWidget* window, Registry& registry);
void keepPlace(const QWidget* window);

}  // namespace kalvo
