// The benchmark's unit of work, an answer's life, and the libraries that are compared.
//
// A life begins with a tool handler's rows and ends with the bytes that are sent. Its stages: the answer is
// built, finished (null fields dropped, steps chosen and fitted to the budget, "next_steps" attached last),
// written and destroyed.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "rows.h"

namespace vantrex::bench {

// A request to a tool, and the rows of its answer.
struct Subject {
  std::string_view tool;
  std::optional<std::string_view> action;
  std::string_view argument, value;  // the request's only argument
  Rows rows;
};

inline Subject files_subject(std::size_t count, Floats floats) {
  return {"files", {}, "language", "python", files_rows(count, floats)};
}

struct NamedSubject {
  std::string_view name;
  Subject (*make)(Floats floats);
};
inline constexpr std::string_view kFlush = "acme.storage.SegmentWriter.flush";
inline constexpr std::array<NamedSubject, 6> kSubjects = {{
    {"detail",
     [](Floats) {
       return Subject{"symbol", "detail", "fqn", kFlush, detail_rows()};
     }},
    {"callers",
     [](Floats) {
       return Subject{"symbol", "callers", "fqn", kFlush, callers_rows()};
     }},
    {"search",
     [](Floats with) {
       return Subject{"search", "symbols", "query", "flush", search_rows(with)};
     }},
    {"files", [](Floats with) { return files_subject(20'000, with); }},
    {"huge",
     [](Floats) {
       return Subject{"symbol", {}, "fqn", "acme", tree_rows()};
     }},
    {"floats",
     [](Floats with) {
       return Subject{"symbol", {}, "fqn", kFlush, scores_rows(with)};
     }},
}};

// A JSON library that is measured. The stages are called in the order of their declarations, with either
// finish or finish_kept. A contender keeps its memory from one life to the next where the library allows it.
class Contender {
 public:
  Contender() = default;
  Contender(const Contender&) = delete;
  Contender& operator=(const Contender&) = delete;
  virtual ~Contender() = default;

  virtual void build() = 0;
  virtual void finish() = 0;       // finishes the answer in place
  virtual void finish_kept() = 0;  // finishes a copy and keeps the answer
  virtual void write() = 0;        // writes the finished answer to `text`
  virtual void destroy() = 0;
  virtual std::string_view text() const = 0;

  // Runs all stages. Returns the bytes of the text.
  std::size_t run_life() {
    build();
    finish();
    write();
    const std::size_t bytes = text().size();
    destroy();
    return bytes;
  }
};

std::unique_ptr<Contender> ours(const Subject& subject);
std::unique_ptr<Contender> rapidjson_peer(const Subject& subject);
std::unique_ptr<Contender> boost_json_peer(const Subject& subject);
std::unique_ptr<Contender> nlohmann_peer(const Subject& subject);

struct NamedContender {
  std::string_view name;
  std::unique_ptr<Contender> (*make)(const Subject& subject);  // `subject` must outlive the contender
};
inline constexpr std::array<NamedContender, 4> kContenders = {{{"next_steps", ours},
                                                               {"RapidJSON", rapidjson_peer},
                                                               {"Boost.JSON", boost_json_peer},
                                                               {"nlohmann", nlohmann_peer}}};

}  // namespace vantrex::bench
