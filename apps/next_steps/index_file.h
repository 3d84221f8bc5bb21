// An index file that may be replaced while the program runs.
#pragma once

#include <string>

#include <sys/stat.h>

#include "vantrex/models/repository.h"

namespace next_steps_program {

class IndexFile {
 public:
  // Reads the index. Throws like read_ctags_index.
  explicit IndexFile(std::string file);

  // Returns the index, and reads the file again first if it was replaced. If that fails, the
  // index that was read last stays in use, and a warning goes to standard error. The
  // reference is valid until the next call. Throws std::bad_alloc.
  const vantrex::models::Repository& current();

 private:
  bool has_changed();

  std::string file_;
  struct stat seen_ = {};  // of the file at the last call
  vantrex::models::InMemoryRepository index_;
};

}  // namespace next_steps_program
