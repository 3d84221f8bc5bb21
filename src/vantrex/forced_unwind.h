// ForcedUnwind: what unwinds the stack of a thread that is cancelled.
//
// The GNU C library ends such a thread by throwing it, and aborts the process when it
// is caught and not thrown again. Whoever catches everything lets it pass first:
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
class ForcedUnwind {};  // nothing throws it
#endif

}  // namespace vantrex
