#include "vantrex/models/symbol.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace vantrex::models {
namespace {

TEST(Symbol, CodeIsToldByKindAndPath) {
  using Row = std::pair<std::optional<std::string_view>, std::optional<std::string_view>>;
  for (const auto& [kind, path] :
       {Row{{}, {}}, Row{"", ""}, Row{"function", "src/app.py"}, Row{"function", {}}, Row{"keyword", "md"},
        Row{"method", "a.mdx"}, Row{{}, "x.json5"}}) {
    EXPECT_TRUE(is_code_symbol(kind, path)) << kind.value_or("null") << " in " << path.value_or("null");
  }
  for (const auto& [kind, path] :
       {Row{"Heading", {}}, Row{"KEY", "src/app.py"}, Row{"subsection", ""}, Row{"method", "docs/Guide.MD"},
        Row{"method", ".md"}, Row{"", "data/a.markdown"}, Row{{}, "poetry.lock"}, Row{{}, "x.yml"}}) {
    EXPECT_FALSE(is_code_symbol(kind, path)) << kind.value_or("null") << " in " << path.value_or("null");
  }
  for (const char* end : {".md", ".markdown", ".rst", ".adoc", ".txt", ".json", ".yaml", ".yml", ".toml",
                          ".ini", ".cfg", ".xml", ".csv", ".lock"})
    EXPECT_FALSE(is_code_symbol("method", std::string("a") + end)) << end;
}

}  // namespace
}  // namespace vantrex::models
