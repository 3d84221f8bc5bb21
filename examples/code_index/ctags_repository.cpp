#include "ctags_repository.h"

#include <utility>

#include <sys/stat.h>

#include "requests/index_reader.h"

namespace code_index {

CtagsRepository::CtagsRepository(std::string path)
    : path_(std::move(path)),
      indexed_revision_(present_revision()),
      index_(next_steps_requests::read_index(path_)) {}

std::string CtagsRepository::present_revision() const {
  struct stat file {};
  if (::stat(path_.c_str(), &file) != 0) return "no index file";
  return "changed at " + std::to_string(file.st_mtim.tv_sec) + " s " + std::to_string(file.st_mtim.tv_nsec) +
         " ns, " + std::to_string(file.st_size) + " bytes";
}

}  // namespace code_index
