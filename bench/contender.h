// The ways to do the job that are measured beside each other.
//
// The job is that of finish_answer: a deep copy without null fields that needs
// nothing of the original, the bytes of its compact text and of its hint
// fields, two steps built and fitted to the budget, "next_steps" attached as
// the last field, and the finished answer destroyed.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "answers.h"

namespace vantrex::bench {

// One way to do the job, on one request. Everything that a library lets one
// keep between two answers is kept.
class Contender {
 public:
  Contender() = default;
  Contender(const Contender&) = delete;
  Contender& operator=(const Contender&) = delete;
  virtual ~Contender() = default;

  // The whole job. Returns the bytes that it counted, those of the copy's compact
  // text; 0 where it does not tell.
  virtual std::size_t finish() = 0;
  // The whole job, and the finished answer's text. Returns its bytes.
  virtual std::size_t finish_and_write() = 0;
  // The deep copy without null fields, destroyed again. Returns its fields.
  virtual std::size_t copy() = 0;
  // The bytes of the copy's compact text and of its hint fields, added up.
  virtual std::size_t count() = 0;
  // The text of the finished answer.
  virtual std::string finished_text() = 0;
};

std::unique_ptr<Contender> ours(const Request& request);
std::unique_ptr<Contender> rapidjson_peer(const Request& request);
std::unique_ptr<Contender> boost_json_peer(const Request& request);
std::unique_ptr<Contender> nlohmann_peer(const Request& request);

struct NamedContender {
  std::string_view name;
  std::unique_ptr<Contender> (*make)(const Request& request);
};
inline constexpr std::array<NamedContender, 4> kContenders = {{{"next_steps", ours},
                                                               {"RapidJSON", rapidjson_peer},
                                                               {"Boost.JSON", boost_json_peer},
                                                               {"nlohmann", nlohmann_peer}}};

}  // namespace vantrex::bench
