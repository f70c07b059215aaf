// "Errors are skipped statement by statement", in one place.
#pragma once

#include <utility>

#include "text/runtime_error.h"

namespace kalvo {

// Runs one statement; when it fails with a run-time error it is passed over and
// the next one runs. True when the statement ran to its end.
template <typename Statement>
bool resumeNext(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace kalvo
