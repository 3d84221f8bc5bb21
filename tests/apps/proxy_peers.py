"""A client and a tool server that send at random: proxy_peers.py PROGRAM SEED checks what the program passes on."""
import json, os, random, subprocess, sys, tempfile, threading, time


def send(chance, descriptor, lines, log):
    """Writes the lines, in pieces of random sizes."""
    with open(log, "ab") as copy:
        copy.write(b"".join(lines))
    data = b"".join(lines)
    while data:
        size = chance.choice([1, 10, 1000, 100_000, 10_000_000])
        if chance.random() < 0.02:
            time.sleep(0.002)
        data = data[os.write(descriptor, data[:size]):]


def receive(chance, descriptor, log, take):
    """Reads lines up to the end, sometimes slowly."""
    rest = b""
    with open(log, "wb") as copy:
        while data := os.read(descriptor, chance.choice([100, 65536])):
            copy.write(data)
            *lines, rest = (rest + data).split(b"\n")
            if chance.random() < 0.02:
                time.sleep(0.002)
            for line in lines:
                take(line)


def text(chance, value):
    return json.dumps(value, ensure_ascii=chance.random() < 0.5, indent=None).encode()


def result(chance, request):
    answer = {"id": request["id"], "none": None, "text": chance.choice(["é\"\\", "\n"]) * chance.choice([1, 40_000])}
    content = [{"type": "text", "text": json.dumps(answer, indent=2)}]
    return {"result": {"structuredContent": answer, "content": content}, "jsonrpc": "2.0", "id": request["id"]}


def server(seed, log):
    chance = random.Random(seed)
    waiting = []

    def take(line):
        message = json.loads(line)
        if message.get("method") == "tools/call":
            waiting.append(message)
        chance.shuffle(waiting)
        lines = [text(chance, result(chance, waiting.pop())) for _ in range(chance.randrange(len(waiting) + 1))]
        others = [b"no JSON {", b"", b"\xff", text(chance, {"method": "tools/call", "id": message["id"], "params": {}}),
                  text(chance, {"id": str(message["id"]), "result": {"structuredContent": {"none": None}}})]
        send(chance, 1, [line + b"\n" for line in lines + chance.sample(others, 2)], log + ".sent")

    receive(chance, 0, log + ".received", take)
    send(chance, 1, [text(chance, result(chance, each)) + b"\n" for each in waiting] + [b'{"half'], log + ".sent")


def expected(line, calls):
    """What becomes of a line from the server."""
    try:
        message = json.loads(line)
    except ValueError:
        return line
    if "method" in message or calls.pop(message["id"], "plain") == "plain":
        return line
    answer = message["result"]["structuredContent"]
    del answer["none"]
    answer["next_steps"] = [{"tool": "other", "args": {}, "reason": "Next"}]
    message["result"]["content"][0]["text"] = json.dumps(answer, separators=(",", ":"), ensure_ascii=False)
    return message


def client(program, seed):
    chance = random.Random(seed)
    with tempfile.TemporaryDirectory() as place:
        log = place + "/server"
        with open(place + "/catalogue", "w") as catalogue:
            json.dump({"next_steps": {"touched": [{"tool": "other", "reason": "Next"}]}}, catalogue)
        options = ["--catalogue", catalogue.name, "--serves", "other"]
        command = [program, "proxy", *options, "--", sys.executable, __file__, "--server", seed, log]
        proxy = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        calls = {i: chance.choice(["touched", "plain"]) for i in range(100)}
        requests = [text(chance, {"id": i, "method": "tools/call", "params": {"name": tool, "arguments": {"blob": "x" * chance.choice([1, 30_000])}}})
                    for i, tool in calls.items()]

        def write():
            send(chance, proxy.stdin.fileno(), [request + b"\n" for request in requests], place + "/client.sent")
            proxy.stdin.close()

        writer = threading.Thread(target=write)
        writer.start()
        receive(random.Random(seed), proxy.stdout.fileno(), place + "/client.received", lambda line: None)
        writer.join()
        assert proxy.wait() == 0, proxy.returncode
        read = lambda name: open(place + name, "rb").read().split(b"\n")
        assert read("/client.sent") == read("/server.received"), "a line from the client"
        sent, received = read("/server.sent"), read("/client.received")
        assert len(sent) == len(received), (len(sent), len(received))
        for before, after in zip(sent, received):
            wanted = expected(before, calls)
            assert after == wanted or json.loads(after) == wanted, (before[:300], after[:300])
        assert "touched" not in calls.values(), "a call without an answer"


server(*sys.argv[2:]) if sys.argv[1] == "--server" else client(*sys.argv[1:])
