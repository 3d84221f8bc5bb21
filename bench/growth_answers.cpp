#include "growth_answers.h"

#include <string>
#include <utility>

#include "words.h"

namespace vantrex::bench {

using values::JsonList;
using values::JsonObject;

Request flat_request(std::size_t bytes) {
  constexpr std::size_t kRowBytes = 107;
  return rows_request("flat", bytes / kRowBytes);
}

Request own_steps_request(std::size_t count) {
  Random random(7);
  JsonList steps;
  for (std::size_t number = 0; number < count; ++number) {
    steps.push_back(JsonObject{
        {"tool", "symbol"},
        {"args", JsonObject{{"action", "detail"}, {"fqn", "acme.storage." + function_name(random)}}},
        {"reason", "Next on the route"}});
  }
  JsonObject answer{{"fqn", "acme"}, {"next_steps", std::move(steps)}};
  return {"own steps", std::move(answer), "explore", std::nullopt, {}, {}};
}

Request fields_request(std::size_t count) {
  JsonObject fields;
  for (std::size_t number = 0; number < count; ++number)
    fields.set("symbol_" + std::to_string(number), number);
  JsonObject answer{{"fqn", "acme"}, {"fields", std::move(fields)}};
  return symbol_request("fields", std::move(answer));
}

Request nulls_request(std::size_t count) {
  JsonList nulls;
  nulls.reserve(count);
  for (std::size_t number = 0; number < count; ++number) nulls.push_back(nullptr);
  JsonObject answer{{"fqn", "acme"}, {"values", std::move(nulls)}};
  return symbol_request("nulls", std::move(answer));
}

Request long_texts_request() {
  Random random(8);
  JsonList files;
  for (std::size_t number = 0; number < 10; ++number) {
    files.push_back(JsonObject{{"path", file_path(random)}, {"text", code(random, 8000)}});
  }
  JsonObject answer{{"fqn", "acme"}, {"files", std::move(files)}};
  return symbol_request("long texts", std::move(answer));
}

}  // namespace vantrex::bench
