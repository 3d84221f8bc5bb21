// A random catalogue, or a broken one, is read or refused; an answer is finished and explained with it.
#include <cstddef>
#include <cstdint>
#include <optional>

#include "fuzz/support/byte_choices.h"
#include "fuzz/support/check.h"
#include "fuzz/support/random_catalogue.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"

namespace next_steps = vantrex::tool_handlers::next_steps;
using next_steps::Catalogue;
using vantrex::fuzz::check;
using vantrex::fuzz::Random;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

// Replaces a member of `object`, or of an object in it, by a random value.
void damage(JsonObject& object, Random& random) {
  if (object.empty()) return;
  const auto key = object.begin()[random.below(object.size())].key;
  JsonValue member = object[key.view()];
  if (JsonObject* inner = member.object(); inner != nullptr && random.chance(80)) {
    damage(*inner, random);
  } else {
    member = random.value(2);
  }
  object.set(key, member);
}

std::optional<Catalogue> read(const JsonObject& json) {
  try {
    return Catalogue::from_json(json);
  } catch (const next_steps::CatalogueError& error) {
    check(*error.what() != '\0', "an error has a message");
    return std::nullopt;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Random random = vantrex::fuzz::byte_choices(data, size, vantrex::fuzz::Domain::any);
  JsonObject json = random_catalogue(random);
  check(read(json).has_value(), "a valid catalogue is read");
  if (random.chance(50)) damage(json, random);
  const auto catalogue = read(json);
  if (!catalogue) return 0;
  check(catalogue->to_json() == json, "a catalogue is printed as it was read");
  const auto request = request_to_own_server(random);
  next_steps::FinishOptions options = request.options();
  options.catalogue = &*catalogue;
  const JsonObject finished = finish_answer(request.answer, request.tool, options);
  std::size_t kept = 0;
  for (const auto& each : explain_answer(request.answer, request.tool, options).candidates) {
    if (each.verdict == next_steps::Verdict::kept) ++kept;
  }
  const auto* steps = finished["next_steps"].list();
  check(kept == (steps == nullptr ? 0 : steps->size()), "explain keeps the steps of the finished answer");
  return 0;
}
