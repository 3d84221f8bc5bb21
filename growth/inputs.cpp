#include "inputs.h"

#include <vector>

#include "colliding.h"

namespace vantrex::growth {

namespace {

using namespace std::string_view_literals;

constexpr Input kInputs[] = {
    {Kind::control, "control", "a"},

    {Kind::name, "letters", "a"},
    {Kind::name, "capitals", "A"},
    {Kind::name, "camel case", "aB"},
    {Kind::name, "letters beyond ASCII", "\u00e9"},
    {Kind::name, "digits", "7"},
    {Kind::name, "zeros and an exponent", "0", "1", "", "", "e-9"},
    {Kind::name, "spaces", " "},
    {Kind::name, "underscores", "_"},
    {Kind::name, "words", "ab_"},
    {Kind::name, "dots", "."},
    {Kind::name, "dotted parts", "a."},
    {Kind::name, "slashes", "/"},
    {Kind::name, "directories", "a/"},
    {Kind::name, "own directories", "./"},
    {Kind::name, "backslashes", "\\"},
    {Kind::name, "hash signs", "#"},
    {Kind::name, "single colons", ":"},
    {Kind::name, "double colons", "::"},
    {Kind::name, "qualified parts", "a::"},
    {Kind::name, "arrows", "->"},
    {Kind::name, "parts with arrows", "a->"},
    {Kind::name, "arrow operators", "operator->"},
    {Kind::name, "slash operators", "operator/"},
    {Kind::name, "call operators", "operator()"},
    {Kind::name, "opening parentheses", "("},
    {Kind::name, "closing parentheses", ")"},
    {Kind::name, "pairs of parentheses", "()"},
    {Kind::name, "nested parentheses", "(", "a", "", ")"},
    {Kind::name, "calls", "a()."},
    {Kind::name, "opening angle brackets", "<"},
    {Kind::name, "closing angle brackets", ">"},
    {Kind::name, "pairs of angle brackets", "<>"},
    {Kind::name, "nested angle brackets", "a<", "", "", ">"},
    {Kind::name, "crossed brackets", "<(", "a", "", ">)"},
    {Kind::name, "separated closing brackets", ">.)."},
    {Kind::name, "single quotes", "'"},
    {Kind::name, "double quotes", "\""},
    {Kind::name, "both quotes", "'\""},
    {Kind::name, "control characters", "\x01"},
    {Kind::name, "NUL bytes", "\0"sv},
    {Kind::name, "line feeds", "\n"},
    {Kind::name, "line separators", "\u2028"},
    {Kind::name, "ill-formed bytes", "\xFF"},
    {Kind::name, "cut-off characters", "\xE2\x82"},
    {Kind::name, "opened lists", "["},
    {Kind::name, "opened objects", R"({"a":)"},
    {Kind::name, "text escapes", R"(\u00e9)", "\""},
    {Kind::name, "lone surrogates", R"(\udc00)", "\""},
    {Kind::name, "surrogate pairs", R"(\ud83d\ude00)", "\"", R"(\udc00")"},

    {Kind::answer, "a long text", "a", R"({"fqn":")", "", "", R"("})"},
    {Kind::answer, "a long query", "a", R"({"total":0,"query":")", "", "", R"("})"},
    {Kind::answer, "a text of quotes", R"(\")", R"({"query":")", "", "", R"("})"},
    {Kind::answer, "a text of escapes", R"(\u0001)", R"({"fqn":")", "", "", R"("})"},
    {Kind::answer, "a text beyond ASCII", R"(\ud83d\ude00)", R"({"file":")", "", "", R"("})"},
    {Kind::answer, "a long key", "a", R"({")", "", "", R"(":1})"},
    {Kind::answer, "a long fraction", "7", R"({"x":0.)", "", "", "}"},
    {Kind::answer, "a fraction of zeros", "0", R"({"x":0.)", "", "", "1e9}"},
    {Kind::answer, "a long exponent", "0", R"({"x":1e)", "", "", "1}"},
    {Kind::answer, "integers", "7,", R"({"x":[)", "7", "", "]}"},
    {Kind::answer, "big integers", "12345678901234567890,", R"({"x":[)", "7", "", "]}"},
    {Kind::answer, "floats", "0.12345678901234567,", R"({"x":[)", "7", "", "]}"},
    {Kind::answer, "nulls", "null,", R"({"x":[)", "7", "", "]}"},
    {Kind::answer, "equal texts", R"("text",)", R"({"x":[)", "7", "", "]}"},
    {Kind::answer, "different fields", R"("key $n":1,)", "{", R"("x":1)", "", "}"},
    {Kind::answer, "equal fields", R"("key":1,)", "{", R"("x":1)", "", "}"},
    {Kind::answer, "colliding fields", R"("$c":1,)", "{", R"("x":1)", "", "}"},
    {Kind::answer, "null fields", R"("key $n":null,)", "{", R"("x":1)", "", "}"},
    {Kind::answer, "objects with a null field", R"({"x":null},)", R"({"results":[)", "{}", "", "]}"},
    {Kind::answer, "deep lists", "[", R"({"x":)", "1", "]", "}"},
    {Kind::answer, "deep objects", R"({"a":)", "", "1", "}"},
    {Kind::answer, "deep lists of objects", R"([{"a":)", R"({"x":)", "1", "}]", "}"},
    {Kind::answer, "deep objects with a null field", R"({"n":null,"a":)", "", "1", "}"},
    {Kind::answer, "hint fields", R"({"note":"x"},)", R"({"results":[)", "{}", "", "]}"},
    {Kind::answer, "nested hint fields", R"({"note":1,"a":)", "", "1", "}"},
    {Kind::answer, "hint fields after nested ones", R"({"a":)", "", "1", R"(,"note":1})"},
    {Kind::answer, "hint fields with long paths", R"({"a b":[{"note":1},)", "", "1", "]}"},
    {Kind::answer, "hint fields inside a hint field", R"({"note":)", "", "1", "}"},
    {Kind::answer, "equal hits", R"({"fqn":"pkg.run"},)", R"({"symbols":[)", "{}", "", "]}"},
    {Kind::answer, "hits that are no code", R"({"fqn":"a","kind":"heading"},)", R"({"results":[)", "1", "",
     "]}"},
    {Kind::answer, "equal files", R"("src/a.cpp",)", R"({"files":[)", "1", "", "]}"},
    {Kind::answer, "different files", R"("src/$n.cpp",)", R"({"files":[)", "1", "", "]}"},
    {Kind::answer, "colliding files", R"("$c",)", R"({"files":[)", "1", "", "]}"},
    {Kind::answer, "objects with colliding paths", R"({"path":"$c"},)", R"({"affected_files":[)", "1", "",
     "]}"},
    {Kind::answer, "equal own steps", R"({"tool":"t","args":{"q":"x"},"reason":"r"},)", R"({"next_steps":[)",
     R"({"tool":"t","args":{}})", "", "]}"},
    {Kind::answer, "different own steps", R"({"tool":"t","args":{"q":"$n"},"reason":"r"},)",
     R"({"next_steps":[)", R"({"tool":"t","args":{}})", "", "]}"},
    {Kind::answer, "own steps that are none", "1,", R"({"next_steps":[)", "1", "", "]}"},

    {Kind::line, "different tools served", R"("t$n",)", R"({"response":{},"tool":"t","serves":[)", R"("t")",
     "", "]}"},
    {Kind::line, "equal tools served", R"("t:a",)", R"({"response":{},"tool":"t","serves":[)", R"("t")", "",
     "]}"},
    {Kind::line, "different actions served", R"("t:a$n",)", R"({"response":{},"tool":"t","serves":[)",
     R"("t")", "", "]}"},
    {Kind::line, "a request with unknown members", R"("m$n":1,)", "{", R"("x":1)", "", "}"},
    {Kind::line, "a request with a repeated member", R"("tool":"t",)", "{", R"("response":{})", "", "}"},
    {Kind::line, "an incomplete request", R"("response":{},)", "{", R"("id":1)", "", "}"},
    {Kind::line, "a request that is cut off", "1,", R"({"id":1,"x":[)"},
    {Kind::line, "a deep request that is cut off", "[", R"({"id":1,"x":)"},
    {Kind::line, "messages", R"({"jsonrpc":"2.0","id":$n,"method":"ping"},)", "[", "1", "", "]"},
    {Kind::line, "messages that are none", "1,", "[", "1", "", "]"},
    {Kind::line, "a message with unknown arguments", R"("a$n":1,)",
     R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"file","arguments":{)", R"("x":1)", "",
     "}}}"},

    {Kind::index, "different tags", "{\"_type\":\"tag\",\"name\":\"run_$n\",\"path\":\"src/$n.py\"}\n"},
    {Kind::index, "equal tags",
     "{\"_type\":\"tag\",\"name\":\"runs\",\"path\":\"src/a.py\",\"scope\":\"a.b\"}\n"},
    {Kind::index, "colliding tags", "{\"_type\":\"tag\",\"name\":\"a\",\"path\":\"$c\"}\n"},
    {Kind::index, "tags of the index itself", "{\"_type\":\"ptag\",\"name\":\"a\"}\n",
     "{\"_type\":\"tag\",\"name\":\"runs\",\"path\":\"src/a.py\"}\n"},
};

// Appends `unit`, in which `number` stands for "$n" and a text of `colliding` for "$c".
void append_unit(std::string& text, std::string_view unit, std::size_t number,
                 const std::vector<std::string>& colliding) {
  constexpr std::size_t kFirstNumber = 1'000'000;  // all have the same length
  for (std::size_t mark = 0; (mark = unit.find('$')) != std::string_view::npos;) {
    text += unit.substr(0, mark);
    text += unit[mark + 1] == 'c' ? colliding[number] : std::to_string(kFirstNumber + number);
    unit.remove_prefix(mark + 2);
  }
  text += unit;
}

}  // namespace

std::span<const Input> inputs() {
  return kInputs;
}

std::string text_of(const Input& input, std::size_t bytes) {
  constexpr std::size_t kGain = 14;  // of a colliding text over its mark
  const bool collides = input.unit.find("$c") != std::string_view::npos;
  const auto colliding = colliding_texts(collides ? bytes / (input.unit.size() + kGain) + 1 : 0);
  std::string text(input.before);
  std::string closings;
  for (std::size_t number = 0; text.size() + closings.size() < bytes; ++number) {
    append_unit(text, input.unit, number, colliding);
    closings += input.closing;
  }
  text += input.middle;
  text += closings;
  text += input.after;
  return text;
}

}  // namespace vantrex::growth
