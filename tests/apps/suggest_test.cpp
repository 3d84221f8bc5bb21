#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "requests/index_reader.h"
#include "support/table.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tests {
namespace {

using values::JsonObject;

const std::string kIndex =
    R"({"_type": "ptag", "name": "JSON_OUTPUT_VERSION", "path": "0.0"}
{"_type":"tag","name":"Thing","path":"pkg/mod.py","pattern":"/^class Thing:$/","language":"Python","line":3,"kind":"class"}
{"_type":"tag","name":"runner","path":"pkg/mod.py","language":"Python","line":9,"kind":"member","scope":"Thing"}
{"_type":"tag","name":"parseAll","path":"src/a.b.cpp","scope":"Reader"}
{"_type":"tag","name":"write_all","path":"src/w.c","scope":"io::Writer","kind":null,"line":null}
{"_type":"tag","name":"flush_all","path":"x.h","language":"C","scope":"io"}
{"_type":"tag","name":"Größe","path":"src/dir.cpp/plain"}
{"line":4,"fqn":"app::Server::listen<T>","kind":"method","file":"app/server.rs"}
{"fqn":"lonely","kind":null,"file":null}
{"path":"doc/notes.txt"}
{"_type":"tag","n\u0061me":7,"fqn":[],"path":"last","path":"last/one","deep":DEEP,"name":"wins"}
)";

// Runs `next-steps suggest` with the index as standard input. DEEP in it becomes a deep list.
Ran suggest(const std::string& arguments, const std::string& index = kIndex) {
  return run(
      "echo '{\"note\":null,\"found\":true,\"rest\":1}' >$(dirname $0)/answer.json\n"
      "next-steps suggest --index - " +
          arguments,
      replaced(index, "DEEP", std::string(100'000, '[') + std::string(100'000, ']')));
}

TEST(Suggest, AnswersFromTheIndex) {
  const auto rows = table(R"(
# arguments | "did_you_mean" | tool, arguments and reason of the step
symbol Thng | [{"fqn":"Thing","name":"Thing","kind":"class","file":"pkg/mod.py","line":3}] | symbol | {"action":"detail","fqn":"Thing"} | The nearest indexed symbol to Thng is Thing
symbol --action callers Thing.runer | [{"fqn":"Thing.runner","name":"runner","kind":"member","file":"pkg/mod.py","line":9}] | symbol | {"action":"callers","fqn":"Thing.runner"} | The nearest indexed symbol to Thing.runer is Thing.runner
symbol writeAll | [{"fqn":"io::Writer::write_all","name":"write_all","file":"src/w.c"}] | symbol | {"action":"detail","fqn":"io::Writer::write_all"} | The nearest indexed symbol to writeAll is io::Writer::write_all
symbol größe | [{"fqn":"Größe","name":"Größe","file":"src/dir.cpp/plain"}] | symbol | {"action":"detail","fqn":"Größe"} | The nearest indexed symbol to größe is Größe
symbol JSON_OUTPUT_VERSION | [] | search | {"action":"symbols","query":"JSON_OUTPUT_VERSION"} | No indexed symbol is near JSON_OUTPUT_VERSION: search the names
path lib/mod.py | ["pkg/mod.py"] | file | {"action":"symbols","path":"pkg/mod.py"} | The nearest indexed file to lib/mod.py is pkg/mod.py
path 0.0 | [] | files | {} | No indexed file is near 0.0
symbol Server.lisen | [{"fqn":"app::Server::listen<T>","name":"listen","kind":"method","file":"app/server.rs","line":4}] | symbol | {"action":"detail","fqn":"app::Server::listen<T>"} | The nearest indexed symbol to Server.lisen is app::Server::listen<T>
symbol lonly | [{"fqn":"lonely","name":"lonely"}] | symbol | {"action":"detail","fqn":"lonely"} | The nearest indexed symbol to lonly is lonely
symbol winz | [{"fqn":"wins","name":"wins","file":"last/one"}] | symbol | {"action":"detail","fqn":"wins"} | The nearest indexed symbol to winz is wins
path server.rs | ["app/server.rs"] | file | {"action":"symbols","path":"app/server.rs"} | The nearest indexed file to server.rs is app/server.rs
path docs/notes.txt | ["doc/notes.txt"] | file | {"action":"symbols","path":"doc/notes.txt"} | The nearest indexed file to docs/notes.txt is doc/notes.txt
)");
  for (const auto& row : rows) {
    const JsonObject missed{{"found", false}, {"did_you_mean", parse(row.at(1))}};
    JsonObject expected = missed;
    expected.set("next_steps", values::JsonList::of(JsonObject{
                                   {"tool", row.at(2)}, {"args", parse(row.at(3))}, {"reason", row.at(4)}}));
    const Ran ran = suggest(row.at(0));
    EXPECT_EQ(ran.out, compact_text(expected) + "\n") << row.at(0);
    EXPECT_EQ(ran.err + std::to_string(ran.status), "0") << row.at(0);
  }
  const std::string missed = R"({"found":false,"rest":1,"did_you_mean":[],"freshness":{"b":1})";
  const std::string options = " --arguments '{}' --freshness '{\"b\":1}' $(dirname $0)/answer.json";
  EXPECT_EQ(suggest("path 0.0 --serves file" + options).out, missed + "}\n");
  EXPECT_EQ(suggest("path 0.0 --serves files" + options).out,
            missed + R"(,"next_steps":[{"tool":"files","args":{},)" +
                "\"reason\":\"No indexed file is near 0.0\"}]}\n");
  EXPECT_EQ(suggest("path 0.0 --pretty | head -2").out, "{\n  \"found\": false,\n");
}

TEST(Suggest, OffersWhatWasMeantFirst) {
  const Ran ran = run("python3 tests/apps/quality.py \"$(command -v next-steps)\"");
  EXPECT_EQ(ran.status, 0) << ran.err;
}

TEST(Suggest, RefusesWhatIsNoIndexAndSaysWhere) {
  const auto rows = table(R"(
# a line of the index | the column and message
 | 1: The document is empty.
["tag"] | 1: a line of an index must be an object, not a list
"tag" | 1: a line of an index must be an object, not a string
{"_type":"tag","name":"a","path":"b" | 37: Missing a comma or '}' after an object member.
{"_type":"tag","name":"a","path":"b","x":[{"y":"\udc00"}]} | 52: The surrogate pair in string is invalid.
{"_type":"tag","name":"a","path":"b","x":[1e999]} | 43: Number too big to be stored in double.
{"_type":"file","name":"a","path":"b"} | 2: "_type" must be "tag" or "ptag"
 {"_type":"tag","path":"b"} | 2: "name" is missing
{"_type":"tag","name":null,"path":"b"} | 16: "name" must be a string, not null
{"_type":"tag","name":"a","path":"b","scope":["c"]} | 38: "scope" must be a string or null, not a list
{"_type":"tag","name":"a","path":"b","scope":"c","language":7} | 50: "language" must be a string or null, not an integer
{"_type":"tag","name":"a","path":"b","line":"7"} | 38: "line" must be an integer or null, not a string
{"_type":"tag","name":"a","path":"b","line":-1} | 38: "line" must be the number of a line
{"_type":"tag","name":"a","path":"b","line":99999999999999999999} | 38: "line" must be the number of a line
{"_type":"tag","name":"a","path":"b","name":{"name":"a"}} | 38: "name" must be a string, not an object
 {"name":"a"} | 2: "_type", "fqn" or "path" is missing
{"fqn":"a","lines":7} | 12: "lines" is no member of a symbol
{"path":"b","fqn":"a"} | 2: "path" is no member of a symbol
{"path":"b","l\u0069nes":7} | 13: "lines" is no member of a path
{"path":"b","line":null} | 13: "line" is no member of a path
{"fqn":"a","fqn":7} | 12: "fqn" must be a string, not an integer
{"fqn":null} | 2: "fqn" must be a string, not null
{"fqn":"a","kind":false} | 12: "kind" must be a string or null, not a boolean
{"fqn":"a","line":7.0} | 12: "line" must be an integer or null, not a float
{"path":["b"]} | 2: "path" must be a string, not a list
)");
  for (const auto& row : rows) {
    const Ran ran = suggest("symbol x", kIndex + row.at(0) + "\n");
    EXPECT_EQ(ran.err, "<stdin>:12:" + row.at(1) + "\n");
    EXPECT_EQ(ran.out + std::to_string(ran.status), "1") << row.at(0);
  }
}

TEST(Suggest, RefusesAWrongIndexAndWhatIsNoMiss) {
  const std::string how = "; an index is made by: ctags --output-format=json --fields=+nl -R -f - . >INDEX";
  const std::string only_ptag = kIndex.substr(0, kIndex.find('\n'));
  EXPECT_EQ(suggest("path x", "!_TAG_FILE_FORMAT\t2\n").err.substr(0, 11), "<stdin>:1:1");
  EXPECT_TRUE(suggest("path x", "!_TAG_FILE_FORMAT\t2\n").err.ends_with(how + "\n"));
  EXPECT_EQ(suggest("symbol x", only_ptag).err,
            "<stdin>: the index holds no symbols and no paths" + how + "\n");
  for (const std::string held : {"symbol runner", "symbol io::Writer::write_all", "path src/w.c"}) {
    const Ran ran = suggest(held);
    const std::size_t blank = held.find(' ');
    EXPECT_EQ(ran.err,
              held.substr(blank + 1) + ": no miss: the index holds this " + held.substr(0, blank) + "\n");
    EXPECT_EQ(ran.out + std::to_string(ran.status), "1");
  }
}

TEST(Suggest, KnowsEachPathOnceInTheOrderOfTheIndex) {
  const std::string file = testing::TempDir() + "next_steps_index" + std::to_string(::getpid());
  std::ofstream index(file);
  std::string expected;
  for (const bool again : {false, true}) {
    for (int path = 5000; path > 0; --path) {  // so many that some share a place among the recent ones
      index << R"({"_type":"tag","name":"n","path":")" << path << "\"}\n";
      if (!again) expected += std::to_string(path) + ' ';
    }
  }
  index.close();
  std::string paths;
  next_steps_requests::read_index(file).visit_paths([&](std::string_view path) { (paths += path) += ' '; });
  EXPECT_EQ(paths, expected);
}

}  // namespace
}  // namespace vantrex::tests
