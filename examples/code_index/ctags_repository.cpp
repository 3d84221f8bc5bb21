#include "ctags_repository.h"

#include <unordered_map>
#include <utility>

#include <sys/stat.h>

#include "requests/index_reader.h"

namespace code_index {

CtagsRepository::CtagsRepository(std::string path)
    : path_(std::move(path)),
      indexed_revision_(present_revision()),
      index_(next_steps_requests::read_index(path_)) {
  index_.make_name_index();
  index_.visit_paths([this](std::string_view file) { files_[file]; });
  std::unordered_map<const char*, std::vector<std::size_t>*>
      known;  // most paths are in one place for all symbols
  for (std::size_t position = 0; position < index_.symbol_count(); ++position) {
    const std::string_view file = index_.symbol_at(position).file;
    if (file.empty()) continue;
    std::vector<std::size_t>*& symbols = known[file.data()];
    if (symbols == nullptr) symbols = &files_[file];
    symbols->push_back(position);
  }
}

std::string CtagsRepository::present_revision() const {
  struct stat file {};
  if (::stat(path_.c_str(), &file) != 0) return "no index file";
  return "changed at " + std::to_string(file.st_mtim.tv_sec) + " s " + std::to_string(file.st_mtim.tv_nsec) +
         " ns, " + std::to_string(file.st_size) + " bytes";
}

}  // namespace code_index
