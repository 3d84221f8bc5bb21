// The fields of each row, in the order of the answer. The general JSON libraries build their answers from
// them. ours.cpp builds the same answers as a tool handler would; lives_bench compares the texts.
#pragma once

#include <string_view>

#include "rows.h"

namespace vantrex::bench {

using std::string_view_literals::operator""sv;

// Calls `field` with each key and value.
template <typename Field, typename T, typename... Rest>
void each(Field& field, std::string_view key, const T& value, const Rest&... rest) {
  field(key, value);
  if constexpr (sizeof...(rest) > 0) each(field, rest...);
}

void describe(const Detail& row, auto field) {
  each(field, "fqn", row.fqn, "name", row.name, "kind", row.kind, "file", row.file, "line", row.line,
       "end_line", row.end_line, "language", "python"sv, "signature", row.signature, "doc", row.doc,
       "parameters", row.parameters, "returns", row.returns, "decorators", row.decorators, "overrides",
       row.overrides, "is_async", row.is_async, "is_abstract", row.is_abstract, "deprecated", row.deprecated,
       "complexity", row.complexity, "coverage", nullptr, "note", nullptr);
}
void describe(const Hit& row, auto field) {
  each(field, "fqn", row.fqn, "name", row.name, "kind", row.kind, "file", row.file, "line", row.line, "score",
       row.score, "snippet", row.snippet, "doc", row.doc, "is_test", row.is_test);
}
void describe(const Callers& rows, auto field) {
  const auto count = static_cast<std::int64_t>(rows.callers.size());
  each(field, "fqn", rows.fqn, "callers", rows.callers, "total_count", count, "note", nullptr);
}
void describe(const Search& rows, auto field) {
  const auto count = static_cast<std::int64_t>(rows.hits.size());
  each(field, "query", rows.query, "results", rows.hits, "total_count", count, "truncated", nullptr, "tip",
       "Quote a name to match it exactly."sv);
}
void describe(const FileRow& row, auto field) {
  each(field, "path", row.path, "language", row.language, "size", row.size, "lines", row.lines, "symbols",
       row.symbols, "churn", row.churn, "summary", row.summary);
}
void describe(const Files& rows, auto field) {
  each(field, "files", rows.files, "total_count", static_cast<std::int64_t>(rows.files.size()));
}
void describe(const Node& row, auto field) {
  each(field, "name", row.name, "kind", row.kind, "signature", row.signature, "line", row.line, "end_line",
       row.end_line, "is_async", row.is_async, "doc", row.doc, "note", row.note, "children", row.children);
}
void describe(const Tree& rows, auto field) {
  each(field, "fqn", rows.fqn, "modules", rows.modules);
}
void describe(const Scores& rows, auto field) {
  each(field, "fqn", rows.fqn, "metric", "cosine"sv, "scores", rows.scores);
}

struct AnyField {
  void operator()(std::string_view /*key*/, const auto& /*value*/) const {}
};

// A struct that `describe` accepts; not a scalar or a list.
template <typename T>
concept Row = requires(const T& row) {
  describe(row, AnyField());
};

// The number of fields of `row`.
std::size_t field_count(const Row auto& row) {
  std::size_t count = 0;
  describe(row, [&](std::string_view, const auto&) { ++count; });
  return count;
}

}  // namespace vantrex::bench
