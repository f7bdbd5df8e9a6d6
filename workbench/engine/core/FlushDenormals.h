#pragma once

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace qor::engine {

/// Numbers too small for full precision are taken for 0 while this lives: they cost a hundred times
/// as much.
class FlushDenormals {
public:
#if defined(__SSE__)
    FlushDenormals() : saved_(_mm_getcsr()) {
        constexpr unsigned flushToZero = 0x8000;
        constexpr unsigned denormalsAreZero = 0x0040;
        _mm_setcsr(saved_ | flushToZero | denormalsAreZero);
    }

    ~FlushDenormals() {
        _mm_setcsr(saved_);
    }
#else
    FlushDenormals() = default;
    ~FlushDenormals() = default;
#endif
    FlushDenormals(const FlushDenormals&) = delete;
    FlushDenormals(FlushDenormals&&) = delete;
    FlushDenormals& operator=(const FlushDenormals&) = delete;
    FlushDenormals& operator=(FlushDenormals&&) = delete;

private:
    unsigned saved_ = 0;
};

} // namespace qor::engine
