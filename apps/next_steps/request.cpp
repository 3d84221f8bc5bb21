#include "next_steps/request.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "next_steps/json_reader.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_program {

using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

// Takes the members of a batch line apart.
class RequestReader {
 public:
  explicit RequestReader(std::string_view line)
      : line_(line), object_(read_json_object(line, "a request", &members_)) {}

  Request read() {
    refuse_unknown();
    Request request;
    request.response = std::move(*wanted("response", Kind::object, "an object").object());
    request.tool = *std::as_const(wanted("tool", Kind::string, "a string")).string();
    if (const JsonValue* action = allowed("action", Kind::string, "a string or null")) {
      request.action = *action->string();
    }
    if (JsonValue* arguments = allowed("arguments", Kind::object, "an object or null")) {
      request.arguments = std::move(*arguments->object());
    }
    if (JsonValue* freshness = allowed("freshness", Kind::object, "an object or null")) {
      request.freshness = std::move(*freshness);
    }
    return request;
  }

 private:
  void refuse_unknown() const {
    constexpr std::array<std::string_view, 5> kKnown = {"response", "tool", "action", "arguments",
                                                        "freshness"};
    for (const MemberOffset& member : members_) {
      const std::string_view key = member.key.view();
      if (std::find(kKnown.begin(), kKnown.end(), key) == kKnown.end()) {
        reject(member.offset, quoted(key) + " is no member of a request");
      }
    }
  }

  // The member `key`, which must be there and of `kind`.
  JsonValue& wanted(std::string_view key, Kind kind, std::string_view expected) {
    JsonValue* value = object_.find_mutable(key);
    if (value == nullptr) reject(line_.find('{'), quoted(key) + " is missing");
    if (value->kind() != kind) {
      std::string message = quoted(key) + " must be ";
      message += expected;
      message += ", not ";
      message += kind_name(*value);
      reject(offset_of(key), message);
    }
    return *value;
  }

  // The member `key` when it says something; then it must be of `kind`.
  JsonValue* allowed(std::string_view key, Kind kind, std::string_view expected) {
    return std::as_const(object_)[key].is_null() ? nullptr : &wanted(key, kind, expected);
  }

  std::size_t offset_of(std::string_view key) const {
    const auto is_it = [&](const MemberOffset& member) { return member.key.view() == key; };
    return std::find_if(members_.rbegin(), members_.rend(), is_it)->offset;
  }

  static std::string quoted(std::string_view key) { return values::compact_text(JsonValue(key)); }

  [[noreturn]] void reject(std::size_t offset, const std::string& message) const {
    throw JsonError(place_of(line_, offset), message);
  }

  std::string_view line_;
  std::vector<MemberOffset> members_;
  JsonObject object_;
};

}  // namespace

Request read_request(std::string_view line) {
  return RequestReader(line).read();
}

JsonObject finished(const Request& request) {
  const JsonObject* arguments = request.arguments ? &*request.arguments : nullptr;
  return vantrex::tool_handlers::next_steps::finish_answer(
      request.response, request.tool,
      {.action = request.action, .arguments = arguments, .freshness = request.freshness});
}

}  // namespace next_steps_program
