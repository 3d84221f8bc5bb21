#!/usr/bin/env bash
# check.sh COMPILER: each statement of the table must fail to compile with a single error, and that must match the
# pattern beside it.
set -euo pipefail
compiler=$1 failed=0 work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cat >"$work/all.h" <<'CODE'
#include <map>
#include <vector>
#include "vantrex/tool_handlers/next_steps/explanation.h"
using namespace vantrex::values;
using namespace vantrex::tool_handlers::next_steps;
struct Point {};
CODE

compile() {
  "$compiler" -std=c++20 -I../../src "$@" 2>&1
}
# Compiles a function with the statement $1. Prints the lines that report errors.
errors() {
  compile -include "$work/all.h" -fsyntax-only -x c++ - <<<"void f(JsonObject& object, Point& point) { $1; (void)point; }" |
    grep ' error: '
}

compile -x c++-header -o "$work/all.h.gch" "$work/all.h"
if errors 'object.set("k", std::vector<int>())'; then failed=1; fi
while IFS='|' read -r code message; do
  said=$(errors "$code" || true)
  [[ $(wc -l <<<"$said") = 1 && $said =~ $message ]] && continue
  printf '"%s": expected the error "%s", got:\n%s\n' "$code" "$message" "$said"
  failed=1
done <<'TABLE'
object.set("k", point)|Point.* deleted|deleted .*Point
object.set("k", std::vector(1, point))|vector<Point.* deleted|deleted .*vector<Point
object.set("k", std::map<std::string, Point>())|map<.*Point.* deleted|deleted .*map<.*Point
JsonList::of(std::optional(point))|optional<Point.* deleted|deleted .*optional<Point
object.set("k", &point)|Point ?\*.* deleted|deleted .*Point ?\*
object.set("\xFF", 1)|not a constant expression
object.set(nullptr, 1)|deleted
Text(nullptr)|deleted
object["k"] == std::vector<int>()|deleted (operator|function .*operator==)
object[nullptr]|no (match|viable)
JsonValue("k").string()|deleted .*string
JsonValue(object).object()|deleted .*object
finish_answer(object, nullptr)|deleted .*finish_answer
TABLE
exit $failed
