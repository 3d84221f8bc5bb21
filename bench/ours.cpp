// The life with next_steps. The answer is built as a tool handler builds it.
#include <utility>

#include "life.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/tool_result.h"

namespace vantrex::bench {

namespace {

using tool_handlers::next_steps::finish_answer;
using tool_handlers::next_steps::FinishOptions;
using values::JsonList;
using values::JsonObject;

template <typename T>
JsonList list_of(const std::vector<T>& rows);

JsonObject json(const Detail& row) {
  return {{"fqn", row.fqn},
          {"name", row.name},
          {"kind", row.kind},
          {"file", row.file},
          {"line", row.line},
          {"end_line", row.end_line},
          {"language", "python"},
          {"signature", row.signature},
          {"doc", row.doc},
          {"parameters", row.parameters},
          {"returns", row.returns},
          {"decorators", row.decorators},
          {"overrides", row.overrides},
          {"is_async", row.is_async},
          {"is_abstract", row.is_abstract},
          {"deprecated", row.deprecated},
          {"complexity", row.complexity},
          {"coverage", nullptr},
          {"note", nullptr}};
}

JsonObject json(const Hit& row) {
  return {{"fqn", row.fqn},         {"name", row.name}, {"kind", row.kind},
          {"file", row.file},       {"line", row.line}, {"score", row.score},
          {"snippet", row.snippet}, {"doc", row.doc},   {"is_test", row.is_test}};
}

JsonObject json(const Callers& rows) {
  return {{"fqn", rows.fqn},
          {"callers", list_of(rows.callers)},
          {"total_count", rows.callers.size()},
          {"note", nullptr}};
}

JsonObject json(const Search& rows) {
  return {{"query", rows.query},
          {"results", list_of(rows.hits)},
          {"total_count", rows.hits.size()},
          {"truncated", nullptr},
          {"tip", "Quote a name to match it exactly."}};
}

JsonObject json(const FileRow& row) {
  return {{"path", row.path},       {"language", row.language}, {"size", row.size},      {"lines", row.lines},
          {"symbols", row.symbols}, {"churn", row.churn},       {"summary", row.summary}};
}

JsonObject json(const Files& rows) {
  return {{"files", list_of(rows.files)}, {"total_count", rows.files.size()}};
}

JsonObject json(const Node& row) {
  return {{"name", row.name}, {"kind", row.kind},         {"signature", row.signature},
          {"line", row.line}, {"end_line", row.end_line}, {"is_async", row.is_async},
          {"doc", row.doc},   {"note", row.note},         {"children", list_of(row.children)}};
}

JsonObject json(const Tree& rows) {
  return {{"fqn", rows.fqn}, {"modules", list_of(rows.modules)}};
}

JsonObject json(const Scores& rows) {
  return {{"fqn", rows.fqn}, {"metric", "cosine"}, {"scores", rows.scores}};
}

template <typename T>
JsonList list_of(const std::vector<T>& rows) {
  JsonList list;
  list.reserve(rows.size());
  for (const T& row : rows) list.push_back(json(row));
  return list;
}

class Ours : public Contender {
 public:
  explicit Ours(const Subject& subject) : subject_(subject), request_{{subject.argument, subject.value}} {}

  void build() override {
    answer_ = std::visit([](const auto& rows) { return json(rows); }, subject_.rows);
  }
  void finish() override { finished_ = finish_answer(std::move(answer_), subject_.tool, options()); }
  void finish_kept() override { finished_ = finish_answer(answer_, subject_.tool, options()); }
  void write() override { text_ = tool_handlers::tool_result_text(finished_); }
  void destroy() override {
    answer_ = JsonObject();
    finished_ = JsonObject();
    text_ = std::string();
  }
  std::string_view text() const override { return text_; }

 private:
  FinishOptions options() const { return {.action = subject_.action, .arguments = &request_}; }

  const Subject& subject_;
  const JsonObject request_;
  JsonObject answer_;
  JsonObject finished_;
  std::string text_;
};

}  // namespace

std::unique_ptr<Contender> ours(const Subject& subject) {
  return std::make_unique<Ours>(subject);
}

}  // namespace vantrex::bench
