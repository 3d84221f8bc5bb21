#!/usr/bin/env python3
"""Measures a call of finish_text beside its parts, for answers of 1 KB and 33 KB: bench.py PROGRAM

The limit is the time of json.dumps for the same answer, that of a request in a long run of `next-steps batch`, and
20 us. The last column is the same call through the pipe of `next-steps batch`. Each time is the best mean of rounds.
"""
import json
import random
import subprocess
import sys
import tempfile
import time

import next_steps

WORDS = "parse index symbol file reader writer token stream buffer cache node tree value list".split()


def answer(hits, code_words):
    choose = random.Random(1)
    name = lambda: "_".join(choose.choices(WORDS, k=3))
    return {"query": "parse", "results": [
        {"fqn": f"pkg.{name()}.{name()}", "kind": "function", "file": f"src/{name()}.py", "line": choose.randint(1, 4000),
         "score": round(choose.random(), 4), "doc": None, "code": " ".join(choose.choices(WORDS, k=code_words))}
        for _ in range(hits)]}


def best_seconds(call, count, rounds=15):
    best = float("inf")
    for _ in range(rounds):
        start = time.perf_counter()
        for _ in range(count):
            call()
        best = min(best, (time.perf_counter() - start) / count)
    return best


def seconds_by_throughput(program, line, count):
    def seconds(lines):
        with tempfile.TemporaryFile() as file:
            file.write(line * lines)
            file.seek(0)
            start = time.perf_counter()
            subprocess.run([program, "batch"], stdin=file, stdout=subprocess.DEVNULL, check=True)
            return time.perf_counter() - start
    # Without the start and the end of the process.
    return min((seconds(count + 1) - seconds(1)) / count for _ in range(5))


def through_pipe(process, made):
    process.stdin.write(json.dumps({"id": 0, "tool": "search", "response": made}) + "\n")
    process.stdin.flush()
    return process.stdout.readline()


def main(program):
    print(f"{'bytes':>8}{'json.dumps':>12}{'batch':>8}{'limit':>8}{'finish_text':>13}{'pipe':>8}  in us")
    for hits, code_words, count in (6, 0, 2000), (60, 60, 200):
        made = answer(hits, code_words)
        line = json.dumps({"tool": "search", "response": made}, separators=(",", ":")).encode() + b"\n"
        with subprocess.Popen([program, "batch"], encoding="utf-8", stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE) as process:
            dumps, finish, pipe = (1e6 * best_seconds(call, count) for call in (
                lambda: json.dumps(made), lambda: next_steps.finish_text(made, "search"),
                lambda: through_pipe(process, made)))
            process.stdin.close()
        batch = 1e6 * seconds_by_throughput(program, line, 10 * count)
        print(f"{len(line):8}{dumps:12.1f}{batch:8.1f}{dumps + batch + 20:8.1f}{finish:13.1f}{pipe:8.1f}")


if __name__ == "__main__":
    main(*sys.argv[1:])
