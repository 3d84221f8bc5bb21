#include "next_steps_c.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <limits>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "requests/index_file.h"
#include "requests/members.h"
#include "requests/object_input.h"
#include "requests/reply.h"
#include "requests/request_text.h"
#include "vantrex/version.h"

namespace requests = next_steps_requests;

namespace {

constexpr std::array<std::string_view, 3> kKeys = {"index", "catalogue", "serves"};

// Returns the file that a member of the options names, or nothing without one.
std::optional<std::string> file_of(requests::Members& options, std::string_view key) {
  const auto name = options.optional(key, vantrex::values::Kind::string).string();
  if (!name) return std::nullopt;
  std::string file(*name);
  if (file.empty() || file == "-" || file.find('\0') != std::string::npos) {
    options.reject(key, "must be the name of a file");
  }
  return file;
}

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): it is the thread's
thread_local std::string last_error;

void set_last_error(const char* message) noexcept {
  try {
    last_error = message;
  } catch (const std::exception&) {
    last_error = "out of memory";  // is short enough to need none
  }
}

// Returns what `operation` returns; if it throws, a null pointer, and sets the last error.
template <typename Operation>
auto reporting(Operation operation) -> decltype(operation()) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    set_last_error("out of memory");
  } catch (const std::exception& error) {
    set_last_error(error.what());
  }
  return nullptr;
}

std::string_view checked_text(const std::string& name, const char* text, std::size_t size) {
  if (text == nullptr) throw std::invalid_argument(name + " must not be null");
  if (size > std::numeric_limits<std::uint32_t>::max()) {
    throw std::invalid_argument(name + " must not be longer than 2^32 - 1 bytes");
  }
  return {text, size};
}

}  // namespace

struct next_steps_session {
  explicit next_steps_session(requests::Members options) {
    options.allow_only(kKeys, "the options");
    const auto index_file = file_of(options, "index");
    const auto catalogue_file = file_of(options, "catalogue");
    if ((serves = requests::served_tools(options))) context.serves = &*serves;
    if (catalogue_file) context.catalogue = &catalogue.emplace(requests::read_catalogue(*catalogue_file));
    if (index_file) context.index = &index.emplace(*index_file);
  }

  requests::ReplyContext context;  // refers to what follows
  std::optional<requests::module::ServedTools> serves;
  std::optional<requests::module::Catalogue> catalogue;
  std::optional<requests::IndexFile> index;
};

next_steps_session* next_steps_open(const char* options, std::size_t size) {
  return reporting([&] {
    const std::string_view text = checked_text("the options", options, size);
    try {
      return new next_steps_session(requests::Members(text, "the options", kKeys));
    } catch (const requests::JsonError& error) {
      throw requests::in_source("options", error);
    }
  });
}

void next_steps_close(next_steps_session* session) {
  delete session;
}

char* next_steps_reply(next_steps_session* session, const char* request, std::size_t size,
                       std::size_t* reply_size) {
  return reporting([&] {
    if (session == nullptr) throw std::invalid_argument("the session must not be null");
    const std::string reply =
        requests::reply_to(checked_text("the request", request, size), 1, session->context).line;
    char* copy = new char[reply.size() + 1];
    std::copy_n(reply.c_str(), reply.size() + 1, copy);
    if (reply_size != nullptr) *reply_size = reply.size();
    return copy;
  });
}

void next_steps_free(char* reply) {  // NOLINT(readability-non-const-parameter): it is freed
  delete[] reply;
}

const char* next_steps_last_error() {
  return last_error.c_str();
}

const char* next_steps_version() {
  return NEXT_STEPS_VERSION;
}
