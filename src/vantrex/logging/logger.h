// The log seam: loggers by name, and the one sink that all records go to.
//
// Purpose: the library says what went wrong, and the host decides where that
// is written. Without a sink of the host's own, records go to standard error.
//
// Ownership: the seam shares the sink with the records that are being written;
// a replaced sink is destroyed when the last of them is done. A record lends
// its texts for the length of the sink's call.
//
// Threads: everything here may be called from any thread at any time, also
// from inside a sink. Logging waits for no other record, so a sink must bear
// being called on several threads at once. The seam is there before the first
// dynamic initialiser runs and until after the last destructor.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <string_view>

#include "vantrex/export.h"

namespace vantrex::logging {

// How grave a record is, from the least on.
enum class Level : std::uint8_t { debug, info, warning, error };

// "WARNING" and so on.
NEXT_STEPS_API std::string_view level_name(Level level) noexcept;

// One thing that is said to the log.
struct Record {
  std::string_view logger;   // who says it
  Level level;               // how grave it is
  std::string_view message;  // what is said, without a line break at the end
  std::exception_ptr error;  // what led to it, with its nested causes; may be null
};

// What records are sent to. It may be called on several threads at once.
using Sink = std::function<void(const Record& record)>;

// Sends all further records to `sink`; an empty one restores the default. A
// record that is being written meanwhile may still go to the former sink.
// Throws std::bad_alloc, and then the sink stays as it was.
NEXT_STEPS_API void set_sink(Sink sink);

// The default sink: the record on one line of standard error, then one line
// for the error and for each of its nested causes. Throws std::bad_alloc.
NEXT_STEPS_API void write_to_standard_error(const Record& record);

// What speaks to the log, under a name of its own. Immutable.
class NEXT_STEPS_API Logger {
 public:
  // `name` must outlive the logger; a literal does.
  constexpr explicit Logger(std::string_view name) noexcept : name_(name) {}

  // The name that the logger was made with.
  constexpr std::string_view name() const noexcept { return name_; }

  // Sends a warning to the sink. Whatever the sink throws ends here; only the
  // cancellation of the thread goes on.
  void warning(std::string_view message, std::exception_ptr error) const;

  // The same with the first "%r" of `format` replaced by `argument` as a quoted
  // literal; where there is no memory for that, the format is sent as it is.
  void warning(std::string_view format, std::string_view argument, std::exception_ptr error) const;

 private:
  std::string_view name_;
};

}  // namespace vantrex::logging
