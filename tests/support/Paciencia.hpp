#pragma once

#include <QtTest>

namespace atipicos::pruebas {

/// How long a test of windows waits for what has to come, in milliseconds: only what hangs takes so long.
/// QTest's own five seconds are over soon on a machine that has other work.
inline constexpr int paciencia = 600'000;

}

#undef QTRY_COMPARE
#undef QTRY_VERIFY
#define QTRY_COMPARE(hay, debido) QTRY_COMPARE_WITH_TIMEOUT(hay, debido, atipicos::pruebas::paciencia)
#define QTRY_VERIFY(condicion) QTRY_VERIFY_WITH_TIMEOUT(condicion, atipicos::pruebas::paciencia)
