#include "vantrex/models/symbol.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/table.h"

namespace vantrex::models {
namespace {

TEST(IsCodeSymbol, LooksAtTheKindAndThePath) {
  const auto optional = [](const std::string& cell) {
    return cell == "none" ? std::nullopt : std::optional(cell);
  };
  for (const auto& row : tests::table(R"(
# code or text | kinds and paths
code | none none | function src/app.py | function none | keyword md | method a.mdx | none x.json5
text | Heading none | KEY src/app.py | subsection none | method docs/Guide.MD | method .md | none data/a.markdown | none poetry.lock | none x.yml
text | m a.md | m a.rst | m a.adoc | m a.txt | m a.json | m a.yaml | m a.toml | m a.ini | m a.cfg | m a.xml | m a.csv
)")) {
    for (std::size_t cell = 1; cell < row.size(); ++cell) {
      const auto words = tests::words(row[cell]);
      EXPECT_EQ(is_code_symbol(optional(words.at(0)), optional(words.at(1))), row[0] == "code") << row[cell];
    }
  }
  EXPECT_TRUE(is_code_symbol("", ""));
}

}  // namespace
}  // namespace vantrex::models
