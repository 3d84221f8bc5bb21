// An answer's life, and the ways to live it that are measured beside each other.
//
// A life begins with a tool handler's rows and ends with the bytes that are
// sent: the answer is built, finished (null fields dropped, steps chosen from
// what it says and fitted to the budget, "next_steps" attached last), written
// and destroyed.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "rows.h"

namespace vantrex::bench {

// What a tool was asked, and the rows of its answer.
struct Subject {
  std::string_view tool;
  std::optional<std::string_view> action;
  std::string_view argument, value;  // of the request
  Rows rows;
};

struct NamedSubject {
  std::string_view name;
  Subject (*make)(Floats floats);
};
extern const std::array<NamedSubject, 6> kSubjects;

// The files of a subject that is as large as one likes.
Subject files_subject(std::size_t count, Floats floats);

// One way to live it. The stages are called in the order in which they stand;
// one of the two that finish is called. What a library lets one keep from one life
// to the next is kept.
class Contender {
 public:
  Contender() = default;
  Contender(const Contender&) = delete;
  Contender& operator=(const Contender&) = delete;
  virtual ~Contender() = default;

  virtual void build() = 0;
  virtual void finish() = 0;             // gives up the answer that was built
  virtual void finish_kept() = 0;        // keeps it, and finishes a copy
  virtual std::string_view write() = 0;  // the text, which lives until `destroy`
  virtual void destroy() = 0;

  // A whole life. Returns the bytes of the text.
  std::size_t live() {
    build();
    finish();
    const std::size_t bytes = write().size();
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
  std::unique_ptr<Contender> (*make)(const Subject& subject);  // which must outlive it
};
inline constexpr std::array<NamedContender, 4> kContenders = {{{"next_steps", ours},
                                                               {"RapidJSON", rapidjson_peer},
                                                               {"Boost.JSON", boost_json_peer},
                                                               {"nlohmann", nlohmann_peer}}};

}  // namespace vantrex::bench
