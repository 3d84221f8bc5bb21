#include "requests/index_file.h"

#include <exception>
#include <new>
#include <utility>

#include <sys/stat.h>

#include "requests/index_reader.h"
#include "vantrex/logging/logger.h"

namespace next_steps_requests {

namespace {

constexpr vantrex::logging::Logger logger("next_steps.requests");

std::shared_ptr<const models::Repository> with_name_index(models::InMemoryRepository index) {
  index.make_name_index();
  return std::make_shared<models::InMemoryRepository>(std::move(index));
}

}  // namespace

IndexFile::IndexFile(std::string file)
    : file_(std::move(file)), seen_(state_of(file_)), index_(with_name_index(read_index(file_))) {}

std::shared_ptr<const models::Repository> IndexFile::current() {
  const std::scoped_lock lock(mutex_);
  const State now = state_of(file_);
  if (now == seen_) return index_;
  try {
    Input input(RegularFile{file_});
    index_ = with_name_index(read_index(input));
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    logger.warning("Reading %r again failed; the index that was read before stays in use", file_,
                   std::current_exception());
  }
  seen_ = now;
  return index_;
}

IndexFile::State IndexFile::state_of(const std::string& file) {
  struct stat found = {};
  if (::stat(file.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return {};
  return {static_cast<std::int64_t>(found.st_dev), static_cast<std::int64_t>(found.st_ino), found.st_size,
          found.st_ctim.tv_sec, found.st_ctim.tv_nsec};
}

}  // namespace next_steps_requests
