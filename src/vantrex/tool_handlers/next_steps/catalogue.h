// Catalogue: the tables of steps of one server.
//
// Purpose: the module's own tables fit a server with the module's tools. A server whose tools, arguments or
// fields have other names describes its steps in a catalogue, once, and passes it with each answer.
//
// Ownership: an immutable value; copies share their content. Threads: safe for concurrent use.
#pragma once

#include <stdexcept>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

class OwnTables;
struct Tables;

/// Thrown for a catalogue that is wrong. what() names the place and says what is wrong there:
///   next_steps["issues:list"][0].takes: unknown kind "isue"; did you mean "issue"?
class NEXT_STEPS_API CatalogueError : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

/// The tables of steps of one server.
class NEXT_STEPS_API Catalogue {
 public:
  /// The module's own tables.
  Catalogue() noexcept = default;
  /// Shares the content.
  Catalogue(const Catalogue& other) noexcept;
  /// Shares the content.
  Catalogue& operator=(Catalogue other) noexcept {
    std::swap(own_, other.own_);
    return *this;
  }
  /// Frees the content with its last copy.
  ~Catalogue();

  /// The catalogue that `json` describes. docs/catalogues.md explains the format. Throws CatalogueError and
  /// std::bad_alloc.
  static Catalogue from_json(values::JsonObject json);

  /// The catalogue in the format of from_json. Throws std::bad_alloc.
  values::JsonObject to_json() const;

 private:
  friend const Tables& tables_of(const Catalogue* catalogue) noexcept;

  // Takes ownership.
  explicit Catalogue(const OwnTables* own) noexcept : own_(own) {}

  const OwnTables* own_ = nullptr;  // counts its owners; null for the module's tables
};

}  // namespace vantrex::tool_handlers::next_steps
