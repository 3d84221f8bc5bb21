// What a tool handler has in hand when it begins an answer: rows of an index.
//
// Purpose: each answer of the benchmarks as plain structs, made by a generator
// with a fixed seed, so that every run measures the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantrex::bench {

using OptionalString = std::optional<std::string>;

struct Parameter {
  std::string name;
  OptionalString type, standard;
};

// One symbol.
struct Detail {
  std::string fqn, name, kind, file, signature, doc, returns, parent;
  std::int64_t line = 0, end_line = 0, complexity = 0, callers_count = 0;
  std::vector<Parameter> parameters;
  std::vector<std::string> decorators;
  OptionalString overrides;
  bool is_async = false;
  std::optional<bool> is_abstract, deprecated;
};

struct Caller {
  std::string fqn, name, kind, file, context;
  std::int64_t line = 0;
  std::optional<bool> is_test;
};
struct Callers {
  std::string fqn;
  std::vector<Caller> callers;
};

struct Hit {
  std::string fqn, name, kind, file, snippet;
  std::int64_t line = 0;
  std::optional<double> score;
  OptionalString doc;
};
struct Search {
  std::string query;
  std::vector<Hit> hits;
};

struct FileRow {
  std::string path, language;
  std::int64_t size = 0, lines = 0, symbols = 0;
  std::optional<double> churn;
  OptionalString summary;
};
struct Files {
  std::vector<FileRow> files;
};

struct Method {
  std::string name, signature, returns;
  std::int64_t line = 0, end_line = 0, complexity = 0;
  bool is_async = false;
  OptionalString doc;
  std::vector<std::string> decorators;
  std::optional<bool> deprecated;
};
struct Class {
  std::string name, doc;
  std::vector<std::string> bases;
  std::int64_t line = 0;
  OptionalString note;
  std::vector<Method> methods;
};
struct Module {
  std::string path, language;
  OptionalString owner;
  std::vector<Class> classes;
};
struct Tree {
  std::string fqn;
  std::vector<Module> modules;
};

struct Scores {
  std::string fqn;
  std::vector<double> scores;
};

using Rows = std::variant<Detail, Callers, Search, Files, Tree, Scores>;

// Whether rows have their floats, or none: libraries write floats in different
// forms.
enum class Floats { with, without };

Detail detail_rows();               // 1 KB of compact text: one symbol, a third of its fields null
Callers callers_rows();             // 3 KB: 12 callers
Search search_rows(Floats floats);  // 30 KB: 50 hits with code snippets
Files files_rows(std::size_t count, Floats floats);  // about 120 bytes each
Tree tree_rows();                   // 30 MB: modules, classes, methods; a tenth of the fields null
Scores scores_rows(Floats floats);  // 2 MB: 100,000 floats

}  // namespace vantrex::bench
