// one_life CONTENDER ANSWER [COUNT]: runs one life to warm up, then COUNT lives (1 by default), and prints
// the bytes of the text. scripts/instructions counts the instructions of `counted_lives`.
#include <cstdio>
#include <cstdlib>

#include "life.h"
#include "memory.h"

namespace vantrex::bench {

namespace {

[[gnu::noinline]] std::size_t counted_lives(Contender& contender, int count) {
  std::size_t bytes = 0;
  for (; count > 0; --count) bytes = contender.run_life();
  return bytes;
}

// Returns false when there is no such contender or no such answer.
bool run(std::string_view contender_name, std::string_view answer, int count) {
  for (const NamedSubject& named_subject : kSubjects) {
    for (const NamedContender& named_contender : kContenders) {
      if (named_subject.name != answer || named_contender.name != contender_name) continue;
      const Subject subject = named_subject.make(Floats::with);
      const auto contender = named_contender.make(subject);
      contender->run_life();
      std::printf("%zu\n", counted_lives(*contender, count));
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
