#include "next_steps/index_file.h"

#include <exception>
#include <iostream>
#include <new>
#include <utility>

#include <sys/stat.h>

#include "next_steps/ctags_index.h"

namespace next_steps_program {

IndexFile::IndexFile(std::string file)
    : file_(std::move(file)), seen_(state_of(file_)), index_(read_ctags_index(file_)) {
  index_.make_name_index();
}

const vantrex::models::Repository& IndexFile::current() {
  const State now = state_of(file_);
  if (now == seen_) return index_;
  seen_ = now;
  try {
    index_ = read_ctags_index(file_);
    index_.make_name_index();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    std::cerr << "next-steps: " << error.what() << "; the index that was read before stays in use\n";
  }
  return index_;
}

IndexFile::State IndexFile::state_of(const std::string& file) {
  struct stat found = {};
  if (::stat(file.c_str(), &found) != 0) return {};
  return {static_cast<std::int64_t>(found.st_ino), found.st_size, found.st_ctim.tv_sec,
          found.st_ctim.tv_nsec};
}

}  // namespace next_steps_program
