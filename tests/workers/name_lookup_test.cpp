#include "vantrex/workers/name_lookup.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "support/indexes.h"
#include "support/table.h"

namespace vantrex::workers {
namespace {

using tests::index_of;
using tests::nearest_fqns;
using Texts = std::vector<std::string>;

// Each row: the wanted name, the expected candidates in order, and the other names in the index. The index
// holds the expected ones in reverse order. A name index changes nothing.
void expect_rows(const std::string& rows, Texts (*lookup)(const models::Repository&, std::string_view)) {
  for (const Texts& row : tests::table(rows)) {
    const Texts expected = tests::words(row[1]);
    Texts held = tests::words(row.size() > 2 ? row[2] : "");
    held.insert(held.begin(), expected.rbegin(), expected.rend());
    models::InMemoryRepository index = index_of(held);
    EXPECT_EQ(lookup(index, row[0]), expected) << row[0];
    index.make_name_index();
    EXPECT_EQ(lookup(index, row[0]), expected) << row[0];
  }
}

TEST(NameLookup, SymbolsInOrderOfLikeness) {
  expect_rows(R"(
# the name, from equal to a part of another one
read_file | a.read_file a.READ_FILE a.readFile a.file_read a.read_fil | a.reader
read_file | a.read_files a.read_fil a.do_read_file a.raed_fil a.read_file_now | a.red_fl_xx a.read_file_now_2
read_file | a.read_file_before a.read_file_and_cache_it a.must_read_file a.must_not_read_file | a.read_only_config a.fil
# the qualifiers: spelling, one too many, edits, one too few
pkg.Thing.run | pkg.Thing.run pkg.thing.run a.pkg.Thing.run pkg.Theng.run pkg.a.Thing.b.run | Thing.run pkg.run
pkg.Thing.run | Thing.run pkg.run other.Thing.run else.run a.b.c.d.e.run | a.b.c.d.e.f.g.h.run
a.bcd.run | a.run a.dbc.run
# the sum of both
std::vectr::push_back | std::vector::push_back std::vectr::push_bak vectr::push_back push_back | std::deque::push
std::vektor::push_back | std::vector::push_back std::deque::push_back std::list::push_back push_back
bit_xr | m.bit_xor m.bit_or m.bit_r
# separators of parts, arguments, operators
Thing->run() | Thing::run Thing#run Thing.run Thing/run | Thing-run.x
Ptr::operator-> | Ptr::operator->
operator.add | operator.add | operator.multiply
f<a->b>->c | f::c c | ff::cc
a_é | m.éA
HTTP~xy | m.HTTP~xyz
z.b.c.d.e.f.g.h.i.j.k.l.m.n.o.p.q.run | z.b.c.d.e.f.g.h.i.j.k.l.m.n.o.p.q.run a.b.c.d.e.f.g.h.i.j.k.l.m.n.o.p.q.run b.run
XMLParser | x.xml_parser x.parser_xml
userRowCount | x.count_user_row | x.countuser_row
# capitals and code points, not bytes
größe | m.größe m.GRößE m.grösse | m.gr
日本語 | 日本誤 日本 | 日
# too short, too far, no name
abc | abd ab | abcd_efgh axy m._
assert |  | sqrt
INT8_MAX |  | PATH_MAX
_ | m._ | m.__ m.-
... |  | a ...
)",
              nearest_fqns);
}

TEST(NameLookup, PathsInOrderOfLikeness) {
  expect_rows(R"(
src/app/main.py | src/app/main.py src/app/main.js src/app/mains.py lib/app/main.py main.py | x/main.py
src/app/man.py | src/app/main.py src/app/main.js lib/main.py | src/app/other.py
src/man.py | src/main.py src/main.PY
src/db.py | src/bd.py | src/xy.py
/home/ann/tree/src/app.py | src/app.py other/app.py | src/apparatus.py
./src//app.py/ | src/app.py
x/lib/main.py | y/lib/main.py lib/lib/main.py
docs/user-guide.md | docs/user_guide.md docs/userguide.md docs/user-guides.md
readme.md | README.md sub/README.md README.rst
.gitignore | .gitignore | .git
main.py | a/main.py b/main.py c/main.py d/main.py e/main.py | main.js a/main.py
src\main.py\ | src/main.py
x.py | lib/x.py x.c | y.py _.py
/ |  | a /
)",
              nearest_paths);
}

TEST(NameLookup, GuessesTheName) {
  for (const Texts& row : tests::table(R"(
# a name | names from which it is guessed
Thng | pkg.mod.Thng | pkg.mod.Thng. | a::b->c#d/Thng | Thng->
run | Thing.run(a, b.c()) | k8s/operator/run
<init> | Foo.<init>
operator/= | S::operator/=
operator() | S::operator()
operator->* | S::operator->*
add | operator.add
: | :
odd)> | odd)>
)")) {
    for (std::size_t cell = 1; cell < row.size(); ++cell)
      EXPECT_EQ(guessed_name(row[cell]), row[0]) << row[cell];
  }
  EXPECT_EQ(guessed_name("a.\xff"), "\xff");
  EXPECT_EQ(guessed_name("::."), "");
}

TEST(NameLookup, OffersTheFirstLineOfAName) {
  models::InMemoryRepository index;
  for (const std::size_t line : {7U, 3U, 5U}) index.add_symbol({.fqn = "a.run", .line = line});
  const auto candidates = nearest_symbols(index, "run");
  ASSERT_EQ(candidates.size(), 1U);
  EXPECT_EQ(candidates[0].line, 3U);
}

TEST(NameLookup, TakesAnyBytes) {
  const models::InMemoryRepository index = index_of({"a.na\xffme", "a.na\xfeme", std::string(300, 'x'), ""});
  EXPECT_EQ(nearest_fqns(index, "na\xffme"), (Texts{"a.na\xffme", "a.na\xfeme"}));
  EXPECT_EQ(nearest_fqns(index, std::string(299, 'x') + "y"), (Texts{std::string(300, 'x')}));
  EXPECT_EQ(nearest_paths(index, std::string("\0", 1)), Texts{});
}

TEST(NameLookup, OffersAThirdOfTheLettersAndAtMost64Edits) {
  for (const std::size_t size : {3U, 5U, 191U, 192U, 195U, 198U, 400U}) {
    const std::size_t max = std::min<std::size_t>(size / 3, 64);
    const auto index = index_of({std::string(size, 'x')});
    for (const std::size_t edits : {max, max + 1}) {
      const std::string wanted = std::string(edits, 'y') + std::string(size - edits, 'x');
      const std::size_t expected = edits == max ? 1 : 0;
      EXPECT_EQ(nearest_fqns(index, wanted).size(), expected) << size;
      EXPECT_EQ(nearest_paths(index, wanted).size(), expected) << size;
    }
  }
}

TEST(NameLookup, AllocatesOnlyForTheBestCandidates) {
  models::InMemoryRepository index = index_of({"pkg.some_module.parse_configuration"});
  for (int count = 0; count < 1000; ++count) {
    index.add_symbol({.fqn = "pkg.some_module.parse_configurations" + std::to_string(count)});
  }
  for (const bool indexed : {false, true}) {
    if (indexed) index.make_name_index();
    const std::size_t before = tests::allocations().taken;
    EXPECT_EQ(nearest_symbols(index, "parse_configuratoin").size(), 5U);
    EXPECT_LT(tests::allocations().taken - before, 100U);
  }
}

}  // namespace
}  // namespace vantrex::workers
