// The fields of each row, in the order in which an answer lists them.
//
// The general JSON libraries build their answers from these. next_steps builds
// the same ones the way a tool handler is written, and the texts are compared.
#pragma once

#include <cstddef>
#include <string_view>

#include "rows.h"

namespace vantrex::bench {

using std::string_view_literals::operator""sv;

template <typename Field>
void describe(const Parameter& row, Field field) {
  field("name", row.name);
  field("type", row.type);
  field("default", row.standard);
}

template <typename Field>
void describe(const Detail& row, Field field) {
  field("fqn", row.fqn);
  field("name", row.name);
  field("kind", row.kind);
  field("file", row.file);
  field("line", row.line);
  field("end_line", row.end_line);
  field("language", "python"sv);
  field("visibility", "public"sv);
  field("signature", row.signature);
  field("doc", row.doc);
  field("parameters", row.parameters);
  field("returns", row.returns);
  field("decorators", row.decorators);
  field("parent", row.parent);
  field("overrides", row.overrides);
  field("is_async", row.is_async);
  field("is_abstract", row.is_abstract);
  field("deprecated", row.deprecated);
  field("complexity", row.complexity);
  field("callers_count", row.callers_count);
  field("coverage", nullptr);
  field("note", nullptr);
}

template <typename Field>
void describe(const Caller& row, Field field) {
  field("fqn", row.fqn);
  field("name", row.name);
  field("kind", row.kind);
  field("file", row.file);
  field("line", row.line);
  field("context", row.context);
  field("is_test", row.is_test);
}

template <typename Field>
void describe(const Callers& rows, Field field) {
  field("fqn", rows.fqn);
  field("callers", rows.callers);
  field("total_count", static_cast<std::int64_t>(rows.callers.size()));
  field("note", nullptr);
}

template <typename Field>
void describe(const Hit& row, Field field) {
  field("fqn", row.fqn);
  field("name", row.name);
  field("kind", row.kind);
  field("file", row.file);
  field("line", row.line);
  field("score", row.score);
  field("snippet", row.snippet);
  field("doc", row.doc);
  field("deprecated", nullptr);
}

template <typename Field>
void describe(const Search& rows, Field field) {
  field("query", rows.query);
  field("results", rows.hits);
  field("total_count", static_cast<std::int64_t>(rows.hits.size()));
  field("truncated", nullptr);
  field("tip", "Quote a name to match it exactly."sv);
}

template <typename Field>
void describe(const FileRow& row, Field field) {
  field("path", row.path);
  field("language", row.language);
  field("size", row.size);
  field("lines", row.lines);
  field("symbols", row.symbols);
  field("churn", row.churn);
  field("summary", row.summary);
}

template <typename Field>
void describe(const Files& rows, Field field) {
  field("files", rows.files);
  field("total_count", static_cast<std::int64_t>(rows.files.size()));
}

template <typename Field>
void describe(const Method& row, Field field) {
  field("name", row.name);
  field("kind", "method"sv);
  field("signature", row.signature);
  field("line", row.line);
  field("end_line", row.end_line);
  field("is_async", row.is_async);
  field("complexity", row.complexity);
  field("doc", row.doc);
  field("returns", row.returns);
  field("decorators", row.decorators);
  field("deprecated", row.deprecated);
}

template <typename Field>
void describe(const Class& row, Field field) {
  field("name", row.name);
  field("bases", row.bases);
  field("line", row.line);
  field("doc", row.doc);
  field("note", row.note);
  field("methods", row.methods);
}

template <typename Field>
void describe(const Module& row, Field field) {
  field("path", row.path);
  field("language", row.language);
  field("owner", row.owner);
  field("classes", row.classes);
}

template <typename Field>
void describe(const Tree& rows, Field field) {
  field("fqn", rows.fqn);
  field("modules", rows.modules);
}

template <typename Field>
void describe(const Scores& rows, Field field) {
  field("fqn", rows.fqn);
  field("metric", "cosine"sv);
  field("scores", rows.scores);
}

struct AnyField {
  template <typename T>
  void operator()(std::string_view /*key*/, const T& /*value*/) const {}
};

// A struct with fields, as opposed to a single value or a list.
template <typename T>
concept Row = requires(const T& row) {
  describe(row, AnyField());
};

// The number of fields of `row`, which the compiler knows.
template <Row T>
std::size_t field_count(const T& row) {
  std::size_t count = 0;
  describe(row, [&](std::string_view, const auto&) { ++count; });
  return count;
}

}  // namespace vantrex::bench
