#include "next_steps_c.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace vantrex::tests {
namespace {

using Session = std::unique_ptr<next_steps_session, decltype(&next_steps_close)>;

Session opened(std::string_view options) {
  return {next_steps_open(options.data(), options.size()), next_steps_close};
}

// Returns the reply, or the last error in brackets.
std::string asked(const Session& session, std::string_view request) {
  std::size_t size = 0;
  const std::unique_ptr<char, decltype(&next_steps_free)> reply(
      next_steps_reply(session.get(), request.data(), request.size(), &size), next_steps_free);
  if (reply == nullptr) return "[" + std::string(next_steps_last_error()) + "]";
  EXPECT_EQ(reply.get()[size], '\0');
  return {reply.get(), size};
}

TEST(CInterface, RejectsWrongOptions) {
  const auto error = [](std::string_view options) {
    EXPECT_EQ(opened(options), nullptr) << options;
    return std::string(next_steps_last_error());
  };
  for (const auto& [options, expected] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
           {"{\n \"indx\":1}", R"(options:2:2: "indx" is no member of the options)"},
           {R"({"index":1})", R"(options:1:2: "index" must be a string or null, not an integer)"},
           {R"({"index":""})", R"(options:1:2: "index" must be the name of a file)"},
           {R"({"index":"-"})", R"(options:1:2: "index" must be the name of a file)"},
           {R"({"catalogue":"a\u0000"})", R"(options:1:2: "catalogue" must be the name of a file)"},
           {"{\"index\":\"\xFF\"}", "options:1:11: ill-formed UTF-8"},
           {R"({"index":"missing"})", "missing: No such file or directory"},
           {R"({"catalogue":"examples/index/models.json"})",
            "examples/index/models.json:2:1: The document root "
            "must not be followed by other values."},
       }) {
    EXPECT_EQ(error(options), expected);
  }
  EXPECT_EQ(error({nullptr, 0}), "the options must not be null");
  EXPECT_EQ(error({"{}", std::size_t{1} << 32U}), "the options must not be longer than 2^32 - 1 bytes");
}

TEST(CInterface, RejectsWrongCallsAndRepliesToWrongRequests) {
  const Session session = opened(R"({"serves":["search"]})");
  EXPECT_EQ(asked(session, {nullptr, 0}), "[the request must not be null]");
  EXPECT_EQ(asked(session, {"{}", SIZE_MAX}), "[the request must not be longer than 2^32 - 1 bytes]");
  EXPECT_EQ(asked({nullptr, next_steps_close}, "{}"), "[the session must not be null]");
  EXPECT_EQ(asked(session, "{\"id\":1,\"\xFF"),
            R"({"id":1,"error":{"line":1,"column":10,"message":"ill-formed UTF-8"}})");
  EXPECT_EQ(asked(session, {"{}\0", 3}), R"({"error":{"line":1,"column":3,"message":"NUL byte"}})");
  EXPECT_EQ(
      asked(session, "{\"tool\":\"x\",\n\"response\":\n {}}}"),
      R"({"error":{"line":3,"column":5,"message":"The document root must not be followed by other values."}})");
  EXPECT_EQ(asked(session, R"({"tool":"search","response":{"results":[{"fqn":"a.b"}]}})"),
            R"({"results":[{"fqn":"a.b"}]})");
  next_steps_free(next_steps_reply(session.get(), "{}", 2, nullptr));
  next_steps_free(nullptr);
}

TEST(Threads, ShareASession) {
  const std::string file =
      std::filesystem::temp_directory_path() / ("next_steps_c." + std::to_string(getpid()));
  const auto write_index = [&file](std::string_view name) {
    std::ofstream(file + ".new") << R"({"_type":"tag","name":")" << name << R"(","path":"a.c"})";
    std::filesystem::rename(file + ".new", file);
  };
  write_index("name0");
  const Session session =
      opened(R"({"catalogue":"examples/catalogues/issues.json","index":")" + file + "\"}");
  ASSERT_NE(session, nullptr) << next_steps_last_error();
  const auto nearest = [&session] {
    const std::string reply = asked(session, R"({"suggest":"symbol","wanted":"name"})");
    return reply.substr(reply.find("name"), 5);
  };
  const std::string request = R"({"tool":"issue","response":{"number":7}})";
  const std::string finished = asked(session, request);
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      std::string last = "name0";
      for (int round = 0; round < 200; ++round) {
        EXPECT_EQ(asked(session, request), finished);
        const std::string name = nearest();
        EXPECT_GE(name, last);
        last = name;
        EXPECT_EQ(opened("{"), nullptr);
        EXPECT_EQ(next_steps_last_error()[8], '1');
      }
    });
  }
  for (const std::string name : {"name1", "name2", "name3"}) {
    write_index(name);
    EXPECT_EQ(nearest(), name);
  }
  for (std::thread& thread : threads) thread.join();
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace vantrex::tests
