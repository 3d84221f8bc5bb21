#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "apps/shell.h"

namespace vantrex::tests {
namespace {

// The contents of the blocks of `language` in the README.
std::vector<std::string> blocks(const std::string& language) {
  const std::string readme = read_file(NEXT_STEPS_ROOT "/README.md");
  const std::string opening = "```" + language + "\n";
  std::vector<std::string> found;
  for (std::size_t at = readme.find(opening); at != std::string::npos; at = readme.find(opening, at)) {
    at += opening.size();
    found.push_back(readme.substr(at, readme.find("```", at) - at));
  }
  return found;
}

TEST(Readme, ShowsTheExampleAndWhatItPrints) {
  EXPECT_EQ(blocks("cpp"), std::vector{read_file(NEXT_STEPS_ROOT "/examples/finish_an_answer.cpp")});
  EXPECT_EQ(blocks("json"), std::vector{run(NEXT_STEPS_EXAMPLE).out});
}

TEST(Readme, ShowsWhatTheCommandsPrint) {
  const std::vector<std::string> sessions = blocks("console");
  ASSERT_FALSE(sessions.empty());
  for (const std::string& session : sessions) {
    std::string printed;
    for (std::size_t at = 0; (at = session.find("$ ", at)) != std::string::npos; ++at) {
      if (at != 0 && session[at - 1] != '\n') continue;
      const std::size_t end = session.find('\n', at);
      const Ran ran = run(session.substr(at + 2, end - at - 2));
      printed += session.substr(at, end - at + 1) + ran.out + ran.err;
    }
    EXPECT_EQ(printed, session);
  }
}

}  // namespace
}  // namespace vantrex::tests
