#include "vantrex/logging/logger.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "vantrex/forced_unwind.h"
#include "vantrex/logging/quoted_literal.h"

namespace vantrex::logging {

namespace {

struct SinkSlot {
  std::mutex mutex;
  std::shared_ptr<const Sink> sink;  // null for the default
};

// Never destroyed: destructors of static objects may log.
SinkSlot& slot() {
  // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): one sink for the process.
  static SinkSlot& slot = *new SinkSlot;
  return slot;
}

std::shared_ptr<const Sink> current_sink() {
  const std::lock_guard lock(slot().mutex);
  return slot().sink;
}

void send(const Record& record) {
  try {
    const std::shared_ptr<const Sink> sink = current_sink();
    sink ? (*sink)(record) : write_to_standard_error(record);
  } catch (const ForcedUnwind&) {
    throw;
  } catch (...) {
    // A failure of the log cannot be reported.
  }
}

// Appends the text of `error`. Returns its nested cause, or null at the end of the chain.
std::exception_ptr append_cause(std::string& text, const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& exception) {
    text += printable(exception.what());
    const auto* nested = dynamic_cast<const std::nested_exception*>(&exception);
    return nested == nullptr ? nullptr : nested->nested_ptr();
  } catch (const std::nested_exception& nested) {
    text += "an error without a text";
    return nested.nested_ptr();
  } catch (...) {
    text += "an error without a text";
    return nullptr;
  }
}

}  // namespace

std::string_view level_name(Level level) noexcept {
  static constexpr std::array<std::string_view, 4> kNames = {"DEBUG", "INFO", "WARNING", "ERROR"};
  return kNames[static_cast<std::size_t>(level)];
}

void set_sink(Sink sink) {
  std::shared_ptr<const Sink> next = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
  const std::lock_guard lock(slot().mutex);
  // `next` destroys the former sink after the lock is released.
  slot().sink.swap(next);
}

void write_to_standard_error(const Record& record) {
  std::string text(level_name(record.level));
  text.append(" ").append(record.logger).append(": ").append(printable(record.message)).append("\n");
  const char* prefix = "  error: ";
  for (std::exception_ptr error = record.error; error != nullptr; prefix = "  caused by: ") {
    text += prefix;
    error = append_cause(text, error);
    text += '\n';
  }
  // One call, so that records of several threads do not mix.
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
}

void Logger::warning(std::string_view message, std::exception_ptr error) const {
  send({name_, Level::warning, message, std::move(error)});
}

void Logger::warning(std::string_view format, std::string_view argument, std::exception_ptr error) const {
  std::string message;
  try {
    if (const std::size_t place = format.find("%r"); place != std::string_view::npos) {
      message.append(format.substr(0, place))
          .append(quoted_literal(argument))
          .append(format.substr(place + 2));
    }
  } catch (...) {
    message.clear();
  }
  warning(message.empty() ? format : message, std::move(error));
}

}  // namespace vantrex::logging
