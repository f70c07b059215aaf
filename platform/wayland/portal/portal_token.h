// The desktop's token for a consent that was given for good.
#pragma once

#include <QString>

namespace kalvo {

// In a file of the user's own. Empty when there is none.
[[nodiscard]] QString readPortalToken();
// It lets whoever has it type: for the user alone. An empty one is forgotten.
void keepPortalToken(const QString& token);

}  // namespace kalvo
