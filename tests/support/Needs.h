// SPDX-License-Identifier: MIT
// What a test needs of the machine that runs it.
#pragma once

#include <QTest>
#include <QtGlobal>

/// Skips the test function, aloud, where the machine or the user lacks what it needs; `reason` says what is
/// then not tested. Only for what is no fault of the program. In CI (environment variable CI) it fails: there
/// all must be, or nobody would notice that something is no longer tested.
#define TARNVIK_NEEDS(condition, reason)                                                                     \
    do {                                                                                                     \
        const bool tarnvikHasIt = (condition);                                                               \
        if (!tarnvikHasIt && qEnvironmentVariableIsSet("CI"))                                                \
            QFAIL("CI must have this: " reason);                                                             \
        if (!tarnvikHasIt)                                                                                   \
            QSKIP(reason);                                                                                   \
    } while (false)
