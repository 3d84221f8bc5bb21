// one_life CONTENDER ANSWER [COUNT]: lives COUNT lives (1) after one to warm up,
// and prints the bytes of the text. Made for tools that count instructions:
// scripts/instructions has them counted in `counted_lives` alone.
#include <cstdio>
#include <cstdlib>

#include "life.h"
#include "memory.h"

namespace vantrex::bench {

namespace {

[[gnu::noinline]] std::size_t counted_lives(Contender& contender, int count) {
  std::size_t bytes = 0;
  for (; count > 0; --count) bytes = contender.live();
  return bytes;
}

// Whether there are such a contender and such an answer.
bool run(std::string_view contender_name, std::string_view answer, int count) {
  for (const NamedSubject& named : kSubjects) {
    for (const NamedContender& contender : kContenders) {
      if (named.name != answer || contender.name != contender_name) continue;
      const Subject subject = named.make(Floats::with);
      const auto way = contender.make(subject);
      way->live();
      std::printf("%zu\n", counted_lives(*way, count));
      return true;
    }
  }
  return false;
}

}  // namespace

}  // namespace vantrex::bench

int main(int argc, char** argv) {
  vantrex::bench::keep_freed_memory();
  if (argc >= 3 && vantrex::bench::run(argv[1], argv[2], argc > 3 ? std::atoi(argv[3]) : 1)) return 0;
  std::fputs("usage: one_life CONTENDER ANSWER [COUNT]\n", stderr);
  return 2;
}
