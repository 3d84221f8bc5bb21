// NEXT_STEPS_API marks the classes and functions that a shared library exports.
#pragma once

/// Exports the symbol from a shared library, for which NEXT_STEPS_SHARED is defined. Unmarked symbols are
/// hidden; in a static library all are.
#if defined(NEXT_STEPS_SHARED) && defined(__GNUC__)
#define NEXT_STEPS_API __attribute__((visibility("default")))
#else
#define NEXT_STEPS_API
#endif
