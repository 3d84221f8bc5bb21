#include <array>
#include <cstdio>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <utility>

#include "calls.h"
#include "protocol.h"
#include "requests/index_file.h"
#include "requests/index_reader.h"
#include "requests/json_reader.h"
#include "requests/request_text.h"
#include "vantrex/logging/quoted_literal.h"
#include "vantrex/models/name_index.h"
#include "vantrex/names/name_parts.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::growth {

namespace {

using models::InMemoryRepository;
using models::Repository;
using values::compact_text;
using values::Integer;
using values::JsonObject;
using values::Text;

// A function of a text, which may refuse it.
template <auto function>
Work of_text(const std::string& text) {
  return [text] {
    try {
      keep(function(text));
    } catch (const std::invalid_argument&) {
    } catch (const next_steps_requests::JsonError&) {
    }
  };
}

// A wanted name, and an index without it.
struct Miss {
  std::string wanted;
  InMemoryRepository index;
};

InMemoryRepository index_of(std::initializer_list<std::string> names) {
  InMemoryRepository index;
  for (const std::string& name : names) {
    index.add_symbol({.fqn = name, .name = name, .file = name, .line = 1});
    index.add_path(name);
  }
  return index;
}

Miss long_wanted(const std::string& text) {
  return {text, index_of({"run", "pkg.mod.run", "src/main.cpp"})};
}
Miss long_in_index(const std::string& text) {
  return {"pkg.running", index_of({text, text + "!", "!" + text})};
}
// The wanted name is a part of the other up to its last letter.
Miss almost_part(const std::string& text) {
  return {text + "!", index_of({"!" + text + text})};
}
// The wanted name is a part of the other up to its first letter.
Miss almost_tail(const std::string& text) {
  return {"!" + text, index_of({text + text + "!"})};
}
// Both have the same words, and too many edits lead from one to the other.
Miss other_order(const std::string& text) {
  const std::string word(100, 'z');
  return {text + '_' + word, index_of({word + '_' + text})};
}
// A few edits lead from one to the other.
Miss alike(const std::string& text) {
  return {text + "!", index_of({"?" + text})};
}

template <auto nearest, Miss (*miss_of)(const std::string&)>
Work look_up(const std::string& text) {
  return [miss = miss_of(text)] { keep(nearest(miss.index, miss.wanted)); };
}

// The same with a name index, which is counted, too.
template <auto nearest, Miss (*miss_of)(const std::string&)>
Work look_up_indexed(const std::string& text) {
  return [miss = miss_of(text)]() mutable {
    miss.index.make_name_index();
    keep(nearest(miss.index, miss.wanted));
  };
}

// A file without a name.
class TextFile {
 public:
  explicit TextFile(const std::string& text) : file_(std::tmpfile(), std::fclose) {
    if (file_ == nullptr || std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size() ||
        std::fflush(file_.get()) != 0) {
      throw std::runtime_error("a temporary file could not be written");
    }
  }
  std::string path() const { return "/proc/self/fd/" + std::to_string(::fileno(file_.get())); }

 private:
  std::shared_ptr<std::FILE> file_;
};

// The lines of an index that holds the names of `index`.
std::string lines_of(const Repository& index) {
  std::string lines;
  index.visit_symbols([&lines](const models::SymbolView& symbol) {
    const Text name = Text::lossy(symbol.name);
    lines += compact_text(JsonObject{{"_type", "tag"}, {"name", name}, {"path", name}}) + '\n';
  });
  return lines;
}

void call_tool(const code_index::CtagsRepository& index, std::string_view tool, JsonObject arguments) {
  const JsonObject result =
      code_index::call_method(index, "tools/call", {{"name", tool}, {"arguments", std::move(arguments)}});
  if (result["isError"].boolean() != false) throw std::logic_error("an error instead of a tool's answer");
}

// Asks each tool of the example server for the wanted name.
void call_tools(const code_index::CtagsRepository& index, const Text& wanted) {
  call_tool(index, "search", {{"action", "symbols"}, {"query", wanted}});
  call_tool(index, "symbol", {{"action", "detail"}, {"fqn", wanted}});
  call_tool(index, "file", {{"action", "symbols"}, {"path", wanted}});
  call_tool(index, "files", {});
  call_tool(index, "status", {});
}

// Starts the example server over the lines, and asks it.
Work serve(const std::string& lines, const Text& wanted) {
  return [file = TextFile(lines), wanted] { call_tools(code_index::CtagsRepository(file.path()), wanted); };
}

template <Miss (*miss_of)(const std::string&)>
Work serve(const std::string& text) {
  const Miss miss = miss_of(text);
  return serve(lines_of(miss.index), Text::lossy(miss.wanted));
}

// Asks a batch for the answer to a miss of the symbol and of the path.
Work suggest(const std::string& lines, std::string_view wanted) {
  const TextFile file(lines);
  const auto line = [name = Text::lossy(wanted)](const char* what) {
    return compact_text(JsonObject{{"id", name}, {"suggest", what}, {"wanted", name}});
  };
  return [file, index = std::make_shared<next_steps_requests::IndexFile>(file.path()),
          symbol = line("symbol"), path = line("path")] {
    for (const std::string& each : {symbol, path}) reply(each, {.index = index.get()});
  };
}

// Asks for an answer in which the text stands as it is.
Work reply_to_lossy(const std::string& text) {
  return [line = R"({"id":1,"lossy":true,"tool":"git","response":{"x":")" + text + R"("}})"] {
    keep(next_steps_requests::reply_to(line, 1, {}));
  };
}

template <Miss (*miss_of)(const std::string&)>
Work suggest(const std::string& text) {
  const Miss miss = miss_of(text);
  return suggest(lines_of(miss.index), miss.wanted);
}

// A name that the indexes lack.
constexpr const char* kAbsent = "pkg.running_x";

template <auto function>
Work of_index(const std::string& lines) {
  return [index = next_steps_requests::read_index(TextFile(lines).path())]() mutable { function(index); };
}

// Searches the rest of the text from each of its letters.
Work search_again(const std::string& text) {
  return [text] {
    for (std::size_t position = 0; position < text.size(); ++position) keep(text.find('!', position));
  };
}

constexpr std::array kNameCalls = {
    Call{Kind::control, "control", search_again},

    Call{Kind::name, "read_json",
         of_text<[](std::string_view text) { return next_steps_requests::read_json(text); }>},
    Call{Kind::name, "read_served_tool", of_text<next_steps_requests::read_served_tool>},
    Call{Kind::name, "Text", of_text<[](std::string_view text) { return Text(text); }>},
    Call{Kind::name, "Text::lossy", of_text<Text::lossy>},
    Call{Kind::name, "Integer::parse", of_text<Integer::parse>},
    Call{Kind::name, "quoted_literal", of_text<logging::quoted_literal>},
    Call{Kind::name, "printable", of_text<logging::printable>},
    Call{Kind::name, "guessed_name", of_text<workers::guessed_name>},
    Call{Kind::name, "split_last of a path",
         of_text<[](std::string_view text) { return names::split_last(names::NameKind::path, text); }>},
    Call{Kind::name, "nearest_symbols of a long name", look_up<workers::nearest_symbols, long_wanted>},
    Call{Kind::name, "nearest_symbols in long names", look_up<workers::nearest_symbols, long_in_index>},
    Call{Kind::name, "nearest_symbols of almost a part", look_up<workers::nearest_symbols, almost_part>},
    Call{Kind::name, "nearest_symbols of almost a tail", look_up<workers::nearest_symbols, almost_tail>},
    Call{Kind::name, "nearest_symbols of words in another order",
         look_up<workers::nearest_symbols, other_order>},
    Call{Kind::name, "nearest_symbols of a name alike", look_up<workers::nearest_symbols, alike>},
    Call{Kind::name, "nearest_symbols in indexed long names",
         look_up_indexed<workers::nearest_symbols, long_in_index>},
    Call{Kind::name, "nearest_symbols of almost an indexed part",
         look_up_indexed<workers::nearest_symbols, almost_part>},
    Call{Kind::name, "nearest_symbols of indexed words in another order",
         look_up_indexed<workers::nearest_symbols, other_order>},
    Call{Kind::name, "nearest_paths of a long path", look_up<workers::nearest_paths, long_wanted>},
    Call{Kind::name, "nearest_paths in long paths", look_up<workers::nearest_paths, long_in_index>},
    Call{Kind::name, "nearest_paths of a path alike", look_up<workers::nearest_paths, alike>},
    Call{Kind::name, "nearest_paths in indexed long paths",
         look_up_indexed<workers::nearest_paths, long_in_index>},
    Call{Kind::name, "explain_answer of a long tool", of_text<[](std::string_view text) {
           return tool_handlers::next_steps::explain_answer(JsonObject(), text, {.action = text});
         }>},
    Call{Kind::name, "reply_to, lossy", reply_to_lossy},
    Call{Kind::name, "reply_to, a long name wanted", suggest<long_wanted>},
    Call{Kind::name, "reply_to, long names in the index", suggest<long_in_index>},
    Call{Kind::name, "code_index, a long name wanted", serve<long_wanted>},
    Call{Kind::name, "code_index, almost a part wanted", serve<almost_part>},
    Call{Kind::name, "code_index, almost a tail wanted", serve<almost_tail>},

    Call{Kind::index, "read_index",
         [](const std::string& lines) -> Work {
           return [file = TextFile(lines)] { keep(next_steps_requests::read_index(file.path())); };
         }},
    Call{Kind::index, "nearest_symbols",
         of_index<[](const Repository& index) { keep(workers::nearest_symbols(index, kAbsent)); }>},
    Call{Kind::index, "nearest_paths",
         of_index<[](const Repository& index) { keep(workers::nearest_paths(index, kAbsent)); }>},
    Call{Kind::index, "nearest names in a name index", of_index<[](InMemoryRepository& index) {
           index.make_name_index();
           keep(workers::nearest_symbols(index, kAbsent));
           keep(workers::nearest_paths(index, kAbsent));
           keep(index.name_index()->symbols_named("runs"));
         }>},
    Call{Kind::index, "reply_to", [](const std::string& lines) { return suggest(lines, kAbsent); }},
    Call{Kind::index, "code_index",
         [](const std::string& lines) { return serve(lines, values::TextLiteral("run")); }},
};

}  // namespace

std::span<const Call> name_calls() {
  return kNameCalls;
}

}  // namespace vantrex::growth
