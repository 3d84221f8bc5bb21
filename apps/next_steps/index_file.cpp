#include "next_steps/index_file.h"

#include <exception>
#include <iostream>
#include <new>
#include <utility>

#include "next_steps/ctags_index.h"

namespace next_steps_program {

IndexFile::IndexFile(std::string file) : file_(std::move(file)) {
  has_changed();
  index_ = read_ctags_index(file_);
}

const vantrex::models::Repository& IndexFile::current() {
  if (!has_changed()) return index_;
  try {
    index_ = read_ctags_index(file_);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    std::cerr << "next-steps: " << error.what() << "; the index that was read before stays in use\n";
  }
  return index_;
}

// For a file that is gone, everything is 0.
bool IndexFile::has_changed() {
  struct stat now = {};
  if (::stat(file_.c_str(), &now) != 0) now = {};
  const bool same = now.st_ino == seen_.st_ino && now.st_size == seen_.st_size &&
                    now.st_mtim.tv_sec == seen_.st_mtim.tv_sec &&
                    now.st_mtim.tv_nsec == seen_.st_mtim.tv_nsec;
  seen_ = now;
  return !same;
}

}  // namespace next_steps_program
