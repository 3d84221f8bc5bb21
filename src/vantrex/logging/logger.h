// Named loggers, and the sink that receives all their records.
//
// Purpose: the library reports what went wrong; the host decides where it is written. The default sink writes
// to standard error.
//
// Ownership: a replaced sink is destroyed when no record is being sent to it any more. A record borrows its
// texts for the length of the sink's call.
//
// Threads: everything may be called from any thread at any time, also from inside a sink. Records do not wait
// for each other, so a sink must be safe for concurrent calls. Logging works before the first dynamic
// initialiser and after the last destructor.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <string_view>

#include "vantrex/export.h"

namespace vantrex::logging {

/// The severity of a record, in ascending order.
enum class Level : std::uint8_t { debug, info, warning, error };

/// The name of a level in capitals: "WARNING".
NEXT_STEPS_API std::string_view level_name(Level level) noexcept;

/// One message to the log.
struct Record {
  std::string_view logger;   ///< the name of the logger
  Level level;               ///< the severity
  std::string_view message;  ///< without a line break at the end
  std::exception_ptr error;  ///< the cause, which may have nested causes; may be null
};

/// Receives records. Must be safe for concurrent calls.
using Sink = std::function<void(const Record& record)>;

/// Sends all further records to `sink`; an empty one restores the default. A record that is being sent may
/// still go to the former sink. Throws std::bad_alloc; the sink is then unchanged.
NEXT_STEPS_API void set_sink(Sink sink);

/// The default sink. Writes the record to standard error on one line, then one line for the error and one for
/// each of its nested causes. Throws std::bad_alloc.
NEXT_STEPS_API void write_to_standard_error(const Record& record);

/// A named logger. Immutable.
class NEXT_STEPS_API Logger {
 public:
  /// `name` must outlive the logger, as a literal does.
  constexpr explicit Logger(std::string_view name) noexcept : name_(name) {}

  /// Sends a warning to the sink. Ignores what the sink throws, except the cancellation of the thread.
  void warning(std::string_view message, std::exception_ptr error) const;

  /// The same, with the first "%r" of `format` replaced by `argument` as a quoted literal. If memory runs out
  /// for that, sends `format` itself.
  void warning(std::string_view format, std::string_view argument, std::exception_ptr error) const;

 private:
  std::string_view name_;
};

}  // namespace vantrex::logging
