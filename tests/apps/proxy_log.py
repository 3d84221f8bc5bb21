"""A client that follows steps at random, and its server: proxy_log.py PROGRAM SEED checks the report on the log."""
import collections, json, random, subprocess, sys, tempfile

CATALOGUE = {"next_steps": {
    "find": [{"tool": "open", "takes": "fqn", "reason": "Open"}, {"tool": "list", "args": {"action": "all"}, "reason": "All"}],
    "list": [{"tool": "find", "reason": "Find"}, {"tool": "find", "reason": "Find"}, {"tool": "gone", "reason": "Gone"},
             *({"tool": "list", "args": {"action": str(i)}, "reason": "List"} for i in range(3))],
    "dear": [{"tool": "open", "takes": "fqn", "reason": "Open"}, {"tool": "find", "reason": "x" * 400}],
    "open": []}}
# The candidate steps of each tool: the call of its row, and what becomes of it.
STEPS = {
    "find": [("open", "kept"), ("list:all", "kept")],
    "list": [("find", "kept"), ("find", "repeat"), ("gone", "not served"), ("list:0", "kept"), ("list:1", "kept"), ("list:2", "over the cap")],
    "dear": [("open", "kept"), ("find", "no room")],
    "open": [], "plain": None}


def told(answer):
    """The text of an answer in its result; of every other answer, it says something else."""
    return json.dumps(answer, indent=2) if len(answer["fqn"]) % 2 else "done"


def server():
    for line in sys.stdin:
        request = json.loads(line)
        result = {"tools": [{"name": name} for name in ("find", "open", "list")]}
        if request["method"] == "tools/call":
            name = request["params"]["arguments"].get("fqn", "a")
            answer = {"fqn": name, "none": None, "text": "é\n" * (len(name) * 9)}
            result = {"content": [{"type": "text", "text": told(answer)}], "structuredContent": answer}
        print(json.dumps({"id": request["id"], "result": result}, indent=None), flush=True)


def client(program, seed):
    chance = random.Random(seed)
    rows = collections.defaultdict(lambda: {"offered": 0, "kept": 0, "followed": 0, "after": []})
    offers = collections.deque(maxlen=100)
    total, outcomes = collections.Counter(), collections.Counter()
    with tempfile.TemporaryDirectory() as place:
        with open(place + "/catalogue", "w") as catalogue:
            json.dump(CATALOGUE, catalogue)
        with open(place + "/log", "w") as log:
            log.write('{"followed":{"row":"usual old","tool":"open"},"after":3}\n')
        rows[("usual old", "open")].update(followed=1, after=[3])
        command = [program, "proxy", "--catalogue", catalogue.name, "--log", place + "/log"]
        proxy = subprocess.Popen([*command, "--", sys.executable, __file__, "--server"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)

        def ask(message):
            proxy.stdin.write(json.dumps(message).encode() + b"\n")
            proxy.stdin.flush()
            return json.loads(proxy.stdout.readline())["result"]

        ask({"id": 0, "method": "tools/list"})
        for number in range(1, 1500):
            tool = chance.choices(list(STEPS), [3, 1, 2, 3, 6])[0]
            arguments = {"fqn": chance.choice("abcdefgh") * chance.randrange(1, 30)} if tool != "plain" else {}
            if chance.random() < 0.3:
                arguments["action"] = chance.choice(["all", "0"])
            for answer in reversed(offers):
                step = next((s for s in answer if s["tool"] == tool and s["args"].items() <= arguments.items()), None)
                if step:
                    answer.remove(step)
                    rows[step["row"]]["followed"] += 1
                    rows[step["row"]]["after"].append(number - step["number"])
                    break
            answer = ask({"id": number, "method": "tools/call", "params": {"name": tool, "arguments": arguments}})["structuredContent"]
            if STEPS[tool] is None:
                continue
            size = lambda value: len(json.dumps(value, ensure_ascii=False, separators=(",", ":")).encode())
            bare = {"fqn": answer["fqn"], "text": answer["text"]}
            before = {"fqn": answer["fqn"], "none": None, "text": answer["text"]}
            bytes_before = len(told(before)) if len(answer["fqn"]) % 2 else len(json.dumps(before))
            total.update(answers=1, without_steps="next_steps" not in answer, bytes_before=bytes_before, bytes_after=size(answer),
                         null_bytes=size(before) - size(bare), space_bytes=bytes_before - size(before), hint_bytes=size(answer) - size(bare))
            offers.append([])
            for call, outcome in STEPS[tool]:
                row = ("usual " + tool, call)
                rows[row]["offered"] += 1
                rows[row]["kept"] += outcome == "kept"
                outcomes[(*row, outcome)] += 1
                called, _, action = call.partition(":")
                args = {"fqn": answer["fqn"]} if called == "open" else {"action": action} if action else {}
                if outcome == "kept":
                    offers[-1].append({"row": row, "tool": called, "args": args, "number": number})
        proxy.stdin.close()
        assert proxy.wait() == 0
        report = json.loads(subprocess.run([program, "report", "--json", place + "/log"], check=True, stdout=subprocess.PIPE).stdout)
        with open(place + "/log") as log:
            for line in map(json.loads, log):
                for step in line.get("steps", []):
                    outcomes[(step["row"], ":".join([step["tool"], *filter(None, [step.get("action")])]), step["outcome"])] -= 1
                    assert ("args" in step) == (step["outcome"] == "kept"), step
    assert not any(outcomes.values()), outcomes
    for row, counts in rows.items():
        after = sorted(counts["after"])
        counts["after"] = after[(len(after) - 1) // 2] if after else None
        counts["never_followed"] = counts["kept"] >= 100 and not after
    assert [row["followed"] > 20 for row in report["rows"]].count(True) >= 3, "too few steps were followed"
    found = {(row.pop("row"), row.pop("call")): row for row in report.pop("rows")}
    assert found == rows, (found, dict(rows))
    assert report == total, (report, total)


server() if sys.argv[1] == "--server" else client(*sys.argv[1:])
