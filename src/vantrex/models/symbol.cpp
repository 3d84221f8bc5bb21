#include "vantrex/models/symbol.h"

#include <algorithm>
#include <array>

#include "vantrex/names/ascii_case.h"

namespace vantrex::models {

namespace {

constexpr std::array<std::string_view, 6> kDocumentKinds = {"heading", "section",  "subsection",
                                                            "chapter", "document", "key"};

constexpr std::array<std::string_view, 14> kDocumentSuffixes = {".md",   ".markdown", ".rst", ".adoc", ".txt",
                                                                ".json", ".yaml",     ".yml", ".toml", ".ini",
                                                                ".cfg",  ".xml",      ".csv", ".lock"};

bool ends_with(std::string_view path, std::string_view suffix) noexcept {
  return path.size() >= suffix.size() &&
         names::same_but_for_case(path.substr(path.size() - suffix.size()), suffix);
}

}  // namespace

bool is_code_symbol(std::optional<std::string_view> kind, std::optional<std::string_view> path) noexcept {
  const auto is_kind = [&](std::string_view name) { return names::same_but_for_case(*kind, name); };
  const auto is_suffix = [&](std::string_view suffix) { return ends_with(*path, suffix); };
  return !(kind && std::any_of(kDocumentKinds.begin(), kDocumentKinds.end(), is_kind)) &&
         !(path && std::any_of(kDocumentSuffixes.begin(), kDocumentSuffixes.end(), is_suffix));
}

}  // namespace vantrex::models
