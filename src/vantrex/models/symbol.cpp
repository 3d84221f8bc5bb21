#include "vantrex/models/symbol.h"

#include <algorithm>
#include <array>

namespace vantrex::models {

namespace {

constexpr std::array<std::string_view, 6> kDocumentKinds = {"heading", "section",  "subsection",
                                                            "chapter", "document", "key"};

constexpr std::array<std::string_view, 14> kDocumentSuffixes = {".md",   ".markdown", ".rst", ".adoc", ".txt",
                                                                ".json", ".yaml",     ".yml", ".toml", ".ini",
                                                                ".cfg",  ".xml",      ".csv", ".lock"};

constexpr char lower(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool same_but_for_case(std::string_view text, std::string_view lower_case) noexcept {
  return std::equal(text.begin(), text.end(), lower_case.begin(), lower_case.end(),
                    [](char a, char b) { return lower(a) == b; });
}

bool ends_with(std::string_view text, std::string_view lower_case) noexcept {
  return text.size() >= lower_case.size() &&
         same_but_for_case(text.substr(text.size() - lower_case.size()), lower_case);
}

}  // namespace

bool is_code_symbol(std::optional<std::string_view> kind, std::optional<std::string_view> path) noexcept {
  const auto is_kind = [&](std::string_view name) { return same_but_for_case(*kind, name); };
  const auto is_suffix = [&](std::string_view suffix) { return ends_with(*path, suffix); };
  return !(kind && std::any_of(kDocumentKinds.begin(), kDocumentKinds.end(), is_kind)) &&
         !(path && std::any_of(kDocumentSuffixes.begin(), kDocumentSuffixes.end(), is_suffix));
}

}  // namespace vantrex::models
