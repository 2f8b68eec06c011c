#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace veltra {

// A programming error: the program stops. Used where a value can only be
// wrong through a bug (a non-finite note number, an overflowing counter),
// never for bad input from the user or the machine.
[[noreturn]] inline void fatalError(const char* what)
{
    std::fprintf(stderr, "fatal: %s\n", what);
    std::fflush(nullptr);
    std::abort();
}

// Truncating float-to-integer conversions that stop the program where the
// value has no integer counterpart (NaN, infinity, out of range).
template <typename Float>
std::int64_t checkedTruncToInt64(Float x)
{
    // 2^63 is exactly representable; anything at or beyond it overflows.
    constexpr Float limit = static_cast<Float>(9223372036854775808.0);
    if (!std::isfinite(x) || x >= limit || x < -limit)
        fatalError("float to integer conversion of a non-finite or out-of-range value");
    return static_cast<std::int64_t>(x);
}

template <typename Float>
std::uint64_t checkedTruncToUInt64(Float x)
{
    constexpr Float limit = static_cast<Float>(18446744073709551616.0);
    if (!std::isfinite(x) || x >= limit || x <= static_cast<Float>(-1))
        fatalError("float to unsigned integer conversion of a non-finite or out-of-range value");
    return static_cast<std::uint64_t>(x);
}

} // namespace veltra
