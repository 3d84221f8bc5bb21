#include "rows.h"

#include <cmath>

#include "words.h"

namespace vantrex::bench {

namespace {

// What the generator gives for one field in `count`.
template <typename T, typename Make>
std::optional<T> one_in(Random& random, std::size_t count, Make make) {
  if (!random.one_in(count)) return std::nullopt;
  return T(make());
}

std::int64_t number(Random& random, std::size_t bound) {
  return static_cast<std::int64_t>(random.below(bound));
}

// `digits` places after the point.
std::optional<double> rounded(Random& random, double bound, int digits, Floats floats) {
  const double shift = std::pow(10, digits);
  const double value = std::round(random.fraction() * bound * shift) / shift;
  return floats == Floats::with ? std::optional(value) : std::nullopt;
}

// A symbol and its place, for the hits of the symbol tools.
template <typename SymbolRow>
SymbolRow symbol_row(Random& random) {
  SymbolRow row;
  const std::string_view module = noun(random);
  row.name = function_name(random);
  row.fqn = joined({"acme.", module, ".", class_name(random), ".", row.name});
  row.kind = symbol_kind(random);
  row.file = joined({"src/acme/", module, ".py"});
  row.line = 1 + number(random, 900);
  return row;
}

FileRow file_row(Random& random, std::size_t position, Floats floats) {
  FileRow row;
  row.path = joined({"src/acme/", noun(random), "/", noun(random), "_", std::to_string(position), ".py"});
  row.language = random.one_in(8) ? "typescript" : "python";
  row.size = number(random, 100'000);
  row.lines = 10 + number(random, 2000);
  row.symbols = number(random, 120);
  row.churn = rounded(random, 100, 2, floats);
  row.summary = one_in<std::string>(random, 10, [&] { return sentence(random); });
  return row;
}

Method method(Random& random) {
  Method row;
  row.name = function_name(random);
  row.signature = signature(random, row.name);
  row.returns = type_name(random);
  row.line = 1 + number(random, 4000);
  row.end_line = row.line + number(random, 100);
  row.complexity = 1 + number(random, 30);
  row.is_async = random.one_in(6);
  row.doc = one_in<std::string>(random, 2, [&] { return prose(random, 1 + random.below(3)); });
  row.deprecated = one_in<bool>(random, 2, [] { return false; });
  return row;
}

Class class_of_methods(Random& random) {
  Class row;
  row.name = class_name(random);
  row.bases = {class_name(random)};
  row.line = 1 + number(random, 900);
  row.doc = prose(random, 2);
  row.note = one_in<std::string>(random, 20, [] { return "Generated code"; });
  for (std::size_t count = 3 + random.below(12); count > 0; --count) row.methods.push_back(method(random));
  return row;
}

Module module_of_classes(Random& random) {
  Module row;
  row.path = file_path(random);
  row.language = "python";
  for (std::size_t count = 1 + random.below(8); count > 0; --count)
    row.classes.push_back(class_of_methods(random));
  return row;
}

}  // namespace

Detail detail_rows() {
  Random random(1);
  Detail row;
  row.fqn = "acme.storage.SegmentWriter.flush";
  row.name = "flush";
  row.kind = "method";
  row.file = "src/acme/storage/segment_writer.py";
  row.line = 214;
  row.end_line = 251;
  row.signature = "def flush(self, force: bool = False, timeout: float | None = None) -> int";
  row.doc = prose(random, 7);
  row.parameters = {{"self", {}, {}}, {"force", "bool", "False"}, {"timeout", "float | None", "None"}};
  row.returns = "int";
  row.decorators = {"override"};
  row.parent = "acme.storage.SegmentWriter";
  row.complexity = 7;
  row.callers_count = 12;
  return row;
}

Callers callers_rows() {
  Random random(2);
  Callers rows{"acme.storage.SegmentWriter.flush", {}};
  for (int count = 0; count < 12; ++count) {
    auto row = symbol_row<Caller>(random);
    row.context = code(random, 40 + random.below(40));
    row.is_test = one_in<bool>(random, 4, [] { return true; });
    rows.callers.push_back(std::move(row));
  }
  return rows;
}

Search search_rows(Floats floats) {
  Random random(3);
  Search rows{"flush pending segments", {}};
  for (int count = 0; count < 50; ++count) {
    auto row = symbol_row<Hit>(random);
    row.score = rounded(random, 1, 4, floats);
    row.snippet = code(random, 330);
    row.doc = one_in<std::string>(random, 2, [&] { return prose(random, 2 + random.below(4)); });
    rows.hits.push_back(std::move(row));
  }
  return rows;
}

Files files_rows(std::size_t count, Floats floats) {
  Random random(4);
  Files rows;
  for (std::size_t position = 0; position < count; ++position)
    rows.files.push_back(file_row(random, position, floats));
  return rows;
}

Tree tree_rows() {
  Random random(5);
  Tree rows{"acme", {}};
  for (int count = 0; count < 2600; ++count) rows.modules.push_back(module_of_classes(random));
  return rows;
}

Scores scores_rows(Floats floats) {
  Random random(6);
  Scores rows{"acme.storage", {}};
  const int count = floats == Floats::with ? 100'000 : 0;
  // Of 1 to 17 digits.
  for (int position = 0; position < count; ++position)
    rows.scores.push_back(position % 2 == 0 ? random.fraction() : *rounded(random, 1, position % 17, floats));
  return rows;
}

}  // namespace vantrex::bench
