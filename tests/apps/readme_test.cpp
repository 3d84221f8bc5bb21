#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/table.h"

namespace vantrex::tests {
namespace {

// Returns the contents of the code blocks of `language` in a document.
std::vector<std::string> blocks(const std::string& document, const std::string& language) {
  const std::string text = read_file(NEXT_STEPS_ROOT "/" + document);
  const std::string opening = "```" + language + "\n";
  std::vector<std::string> found;
  for (std::size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, at)) {
    at += opening.size();
    found.push_back(text.substr(at, text.find("```", at) - at));
  }
  return found;
}

// Returns the blocks, with an empty line between them.
std::string joined(const std::string& document, const std::string& language) {
  std::string text;
  for (const std::string& block : blocks(document, language)) text += (text.empty() ? "" : "\n") + block;
  return text;
}

TEST(Documents, ShowTheirExamplesAndWhatTheyPrint) {
  struct Row {
    std::string document, example, output;  // `output` is the language of the output blocks
  };
  for (const Row& row : {Row{"README.md", "finish_an_answer", "json"},
                         {"docs/cpp.md", "handlers", "text"},
                         {"docs/misses.md", "misses", "text"},
                         {"docs/catalogues.md", "tracker", "text"}}) {
    EXPECT_EQ(joined(row.document, "cpp"), read_file(NEXT_STEPS_ROOT "/examples/" + row.example + ".cpp"));
    std::string printed;
    for (const std::string& block : blocks(row.document, row.output)) printed += block;
    EXPECT_EQ(printed, run(NEXT_STEPS_EXAMPLES "/" + row.example).out);
  }
}

TEST(Documents, ShowOtherFilesAsTheyAre) {
  struct Row {
    std::string document, language, file;
  };
  for (const Row& row : {Row{"README.md", "python", "examples/finish_an_answer.py"},
                         {"README.md", "js", "examples/finish_an_answer.mjs"},
                         {"python/README.md", "python", "examples/finish_an_answer.py"},
                         {"node/README.md", "js", "examples/finish_an_answer.mjs"},
                         {"docs/languages.md", "python", "examples/session.py"},
                         {"docs/languages.md", "js", "examples/session.mjs"},
                         {"docs/languages.md", "c", "tests/c/c_batch.c"},
                         {"docs/catalogues.md", "json", "examples/catalogues/issues.json"},
                         {"docs/agents.md", "json", "schemas/finished_answer.schema.json"}}) {
    EXPECT_EQ(joined(row.document, row.language), read_file(NEXT_STEPS_ROOT "/" + row.file));
  }
}

// Returns the JSON in the picture on `side`, without the dropped lines.
values::JsonValue pictured(const std::string& picture, const std::string& side) {
  const std::regex line("class=\"" + side + "( gone| came)?\"[^>]*>(.*)</text>");
  std::string text;
  for (std::sregex_iterator at(picture.begin(), picture.end(), line), end; at != end; ++at) text += (*at)[2];
  return parse(std::regex_replace(text, std::regex("&amp;"), "&"));
}

TEST(Readme, PicturesAnAnswerAsItIs) {
  const std::string picture = read_file(NEXT_STEPS_ROOT "/docs/before_after.svg");
  const std::string before = read_file(NEXT_STEPS_ROOT "/examples/answers/detail.json");
  EXPECT_EQ(pictured(picture, "before"), parse(before));
  const std::string after = run("next-steps finish --tool symbol --action detail", before).out;
  EXPECT_EQ(pictured(picture, "after"), parse(after));
}

TEST(Documents, ShowWhatTheCommandsPrint) {
  std::vector<std::string> sessions;
  for (const char* document : {"README.md", "docs/agents.md", "docs/catalogues.md", "docs/log.md",
                               "docs/program.md", "docs/proxy.md"}) {
    const std::vector<std::string> found = blocks(document, "console");
    ASSERT_FALSE(found.empty());
    sessions.insert(sessions.end(), found.begin(), found.end());
  }
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
