#include "vantrex/names/name_parts.h"

#include <algorithm>

namespace vantrex::names {

namespace {

constexpr std::string_view kOperator = "operator";

// Whether the "/" or "->" of `length` bytes before `end` is (the start of) an operator's name.
bool names_operator(std::string_view text, std::size_t end, std::size_t length) noexcept {
  const bool at_end_of_name = end == text.size() || text[end] == '=' || text[end] == '*';
  return at_end_of_name && text.substr(0, end - length).ends_with(kOperator);
}

constexpr bool may_end_separator(char c) noexcept {
  return c == '.' || c == '#' || c == ':' || c == '/' || c == '>';
}

// The length of the separator that ends at `end`; 0 if none does.
std::size_t separator_ending_at(std::string_view text, std::size_t end) noexcept {
  const auto pair_with = [&](char first) { return end >= 2 && text[end - 2] == first; };
  switch (text[end - 1]) {
    case '.':
    case '#':
      return 1;
    case ':':
      return pair_with(':') ? 2 : 0;
    case '/':
      return names_operator(text, end, 1) ? 0 : 1;
    case '>':
      return pair_with('-') && !names_operator(text, end, 2) ? 2 : 0;
    default:
      return 0;
  }
}

// `text` before the bracket that matches the closing one at its end; all of it if there is none. The ">" of
// "->" is not a bracket, so a text that ends with many of them is not scanned for each.
std::string_view before_brackets(std::string_view text, char open, char close) noexcept {
  std::size_t depth = 0;
  for (std::size_t position = text.size(); position-- > 0;) {
    if (text[position] == close && !text.substr(0, position + 1).ends_with("->")) ++depth;
    if (depth == 0) break;
    if (text[position] == open && --depth == 0) return text.substr(0, position);
  }
  return text;
}

// `text` without an argument list, of a call or a template, at its end. Brackets that are part of a name
// ("operator()", "Foo.<init>") stay.
std::string_view without_arguments(std::string_view text) noexcept {
  std::string_view name = text;
  if (text.ends_with(')')) name = before_brackets(text, '(', ')');
  if (text.ends_with('>')) name = before_brackets(text, '<', '>');
  const bool named =
      !name.empty() && !name.ends_with(kOperator) && separator_ending_at(name, name.size()) == 0;
  return named ? name : text;
}

// `text` without separators and argument lists at its end.
std::string_view trimmed(std::string_view text) noexcept {
  for (std::size_t size = 0; size != text.size();) {
    size = text.size();
    text = without_arguments(text);
    if (text.size() == size && size > 0) text.remove_suffix(separator_ending_at(text, size));
  }
  return text;
}

std::size_t count_code_points(std::string_view text) noexcept {
  const auto starts_one = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), starts_one));
}

bool is_slash(char c) noexcept {
  return c == '/' || c == '\\';
}

Parted split_symbol(std::string_view fqn) noexcept {
  fqn = trimmed(fqn);
  for (std::size_t end = fqn.size(); end > 0; --end) {
    if (!may_end_separator(fqn[end - 1])) continue;
    const std::size_t length = separator_ending_at(fqn, end);
    if (length > 0) return {fqn.substr(0, end - length), fqn.substr(end)};
  }
  return {{}, fqn};
}

Parted split_path(std::string_view path) noexcept {
  for (;;) {
    while (!path.empty() && is_slash(path.back())) path.remove_suffix(1);
    const std::size_t slash = path.find_last_of("/\\");
    const std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
    const Parted parted{path.substr(0, start == 0 ? 0 : slash), path.substr(start)};
    if (parted.last != ".") return parted;
    path = parted.outer;
  }
}

}  // namespace

Parted split_last(NameKind kind, std::string_view text) noexcept {
  return kind == NameKind::symbol ? split_symbol(text) : split_path(text);
}

Pieces pieces_of(NameKind kind, std::string_view text) noexcept {
  const Parted parted = split_last(kind, text);
  const std::size_t dot = kind == NameKind::path ? parted.last.rfind('.') : 0;
  if (dot == 0 || dot == std::string_view::npos) return {parted.outer, parted.last, {}};
  return {parted.outer, parted.last.substr(0, dot), parted.last.substr(dot)};
}

std::size_t length_gap(std::string_view a, std::string_view b) noexcept {
  const std::size_t in_a = count_code_points(a);
  const std::size_t in_b = count_code_points(b);
  return std::max(in_a, in_b) - std::min(in_a, in_b);
}

}  // namespace vantrex::names
