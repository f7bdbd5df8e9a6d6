#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the process with \p what when \p holds is false, which a fuzzer keeps as a finding.
inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
