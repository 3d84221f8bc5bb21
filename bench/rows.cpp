#include "rows.h"

#include <cmath>

#include "words.h"

namespace vantrex::bench {

namespace {

// The result of `make` for one row in `count`, nothing for the others.
template <typename Make>
auto one_in(Random& random, std::size_t count, Make make) {
  return random.one_in(count) ? std::optional(make()) : std::nullopt;
}

double rounded(double number, int digits) {
  const double shift = std::pow(10, digits);
  return std::round(number * shift) / shift;
}

Hit hit(Random& random, std::size_t snippet_bytes) {
  Hit row;
  const std::string_view module = noun(random);
  row.name = function_name(random);
  row.fqn = joined({"acme.", module, ".", class_name(random), ".", row.name});
  row.kind = random.one_in(4) ? "function" : "method";
  row.file = joined({"src/acme/", module, ".py"});
  row.snippet = code(random, snippet_bytes);
  row.line = random.number(900);
  row.is_test = one_in(random, 4, [] { return true; });
  return row;
}

FileRow file_row(Random& random, std::size_t position, Floats floats) {
  FileRow row;
  row.path = joined({"src/acme/", noun(random), "/", noun(random), "_", std::to_string(position), ".py"});
  row.language = random.one_in(8) ? "typescript" : "python";
  row.size = random.number(100'000);
  row.lines = random.number(2000);
  row.symbols = random.number(120);
  if (floats == Floats::with) row.churn = rounded(100 * random.fraction(), 2);
  row.summary = one_in(random, 10, [&] { return prose(random, 1); });
  return row;
}

// A module has 1 to 8 classes, a class 3 to 14 methods.
Node node(Random& random, std::string_view kind) {
  Node row;
  row.name = kind == "method" ? function_name(random) : class_name(random);
  row.kind = kind;
  row.signature = signature(random, row.name);
  row.line = random.number(4000);
  row.end_line = row.line + random.number(100);
  row.is_async = random.one_in(6);
  row.doc = one_in(random, 2, [&] { return prose(random, 1 + random.below(3)); });
  row.note = one_in(random, 100, [] { return std::string("Generated code"); });
  const bool is_module = kind == "module";
  std::size_t children = is_module ? 1 + random.below(8) : kind == "class" ? 3 + random.below(12) : 0;
  for (; children > 0; --children) row.children.push_back(node(random, is_module ? "class" : "method"));
  return row;
}

}  // namespace

Detail detail_rows() {
  Random random(1);
  return {.fqn = "acme.storage.SegmentWriter.flush",
          .name = "flush",
          .kind = "method",
          .file = "src/acme/storage/segment_writer.py",
          .signature = "def flush(self, force: bool = False, timeout: float | None = None) -> int",
          .doc = prose(random, 8),
          .returns = "int",
          .line = 214,
          .end_line = 251,
          .complexity = 7,
          .parameters = {"self", "force", "timeout"},
          .decorators = {"override"}};
}

Callers callers_rows() {
  Random random(2);
  Callers rows{"acme.storage.SegmentWriter.flush", {}};
  for (int count = 0; count < 12; ++count) rows.callers.push_back(hit(random, 40 + random.below(40)));
  return rows;
}

Search search_rows(Floats floats) {
  Random random(3);
  Search rows{"flush pending segments", {}};
  for (int count = 0; count < 50; ++count) {
    Hit& row = rows.hits.emplace_back(hit(random, 330));
    if (floats == Floats::with) row.score = rounded(random.fraction(), 4);
    row.doc = one_in(random, 2, [&] { return prose(random, 2 + random.below(4)); });
  }
  return rows;
}

Files files_rows(std::size_t count, Floats floats) {
  Random random(4);
  Files rows;
  for (std::size_t at = 0; at < count; ++at) rows.files.push_back(file_row(random, at, floats));
  return rows;
}

Tree tree_rows() {
  Random random(5);
  Tree rows{"acme", {}};
  for (int count = 0; count < 2850; ++count) rows.modules.push_back(node(random, "module"));
  return rows;
}

Scores scores_rows(Floats floats) {
  Random random(6);
  Scores rows{"acme.storage", {}};
  const int count = floats == Floats::with ? 100'000 : 0;
  for (int at = 0; at < count; ++at) rows.scores.push_back(rounded(random.fraction(), 1 + at % 20));
  return rows;
}

}  // namespace vantrex::bench
