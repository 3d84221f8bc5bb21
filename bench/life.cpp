#include "life.h"

namespace vantrex::bench {

namespace {

constexpr std::string_view kFlush = "acme.storage.SegmentWriter.flush";

}  // namespace

const std::array<NamedSubject, 6> kSubjects = {{
    {"detail",
     [](Floats) {
       return Subject{"symbol", "detail", "fqn", kFlush, detail_rows()};
     }},
    {"callers",
     [](Floats) {
       return Subject{"symbol", "callers", "fqn", kFlush, callers_rows()};
     }},
    {"search",
     [](Floats floats) {
       return Subject{"search", "symbols", "query", "flush pending segments", search_rows(floats)};
     }},
    {"files", [](Floats floats) { return files_subject(20'000, floats); }},
    {"huge",
     [](Floats) {
       return Subject{"symbol", {}, "fqn", "acme", tree_rows()};
     }},
    {"floats",
     [](Floats floats) {
       return Subject{"symbol", {}, "fqn", kFlush, scores_rows(floats)};
     }},
}};

Subject files_subject(std::size_t count, Floats floats) {
  return {"files", {}, "language", "python", files_rows(count, floats)};
}

}  // namespace vantrex::bench
