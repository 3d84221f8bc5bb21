#include "apps/shell.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <sys/wait.h>

namespace vantrex::tests {

namespace {

// A directory of its own for each run, since tests run side by side.
class Workplace {
 public:
  Workplace() {
    std::string name = std::filesystem::temp_directory_path() / "next_steps.XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary directory");
    directory_ = name;
  }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace() { std::filesystem::remove_all(directory_); }

  std::string operator/(const char* file) const { return directory_ / file; }

 private:
  std::filesystem::path directory_;
};

}  // namespace

Ran run(const std::string& command, std::string_view input) {
  const Workplace place;
  std::ofstream(place / "in") << input;
  std::ofstream(place / "script") << "PATH=" << std::filesystem::path(NEXT_STEPS_PROGRAM).parent_path()
                                  << ":$PATH\n"
                                  << command << '\n';
  const std::string line =
      "bash " + (place / "script") + " <" + (place / "in") + " >" + (place / "out") + " 2>" + (place / "err");
  const int status = std::system(line.c_str());
  return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
          .out = read_file(place / "out"),
          .err = read_file(place / "err")};
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace vantrex::tests
