#pragma once

namespace veltra {

// A thread starts with a copy of its creator's vector registers. When the
// creator had just run 256-bit AVX code without clearing up after it (the
// window's thread, in the app), the audio thread inherits "dirty" upper
// register halves that nothing on it ever clears, and every switch between
// the patch's SSE code and the C library's AVX maths (sigmund~'s sin and
// cos) pays a penalty: in the window, while a note sounded, the audio thread
// cost half as much again as on the command line. VZEROUPPER clears that
// state in a cycle; CPUs without AVX have none to clear.
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
// Read when the program starts, so the audio thread never meets the guard
// of a first-use initialisation.
inline const bool kCpuHasAvx = (__builtin_cpu_init(), __builtin_cpu_supports("avx"));
#endif

inline void clearUpperVectorState() noexcept
{
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
    if (kCpuHasAvx)
        asm volatile("vzeroupper" ::: "memory");
#endif
}

} // namespace veltra
