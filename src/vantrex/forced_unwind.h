// ForcedUnwind: the exception that unwinds the stack of a cancelled thread.
//
// The GNU C library throws it, and aborts the process when a handler does not rethrow it. Code that catches
// everything rethrows it first:
//   catch (const ForcedUnwind&) { throw; } catch (...) { ... }
#pragma once

#include <version>

#ifdef __GLIBCXX__
#include <cxxabi.h>
#endif

namespace vantrex {

#ifdef __GLIBCXX__
using ForcedUnwind = abi::__forced_unwind;
#else
class ForcedUnwind {};  // never thrown
#endif

}  // namespace vantrex
