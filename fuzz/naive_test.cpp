#include "fuzz/support/naive.h"

#include <cctype>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::fuzz {
namespace {

namespace next_steps = tool_handlers::next_steps;
using values::JsonObject;
using values::JsonValue;

// How often each class of request was drawn, by name.
using Counts = std::map<std::string, std::size_t>;

constexpr std::size_t kVectorBytes = 16;
constexpr std::size_t kUnindexedFields = 32;

std::string lead_byte(const std::string& where, unsigned byte) {
  return where + " with lead byte " + std::to_string(byte);
}
std::string special(const std::string& where, char byte, std::size_t offset) {
  const std::string name = byte >= 0 && byte < ' ' ? "control character" : std::string(1, byte);
  return where + " with " + name + " at " + std::to_string(offset % kVectorBytes);
}
std::string digits(std::size_t count) {
  return "float of " + std::to_string(count) + " digits";
}

// The classes that the requests must include: every class of value, every row, every signal, and both sides
// of each rule.
std::set<std::string> all_classes() {
  std::set<std::string> classes = {"scope changed_files",
                                   "scope first files",
                                   "scope base_branch",
                                   "scope empty",
                                   "requested path",
                                   "requested fqn",
                                   "no code",
                                   "boolean count",
                                   "own steps",
                                   "room by share",
                                   "room by floor",
                                   "dropped",
                                   "large freshness hints",
                                   "indexed answer",
                                   "indexed arguments",
                                   "indexed object",
                                   "signal of a served tool",
                                   "signal of a served action",
                                   "signal not served",
                                   "usual of a served tool",
                                   "usual of a served action",
                                   "usual not served"};
  for (const auto& row : next_steps::NEXT_STEPS) classes.insert("row " + std::string(row.key));
  for (const auto& row : next_steps::_SIGNALS) classes.insert("signal " + std::string(row.key));
  for (std::size_t count = 3; count <= 13; ++count) classes.insert(digits(count));
  for (const std::string where : {"string", "key"}) {
    classes.insert({"long " + where, "long plain " + where});
    for (unsigned byte = 0xC2; byte <= 0xF4; ++byte) classes.insert(lead_byte(where, byte));
    for (std::size_t offset = 0; offset < kVectorBytes; ++offset) {
      for (const char byte : {'"', '\\', '\n'}) classes.insert(special(where, byte, offset));
    }
  }
  return classes;
}

void count_text(std::string_view text, const std::string& where, Counts& counts) {
  if (text.size() > 14) ++counts["long " + where];
  std::size_t plain = 0;
  for (std::size_t offset = 0; offset < text.size(); ++offset) {
    const char byte = text[offset];
    const bool is_special = (byte >= 0 && byte < ' ') || byte == '"' || byte == '\\';
    plain = is_special ? 0 : plain + 1;
    if (plain == 64) ++counts["long plain " + where];
    if (is_special) ++counts[special(where, byte, offset)];
    if (const auto lead = static_cast<unsigned char>(byte); lead >= 0xC0) ++counts[lead_byte(where, lead)];
  }
}

// The number of digits of a finite float without leading and trailing zeros.
std::size_t significant_digits(const JsonValue& value) {
  std::string found;
  for (const char c : naive::json_text(value)) {
    if (c == 'e') break;
    if (std::isdigit(static_cast<unsigned char>(c)) != 0 && (c != '0' || !found.empty())) found += c;
  }
  return found.find_last_not_of('0') + 1;
}

void count_values(const JsonValue& value, Counts& counts) {
  if (value.string()) count_text(*value.string(), "string", counts);
  if (value.floating()) ++counts[digits(significant_digits(value))];
  if (const auto* list = value.list()) {
    for (const JsonValue& item : *list) count_values(item, counts);
  }
  if (value.object() == nullptr) return;
  if (value.object()->size() > kUnindexedFields) ++counts["indexed object"];
  for (const auto& [key, member] : *value.object()) {
    count_text(key.view(), "key", counts);
    count_values(member, counts);
  }
}

void count_request(const Request& request, Counts& counts) {
  const JsonObject arguments = request.arguments.value_or(JsonObject());
  count_values(values::JsonList::of(request.answer, arguments, request.freshness), counts);
  if (request.answer.size() > kUnindexedFields) ++counts["indexed answer"];
  if (arguments.size() > kUnindexedFields) ++counts["indexed arguments"];
  if (naive::hint_size(request.freshness) > next_steps::HINT_FLOOR_BYTES) ++counts["large freshness hints"];
}

TEST(FinishAnswer, EqualsTheNaiveReading) {
  Counts counts;
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    const Request request = Random(seed).request();
    const std::string before = naive::json_text(request.answer);
    const naive::Finished expected = naive::finish(request);
    const std::string text = naive::json_text(expected.answer);
    const auto finished = next_steps::finish_answer(request.answer, request.tool, request.options());
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", " << request.tool << ":"
                                    << request.action.value_or("(none)") << " " << before);
    ASSERT_EQ(values::compact_text(finished), text);
    ASSERT_EQ(finished, expected.answer);
    ASSERT_EQ(values::compact_size(finished), text.size());
    ASSERT_EQ(next_steps::_hint_size(finished), naive::hint_size(expected.answer));
    ASSERT_EQ(naive::json_text(request.answer), before);
    for (const std::string& rule : expected.reached) ++counts[rule];
    count_request(request, counts);
  }
  for (const std::string& name : all_classes()) EXPECT_GT(counts[name], 0U) << "never drawn: " << name;
}

TEST(FinishAnswer, EqualsTheNaiveReadingOfAThousandOwnSteps) {
  for (const std::size_t text_bytes : {0U, 100'000U, 1'000'000U}) {
    values::JsonList own;
    for (int place = 0; place < 1000; ++place) own.push_back(next_steps::step("t", std::to_string(place)));
    const Request request = {
        {{"next_steps", own}, {"text", std::string(text_bytes, 't')}}, "other", {}, {}, {}};
    EXPECT_EQ(next_steps::finish_answer(request.answer, "other"), naive::finish(request).answer);
  }
}

}  // namespace
}  // namespace vantrex::fuzz
