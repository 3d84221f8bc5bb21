"""How often a misspelt name finds what was meant: misses.py PROGRAM INDEX MISSES

INDEX is made by ctags. MISSES is a file; unless it is there, it is made from the index
with 200 misses of each kind and the same seed each time. Prints the share of them that
`PROGRAM batch` answers with the right name first, the time of a miss as its client sees
it, the time of `PROGRAM suggest`, which only reads the index, the time until `batch`, which
also makes the name index, has answered its first miss, and its peak memory. After each time
stands the processor time in user mode, which hardly depends on the load of the machine.
The last line is a row for the README.
"""
import json
import os
import random
import re
import statistics
import subprocess
import sys
import time

SEED = 1
EACH = 200
KEYS = ["qwertyuiop", "asdfghjkl", "zxcvbnm"]
WORDS = re.compile(r"[A-Z]+(?![a-z])|[A-Z]?[a-z]+|[0-9]+")


def neighbour(letter, choose):
    """A letter beside it, or above or below it, on the keyboard."""
    row = next(row for row in KEYS if letter.lower() in row)
    at, rows = row.index(letter.lower()), KEYS.index(row)
    keys = row[max(at - 1, 0):at] + row[at + 1:at + 2]
    for other in KEYS[max(rows - 1, 0):rows] + KEYS[rows + 1:rows + 2]:
        keys += other[at:at + 1]
    key = choose.choice(keys)
    return key.upper() if letter.isupper() else key


def typo(text, choose):
    """One slip of a hand: a letter dropped, doubled, swapped with the next, or a neighbouring key."""
    places = [at for at, letter in enumerate(text) if letter.isascii() and letter.isalpha()]
    if len(places) < 4:
        return None
    at, kind = choose.choice(places), choose.randrange(4)
    before, letter, after = text[:at], text[at], text[at + 1:]
    made = [before + after, before + letter + text[at:], before + after[:1] + letter + after[1:],
            before + neighbour(letter, choose) + after][kind]
    return made if made != text else None


def other_style(name):
    """read_file for readFile, and the other way round."""
    words = WORDS.findall(name)
    if len(words) < 2 or name.lower().replace("_", "") != "".join(words).lower():
        return None
    if "_" in name.strip("_"):
        return words[0].lower() + "".join(word.capitalize() for word in words[1:])
    return "_".join(word.lower() for word in words)


def outer_typo(parts, choose):
    """A typo in a qualifier, or in a directory."""
    at = choose.randrange(0, len(parts) - 1, 2)
    return parts[:at] + [typo(parts[at], choose)] + parts[at + 1:]


def name_typo(parts, choose):
    return parts[:-1] + [typo(parts[-1], choose)]


def base_typo(parts, choose):
    stem, dot, extension = parts[-1].rpartition(".")
    made = typo(stem, choose) if stem else None
    return parts[:-1] + [made and made + dot + extension]


def both(first, second):
    return lambda parts, choose: second(first(parts, choose), choose)


def restyled(parts, _):
    return parts[:-1] + [other_style(parts[-1])]


def other_extension(parts, choose):
    stem, _, extension = parts[-1].rpartition(".")
    others = [each for each in ("h", "hpp", "c", "cc", "cpp", "py", "js", "ts") if each != extension]
    return parts[:-1] + [stem and stem + "." + choose.choice(others)]


def whole(parts, _):
    return parts


def outer_left_out(parts, _):
    return parts[-3:]


def inner_left_out(parts, choose):
    """Without one of the qualifiers, but not the outermost."""
    at = choose.randrange(2, len(parts) - 1, 2)
    return parts[:at] + parts[at + 2:]


def bare(parts, _):
    return parts[-1:]


def directory_left_out(parts, choose):
    at = choose.randrange(0, len(parts) - 1, 2)
    return parts[:at] + parts[at + 2:]


# The kinds of misses: the fewest parts of a name, what is kept of them, and what is done to that.
SYMBOLS = {
    "name": (2, whole, name_typo),
    "qualifier": (2, whole, outer_typo),
    "name and qualifier": (2, whole, both(outer_typo, name_typo)),
    "name, outer qualifiers left out": (3, outer_left_out, name_typo),
    "name, inner qualifier left out": (3, inner_left_out, name_typo),
    "bare name": (1, bare, name_typo),
    "style": (2, whole, restyled),
}
PATHS = {
    "base name": (2, whole, base_typo),
    "directory": (2, whole, outer_typo),
    "base name and directory": (2, whole, both(outer_typo, base_typo)),
    "base name, directory left out": (2, directory_left_out, base_typo),
    "another extension": (2, whole, other_extension),
}


def fqn_of(tag):
    scope = tag.get("scope", "")
    if not scope:
        return tag["name"]
    colons = tag.get("language") in ("C++", "Rust") or "::" in scope
    return scope + ("::" if colons else ".") + tag["name"]


def read(index):
    """The different qualified names, all that is held, the paths, and the number of tags."""
    names, held, paths, tags = set(), set(), set(), 0
    with open(index, encoding="utf-8") as lines:
        for line in lines:
            tag = json.loads(line)
            if tag["_type"] == "tag":
                paths.add(tag["path"].lstrip("/"))
                held.add(tag["name"])
                names.add(fqn_of(tag))
                tags += 1
    return sorted(names), held | names, sorted(paths), tags


def draw_misses(what, kinds, names, held, split):
    """The misses of each kind: of names drawn at random, without those that ctags made up.

    Left out are those that are another name once the typo is mended: that one may be meant.
    """
    different = set(names)
    for kind, (fewest, keep, spoil) in kinds.items():
        choose = random.Random(f"{SEED} {kind}")
        made = 0
        while made < EACH:
            meant = choose.choice(names)
            parts = split(meant)
            if len(parts) < 2 * fewest - 1 or "__anon" in meant or not all(parts):
                continue
            kept = keep(parts, choose)
            wrong = spoil(kept, choose)
            if not all(wrong) or "".join(wrong) in held or ("".join(kept) != meant and "".join(kept) in different):
                continue
            made += 1
            yield {"kind": kind, "suggest": what, "wanted": "".join(wrong), "meant": meant}


def split_symbol(fqn):
    return re.split(r"(::|\.)", fqn)


def split_path(path):
    return re.split("(/)", path)


def make_misses(index, file):
    """The first line says how large the index is."""
    names, held, paths, tags = read(index)
    with open(file, "w", encoding="utf-8") as out:
        out.write(json.dumps({"tags": tags, "names": len(names), "paths": len(paths)}) + "\n")
        for miss in [*draw_misses("symbol", SYMBOLS, names, held, split_symbol),
                     *draw_misses("path", PATHS, paths, set(paths), split_path)]:
            out.write(json.dumps(miss) + "\n")


def first_name(reply):
    near = json.loads(reply)["did_you_mean"]
    first = near[0] if near else ""
    return first.lstrip("/") if isinstance(first, str) else first["fqn"]


def ask(process, miss):
    """Whether the first name is the one that was meant, and the seconds that the answer took."""
    request = json.dumps({"suggest": miss["suggest"], "wanted": miss["wanted"]}) + "\n"
    start = time.perf_counter()
    process.stdin.write(request.encode())
    process.stdin.flush()
    reply = process.stdout.readline()
    return first_name(reply) == miss["meant"], time.perf_counter() - start


def user_time(process):
    with open(f"/proc/{process.pid}/stat", encoding="utf-8") as stat:
        return int(stat.read().rsplit(")", 1)[1].split()[11]) / os.sysconf("SC_CLK_TCK")


def peak_memory(process):
    """In MiB, and of the program alone: getrusage would count what this script had in memory when it started it."""
    with open(f"/proc/{process.pid}/status", encoding="utf-8") as status:
        return int(re.search(r"VmHWM:\s*(\d+)", status.read())[1]) / 1024


def read_only(program, index):
    """The time of reading the index, and its processor time."""
    start = time.perf_counter()
    process = subprocess.Popen([program, "suggest", "--index", index, "path", "no/such/path"], stdout=subprocess.DEVNULL)
    os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOWAIT)
    seconds, user = time.perf_counter() - start, user_time(process)
    process.wait()
    return seconds, user


def print_firsts(answers):
    print(f"{'the typo is in':44} first   median     99 %")
    for (what, kind), given in answers.items():
        times = sorted(1000 * seconds for _, seconds in given)
        print(f"{what + ': ' + kind:44} {sum(first for first, _ in given) / len(given):5.3f} "
              f"{statistics.median(times):6.1f} ms {times[len(times) * 99 // 100]:6.1f} ms")


def main(program, index, file):
    if not os.path.exists(file):
        make_misses(index, file)
    with open(file, encoding="utf-8") as lines:
        size, *misses = [json.loads(line) for line in lines]
    read_seconds, read_user = read_only(program, index)
    answers = {}
    start = time.perf_counter()
    with subprocess.Popen([program, "batch", "--index", index], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        ask(process, misses[0])
        ready, ready_user = time.perf_counter() - start, user_time(process)
        for miss in misses:
            answers.setdefault((miss["suggest"], miss["kind"]), []).append(ask(process, miss))
        user, peak = user_time(process), peak_memory(process)
        process.stdin.close()
    print_firsts(answers)
    times = sorted(1000 * seconds for given in answers.values() for _, seconds in given)
    median, slow = statistics.median(times), times[len(times) * 99 // 100]
    print(f"all misses: median {median:.1f} ms, 99 % {slow:.1f} ms, "
          f"mean {1000 * (user - ready_user) / len(times):.2f} ms user")
    print(f"index read: {read_seconds:.2f} s ({read_user:.2f} s user); and the name index made: "
          f"{ready:.2f} s ({ready_user:.2f} s user); peak memory: {peak:.0f} MiB")
    print(f"| {size['tags']:,} tags, {size['names']:,} names, {os.path.getsize(index) / 1e6:.0f} MB | {median:.1f} ms, "
          f"{slow:.1f} ms | {1000 * read_seconds:.0f} ms | {1000 * (ready - read_seconds):.0f} ms | {peak:.0f} MiB |")


if __name__ == "__main__":
    main(*sys.argv[1:])
