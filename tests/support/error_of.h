// The run-time error that a statement ends with.
#pragma once

#include <gtest/gtest.h>

#include "text/runtime_error.h"

namespace kalvo::testing {

// Its number, 0 when the statement runs to its end. Every error must have a text.
template <typename Statement>
int errorOf(Statement&& statement) {
    try {
        statement();
        return 0;
    } catch (const RuntimeError& error) {
        EXPECT_NE(error.description(), "");
        return error.number();
    }
}

}  // namespace kalvo::testing
