// Buttons that Enter presses.
#pragma once

#include <QString>

class QAbstractButton;
class QPushButton;

namespace kalvo {

// A button under its object name; Enter presses it.
[[nodiscard]] QPushButton* makeButton(const QString& name, const QString& caption,
                                      const QString& tip);

// Lets Enter press the button that has the focus, as Space does, whatever Enter stands for
// elsewhere in its window.
void pressWithEnter(QAbstractButton* button);

}  // namespace kalvo
