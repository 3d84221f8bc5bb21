#include "apps/shell.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <sys/wait.h>

namespace vantrex::tests {

Ran run(const std::string& command, std::string_view input) {
  // Tests run in parallel, so each run has its own directory.
  std::string place = std::filesystem::temp_directory_path() / "next_steps.XXXXXX";
  if (::mkdtemp(place.data()) == nullptr) throw std::runtime_error("no temporary directory");
  std::ofstream(place + "/in") << input;
  std::ofstream(place + "/script") << "PATH=" << std::filesystem::path(NEXT_STEPS_PROGRAM).parent_path()
                                   << ":" << std::filesystem::path(NEXT_STEPS_CODE_INDEX).parent_path()
                                   << ":$PATH\n"
                                   << command << '\n';
  const int status = std::system(
      ("bash " + place + "/script <" + place + "/in >" + place + "/out 2>" + place + "/err").c_str());
  Ran ran{.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
          .out = read_file(place + "/out"),
          .err = read_file(place + "/err")};
  std::filesystem::remove_all(place);
  return ran;
}

bool has_terminal() {
  return run("script -qec true /dev/null").status == 0;
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace vantrex::tests
