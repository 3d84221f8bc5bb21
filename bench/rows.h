// The rows of an index from which a tool handler builds an answer, as plain structs.
//
// Each answer of the benchmarks is generated with a fixed seed, so that every run measures the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantrex::bench {

using OptionalString = std::optional<std::string>;

struct Detail {  // one symbol
  std::string fqn, name, kind, file, signature, doc, returns;
  std::int64_t line = 0, end_line = 0, complexity = 0;
  std::vector<std::string> parameters, decorators;
  OptionalString overrides = {};
  bool is_async = false;
  std::optional<bool> is_abstract = {}, deprecated = {};
};

struct Hit {
  std::string fqn, name, kind, file, snippet;
  std::int64_t line = 0;
  std::optional<double> score;
  OptionalString doc;
  std::optional<bool> is_test;
};
struct Callers {
  std::string fqn;
  std::vector<Hit> callers;
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

struct Node {  // a module, a class or a method
  std::string name, kind, signature;
  std::int64_t line = 0, end_line = 0;
  bool is_async = false;
  OptionalString doc, note;
  std::vector<Node> children;
};
struct Tree {
  std::string fqn;
  std::vector<Node> modules;
};

struct Scores {
  std::string fqn;
  std::vector<double> scores;
};

using Rows = std::variant<Detail, Callers, Search, Files, Tree, Scores>;

// Whether rows have floats. Libraries write floats in different forms, so texts are compared without them.
enum class Floats { with, without };

// Sizes are those of the answer's compact text.
Detail detail_rows();                                // 1 KB, a quarter of the fields null
Callers callers_rows();                              // 3 KB: 12 callers
Search search_rows(Floats floats);                   // 30 KB: 50 hits with code snippets
Files files_rows(std::size_t count, Floats floats);  // 120 bytes a file
Tree tree_rows();                                    // 30 MB
Scores scores_rows(Floats floats);                   // 100,000 floats of 1 to 17 digits

}  // namespace vantrex::bench
