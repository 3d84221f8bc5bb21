// An index in a file, which may be replaced while the program runs.
#pragma once

#include <string>

#include <sys/stat.h>

#include "vantrex/models/repository.h"

namespace next_steps_program {

class IndexFile {
 public:
  // Reads the index. Throws as read_ctags_index.
  explicit IndexFile(std::string file);

  // The index as it is now: a file that was replaced is read again. When that fails, the
  // one that was read last stays in use, with a warning on standard error each time that
  // the file changes. Valid until the next call. Throws std::bad_alloc.
  const vantrex::models::Repository& current();

 private:
  bool has_changed();

  std::string file_;
  struct stat seen_ = {};  // as the file was when it was looked at last
  vantrex::models::InMemoryRepository index_;
};

}  // namespace next_steps_program
