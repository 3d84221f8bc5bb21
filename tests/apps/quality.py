"""How often a misspelt name finds what was meant, in the names of two standard libraries: quality.py PROGRAM

The misses are drawn as scripts/quality draws them from the names of a whole machine.
"""
import collections, pathlib, random, subprocess, sys, tempfile

sys.path.insert(0, "bench")
import misses


def lines_of(file):
    return (pathlib.Path(__file__).parent / "data" / file).read_text().splitlines()


def other_case(parts, _):
    return parts[:-1] + [parts[-1].swapcase()]


def other_word_order(parts, _):
    first, _, rest = parts[-1].partition("_")
    return parts[:-1] + [first and rest and rest + "_" + first]


SYMBOLS = {**misses.SYMBOLS, "case": (1, misses.whole, other_case), "word order": (1, misses.whole, other_word_order)}
# The share that must be answered with the right name first, in percent; 98.5 for other kinds.
LEAST = {"name, outer qualifiers left out": 95, "name, inner qualifier left out": 56, "bare name": 67,
         "base name, directory left out": 95, "another extension": 97, "no name": 99}
symbols, paths, foreign = map(lines_of, ("symbols.txt", "paths.txt", "foreign_words.txt"))
held = {*symbols, *(misses.split_symbol(name)[-1] for name in symbols)}
drawn = [*misses.draw_misses("symbol", SYMBOLS, symbols, held, misses.split_symbol),
         *misses.draw_misses("path", misses.PATHS, paths, set(paths), misses.split_path)]
# Names of random letters, and of two words from other fields, for which nothing should be offered.
chance = random.Random(1)
for _ in range(750):
    letters = "".join(chance.choices("abcdefghijklmnopqrstuvwxyz", k=chance.randrange(6, 16)))
    for wanted in (letters, "_".join(chance.choices(foreign, k=2))):
        drawn.append({"kind": "no name", "suggest": "symbol", "wanted": wanted, "meant": ""})

with tempfile.NamedTemporaryFile("w") as index:
    index.writelines(f'{{"fqn":"{name}"}}\n' for name in symbols)
    index.writelines(f'{{"path":"{path}"}}\n' for path in paths)
    index.flush()
    found = collections.defaultdict(list)
    command = [sys.argv[1], "batch", "--index", index.name]
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        for miss in drawn:
            found[miss["kind"]].append(misses.ask(process, miss)[0])
        process.stdin.close()
shares = {kind: 100 * sum(right) / len(right) for kind, right in found.items()}
assert all(share >= LEAST.get(kind, 98.5) for kind, share in shares.items()), shares
