"""Compares `next-steps batch` with the same job by others: batch.py PROGRAM NLOHMANN

Each reads the same file of requests and writes its answers to /dev/null. nlohmann's JSON
finishes them, too; CPython's and Node's json only read and print them. The best of five
runs counts, start and end of the process included. The last line is the mean time of a
call of `next-steps batch` that is written and answered alone.
"""
import json
import random
import subprocess
import sys
import tempfile
import time

PYTHON = """
import json, sys
for line in sys.stdin:
    print(json.dumps(json.loads(line)["response"], separators=(",", ":"), ensure_ascii=False))
"""
NODE = """
let unread = "";
process.stdin.setEncoding("utf8").on("data", (text) => {
  const lines = (unread + text).split("\\n");
  unread = lines.pop();
  let out = "";
  for (const line of lines) out += JSON.stringify(JSON.parse(line).response) + "\\n";
  process.stdout.write(out);
});
"""
WORDS = "parse index symbol file reader writer token stream buffer cache node tree value list".split()


def name(choose):
    return "_".join(choose.choice(WORDS) for _ in range(3))


def hit(choose, with_code):
    made = {"fqn": f"pkg.{name(choose)}.{name(choose)}", "kind": "function", "file": f"src/{name(choose)}.py",
            "line": choose.randint(1, 4000), "score": round(choose.random(), 4), "doc": None}
    if with_code:
        text = " ".join(choose.choice(WORDS) for _ in range(60))
        made["code"] = f'def {name(choose)}(self):\n    """{text}"""\n    return self.{name(choose)}("x")\n'
    return made


def requests(hits, with_code, count):
    choose = random.Random(1)
    for _ in range(count):
        response = {"query": "parse", "results": [hit(choose, with_code) for _ in range(hits)]}
        yield json.dumps({"response": response, "tool": "search"}, separators=(",", ":"))


def best_seconds(command, path):
    best = float("inf")
    for _ in range(5):
        with open(path, encoding="utf-8") as lines:
            start = time.perf_counter()
            subprocess.run(command, stdin=lines, stdout=subprocess.DEVNULL, check=True)
            best = min(best, time.perf_counter() - start)
    return best


def seconds_alone(command, lines):
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        start = time.perf_counter()
        for line in lines:
            process.stdin.write(line)
            process.stdin.flush()
            process.stdout.readline()
        return (time.perf_counter() - start) / len(lines)


def main(program, nlohmann):
    contenders = {"next-steps batch": [program, "batch"], "nlohmann": [nlohmann],
                  "CPython": [sys.executable, "-c", PYTHON], "Node": ["node", "-e", NODE]}
    print(f"{'':18}{'1 KB':>20}{'30 KB':>20}")
    sizes = [(6, False, 20000), (50, True, 1000)]
    measured = {each: [] for each in contenders}
    alone = []
    for hits, with_code, count in sizes:
        lines = [line + "\n" for line in requests(hits, with_code, count)]
        alone.append(seconds_alone([program, "batch"], [line.encode() for line in lines]))
        with tempfile.NamedTemporaryFile("w", encoding="utf-8") as file:
            file.writelines(lines)
            file.flush()
            for each, command in contenders.items():
                measured[each].append(file.tell() / 1e6 / best_seconds(command, file.name))
    for each, speeds in measured.items():
        ours = measured["next-steps batch"]
        print(f"{each:18}" + "".join(f"{speed:8.0f} MB/s {own / speed:4.1f}x" for own, speed in zip(ours, speeds)))
    print(f"{'one at a time':18}" + "".join(f"{1e6 * seconds:11.0f} us      " for seconds in alone))


if __name__ == "__main__":
    main(*sys.argv[1:])
