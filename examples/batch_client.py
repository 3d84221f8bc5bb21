#!/usr/bin/env python3
"""Uses `next-steps batch` as a co-process: batch_client.py PROGRAM INDEX"""
import json
import subprocess
import sys


class Batch:
    """A running `next-steps batch`, for one thread at a time."""

    def __init__(self, program, *arguments):
        self.requests = 0
        self.process = subprocess.Popen([program, "batch", *arguments], encoding="utf-8",
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def ask(self, **request):
        """Returns the answer. Raises ValueError for a wrong request, EOFError when the program ended."""
        self.requests += 1  # the id comes first, so that the reply has it even if the line cannot be read
        line = json.dumps({"id": self.requests, **request, "id": self.requests}, allow_nan=False)
        try:
            self.process.stdin.write(line + "\n")
            self.process.stdin.flush()
        except BrokenPipeError:
            pass  # the reply is then missing, too
        line = self.process.stdout.readline()
        if not line:
            raise EOFError(f"the program ended with status {self.process.wait()}")
        reply = json.loads(line)
        if reply.get("id") != self.requests:
            self.process.kill()
            raise RuntimeError(f"a reply has the id {reply.get('id')}, not {self.requests}")
        if "error" in reply:
            raise ValueError(reply["error"]["message"])
        return reply["answer"]

    def close(self):
        """Ends the program. Returns its exit status, which is 1 when a request was wrong."""
        try:
            self.process.stdin.close()
        except BrokenPipeError:
            pass  # the program ended before
        return self.process.wait()


def main(program, index):
    batch = Batch(program, "--index", index, "--serves", "search,symbol:detail")
    hit = {"fqn": "pkg.mod.parse", "kind": "function", "doc": None}
    try:
        batch.ask(tool="search", response={"results": [{hit["fqn"]}]})
    except TypeError:
        pass  # not sent: a set is no JSON
    print("answer:", json.dumps(batch.ask(tool="search", response={"results": [hit]})))
    try:
        batch.ask(tool="search", response={"results": ["\ud83d"]})
    except ValueError as error:
        print("error:", error)
    print("miss:", json.dumps(batch.ask(suggest="symbol", wanted="Repositry")["next_steps"]))
    try:
        batch.ask(tool="search", response=[hit])
    except ValueError as error:
        print("error:", error)
    batch.process.terminate()
    try:
        batch.ask(tool="search", response={})
    except EOFError as error:
        print("end:", error)
    batch.close()


if __name__ == "__main__":
    main(*sys.argv[1:])
