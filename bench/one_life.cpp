// one_life CONTENDER ANSWER [COUNT]: lives COUNT lives (1) after one to warm up,
// and prints the bytes of the text. Made for tools that count instructions:
// scripts/instructions has them counted in `counted_lives` alone.
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "life.h"
#include "memory_settings.h"

namespace vantrex::bench {

namespace {

[[gnu::noinline]] std::size_t counted_lives(Contender& contender, int count) {
  std::size_t bytes = 0;
  for (; count > 0; --count) bytes = contender.live();
  return bytes;
}

template <typename Named>
const typename Named::value_type* by_name(const Named& all, std::string_view name) {
  for (const auto& one : all) {
    if (one.name == name) return &one;
  }
  return nullptr;
}

int run(std::string_view contender_name, std::string_view subject_name, int count) {
  const NamedContender* contender = by_name(kContenders, contender_name);
  const NamedSubject* named = by_name(kSubjects, subject_name);
  if (contender == nullptr || named == nullptr || count < 1) return 2;
  keep_freed_memory();
  const Subject subject = named->make(Floats::with);
  const auto way = contender->make(subject);
  way->live();
  std::printf("%zu\n", counted_lives(*way, count));
  return 0;
}

}  // namespace

}  // namespace vantrex::bench

int main(int argc, char** argv) {
  const int status =
      argc < 3 || argc > 4 ? 2 : vantrex::bench::run(argv[1], argv[2], argc == 4 ? std::atoi(argv[3]) : 1);
  if (status == 2) std::fputs("usage: one_life CONTENDER ANSWER [COUNT]\n", stderr);
  return status;
}
