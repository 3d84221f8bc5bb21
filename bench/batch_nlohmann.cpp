// The job of `next-steps batch` by nlohmann's JSON, for answers of "search" alone: reads
// requests, one a line, from standard input, and writes the finished answers.
#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace {

using nlohmann::ordered_json;

void drop_nulls(ordered_json& value) {
  if (value.is_object()) {
    auto& fields = value.get_ref<ordered_json::object_t&>();
    ordered_json::object_t kept;
    for (auto& [key, field] : fields) {
      if (!field.is_null()) kept.emplace_back(key, std::move(field));
    }
    fields.swap(kept);
  }
  if (!value.is_structured()) return;  // a scalar is a range of itself
  for (ordered_json& item : value) drop_nulls(item);
}

ordered_json step(const char* action, const ordered_json& fqn, const char* reason) {
  return {{"tool", "symbol"}, {"args", {{"action", action}, {"fqn", fqn}}}, {"reason", reason}};
}

void add_steps(ordered_json& answer) {
  const ordered_json& hits = answer["results"];
  const auto best =
      std::find_if(hits.begin(), hits.end(), [](const auto& hit) { return hit.contains("fqn"); });
  if (best == hits.end()) return;
  ordered_json steps = {step("detail", (*best)["fqn"], "Details of the best hit"),
                        step("callers", (*best)["fqn"], "Who calls the best hit")};
  const std::size_t room = std::max<std::size_t>(320, answer.dump().size() * 15 / 100);
  while (steps.size() > 1 && steps.dump().size() + 14 > room) steps.erase(steps.size() - 1);
  answer["next_steps"] = std::move(steps);
}

}  // namespace

int main() {
  std::ios::sync_with_stdio(false);
  for (std::string line; std::getline(std::cin, line);) {
    ordered_json answer = std::move(ordered_json::parse(line)["response"]);
    drop_nulls(answer);
    add_steps(answer);
    std::cout << answer.dump() << '\n';
  }
}
