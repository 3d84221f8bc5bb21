// An index file that may be replaced while the program runs.
//
// Threads: any number may use an IndexFile at once. While one reads a replaced file, the others wait for it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "requests/names.h"
#include "vantrex/models/repository.h"

namespace next_steps_requests {

class IndexFile {
 public:
  // Reads the index; `file` may be a pipe. Throws like read_index.
  explicit IndexFile(std::string file);

  // Returns the index. If the file is a regular file and was replaced, reads it again first; a pipe or a
  // device is read only once, since reading it again could block. If reading fails, the index that was read
  // last stays in use, and a warning goes to the log. Throws std::bad_alloc; the next call then tries again.
  std::shared_ptr<const models::Repository> current();

 private:
  // What changes with the file: device, inode, size, and the seconds and nanoseconds of the last
  // change of its contents or its attributes. All are 0 when there is no regular file.
  using State = std::array<std::int64_t, 5>;

  static State state_of(const std::string& file);

  std::string file_;
  std::mutex mutex_;  // for what follows
  State seen_;        // before the file was read last
  std::shared_ptr<const models::Repository> index_;
};

}  // namespace next_steps_requests
