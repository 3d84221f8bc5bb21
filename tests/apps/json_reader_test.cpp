#include "requests/json_reader.h"

#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "vantrex/values/text_forms.h"

namespace vantrex::tests {
namespace {

using next_steps_requests::JsonError;
using next_steps_requests::read_json;
using namespace std::string_literals;

TEST(JsonReader, ReadsEveryKindExactly) {
  const std::string digits = "9" + std::string(307, '1');
  const std::string zeros(100'000, '0');
  const std::pair<std::string, std::string> table[] = {
      {" [ null , true , false ]\r\n", "[null,true,false]"},
      {"[0, -0, -0.0, 1.0, 1e2, 5e-324, -1e-400, 0e999]", "[0,0,-0.0,1.0,100.0,5e-324,-0.0,0.0]"},
      {"9223372036854775808", "9223372036854775808"},
      {"-9223372036854775809", "-9223372036854775809"},
      {digits, digits},
      {"[9007199254740993.0, 9007199254740993." + zeros + "1]", "[9007199254740992.0,9007199254740994.0]"},
      {"[17976931348623158e292, -0." + zeros + "17976931348623158e100309]",
       "[1.7976931348623157e+308,-1.7976931348623157e+308]"},
      {"[24703282292062328e-340, 24703282292062327e-340]", "[5e-324,0.0]"},
      {"[1" + zeros + "e-100000, 0." + zeros + "1e-100000, 1e-99999999999]", "[1.0,0.0,0.0]"},
      {R"({"a": 1, "b": 2, "a": {"a": 3}})", R"({"a":{"a":3},"b":2})"},
      {R"("\u0041\u00e9\ud83d\ude00\/\u0000\ufeff")", "\"Aé😀/\\u0000\xEF\xBB\xBF\""},
      {"\"\xEF\xBB\xBF\"", "\"\xEF\xBB\xBF\""},
  };
  for (const auto& [text, expected] : table) EXPECT_EQ(compact_text(read_json(text)), expected) << text;
}

TEST(JsonReader, RejectsEachControlCharacterInAString) {
  for (char control = '\x01'; control < ' '; ++control) {
    for (std::size_t at = 1; at <= 40; ++at) {
      std::string text = '"' + std::string(40, 'x') + '"';
      text[at] = control;
      try {
        read_json(text);
        ADD_FAILURE() << static_cast<int>(control) << " at " << at;
      } catch (const JsonError& error) {
        EXPECT_EQ(error.place().line == 1 ? error.place().column : 0, at + 1) << static_cast<int>(control);
      }
    }
  }
}

TEST(JsonReader, RejectsWithTheFirstWrongPlace) {
  const std::tuple<std::string, std::string, std::string> table[] = {
      {"", "1:1", "The document is empty."},
      {"{\"a\": [1, 2}", "1:12", "Missing a comma or ']' after an array element."},
      {"{\n\"a\" \"b\\\"c\\\\\"}", "2:5", "Missing a colon"},
      {"{} {}", "1:4", "must not be followed by other values"},
      {"[NaN]", "1:2", "Invalid value."},
      {"[1" + std::string(309, '0') + "]", "1:2", "Number too big"},
      {"[17976931348623159e292]", "1:2", "Number too big"},
      {"[0." + std::string(2000, '0') + "1e3000]", "1:2", "Number too big"},
      {"\"a\nb\"", "1:3", "Control character in string."},
      {R"(["\x"])", "1:4", "Invalid escape character"},
      {R"(["\ud800"])", "1:9", "surrogate"},
      {R"(["\ud800\"])", "1:10", "surrogate"},
      {R"(["\ud800\u0000"])", "1:11", "surrogate"},
      {R"(["\ud800\uDCxx"])", "1:13", "surrogate"},
      {R"(["\u12x4"])", "1:7", "hex digit"},
      {R"(["\\udc00\n\ud83d\ude00\u00e9\udc00"])", "1:33", "surrogate"},
      {R"({"\udc00": 1})", "1:6", "surrogate"},
      {R"(["\udc00)", "1:6", "surrogate"},
      {R"(["\udc00\ud800"])", "1:6", "surrogate"},
      {"[\"\xFF\\udc00\t\"]", "1:3", "ill-formed UTF-8"},
      {"[\"\t\xFF\\udc00\"]", "1:3", "Control character"},
      {"[-x]", "1:3", "Invalid value."},
      {"[1.]", "1:4", "Miss fraction"},
      {"[1e+]", "1:5", "Miss exponent"},
      {"\xEF\xBB\xBF[]", "1:1", "byte-order mark"},
      {"\xEF\xBC\x81", "1:1", "Invalid value."},
      {"[]\0"s, "1:3", "NUL byte"},
      {"[\n\"\0\"]"s, "2:2", "NUL byte"},
      {"[\"\xFF\0\"]"s, "1:3", "ill-formed UTF-8"},
  };
  for (const auto& [text, place, message] : table) {
    try {
      ADD_FAILURE() << text << " was read as " << compact_text(read_json(text));
    } catch (const JsonError& error) {
      EXPECT_EQ(std::to_string(error.place().line) + ":" + std::to_string(error.place().column), place)
          << text;
      EXPECT_NE(std::string(error.what()).find(message), std::string::npos) << text << ": " << error.what();
    }
  }
}

}  // namespace
}  // namespace vantrex::tests
