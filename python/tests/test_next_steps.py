import datetime
import decimal
import json
import os
import pathlib
import resource
import sys
import tempfile
import threading
import unittest

import next_steps

ROOT = pathlib.Path(__file__).parents[2]
INDEX = ROOT / "examples/index/models.json"


class FinishTest(unittest.TestCase):
    def test_finishes_an_answer(self):
        answer = {"results": [{"fqn": "a.b", "doc": None}], "note": "caf\u00e9 \U0001F600"}
        text = next_steps.finish_text(answer, "search", serves={"symbol:detail"})
        self.assertEqual(text, '{"results":[{"fqn":"a.b"}],"note":"caf\u00e9 \U0001F600","next_steps":[{"tool":"symbol",'
                               '"args":{"action":"detail","fqn":"a.b"},"reason":"Details of the best hit"}]}')
        self.assertEqual(next_steps.finish(answer, "search", serves=["symbol:detail"]), json.loads(text))
        self.assertEqual(next_steps.finish({"results": []}, "search", action="symbols", arguments={"query": "q"},
                                           freshness={"stale": True}),
                         {"results": [], "freshness": {"stale": True}, "next_steps": [
                             {"tool": "search", "args": {"action": "semantic", "query": "q"}, "reason": "No hits: search by meaning"}]})

    def test_explains_an_answer(self):
        self.assertEqual(next_steps.explain({}, "status")["rows"]["usual"], "status")

    def test_writes_values_that_json_has_no_form_for(self):
        for value, written in [
                (datetime.date(2026, 1, 2), "2026-01-02"), (decimal.Decimal("1.50"), "1.50"), (pathlib.Path("a"), "a"),
                ({1}, "{1}"), (b"caf\xc3\xa9", "caf\u00e9"), (bytearray(b"a"), "a"), (memoryview(b"a"), "a"),
                (10**307, 10**307), (-(2**70), -(2**70)), (1e22, 1e22), ("\ud83d\ude00", "\U0001F600"), ((1,), [1])]:
            self.assertEqual(next_steps.finish({"a": value}, "x"), {"a": written})

    def test_replaces_what_is_no_utf8_if_asked(self):
        for value, replaced, near in [("\udcff", "\ufffd", r"\udcff"), (b"x\xe2\x82", "x\ufffd", r"x\udce2\udc82"),
                                      (b"\xff\xff", "\ufffd\ufffd", r"\udcff\udcff")]:
            self.assertEqual(next_steps.finish({"a": value}, "x", lossy=True), {"a": replaced})
            with self.assertRaisesRegex(next_steps.NextStepsError, "^The surrogate pair in string is invalid. ") as caught:
                next_steps.finish({"a": value}, "x")
            self.assertIn(repr(near)[1:-1], str(caught.exception))

    def test_reports_wrong_requests(self):
        for answer, options, message in [
                ([], {}, r'"response" must be an object, not a list \(byte 96 of the request, near .*"response":\[\]'),
                ({"a": float("nan")}, {}, r'Invalid value\. .*"a":NaN'),
                ({"a": float("-inf")}, {}, r'Invalid value\. .*"a":-Infinity'),
                ({"a": 10**400}, {}, r"Number too big to be stored in double\. "),
                ({}, {"serves": "search"}, '"serves" must be a list or null, not a string'),
                ({}, {"serves": ["a:"]}, '"a:" is neither TOOL nor TOOL:ACTION'),
                ({}, {"lossy": 1}, '"lossy" must be a boolean or null, not an integer'),
                ({}, {"arguments": []}, '"arguments" must be an object or null, not a list')]:
            with self.assertRaisesRegex(next_steps.NextStepsError, message):
                next_steps.finish(answer, "x", **options)
        with self.assertRaisesRegex(next_steps.NextStepsError, '"tool" must be a string, not null'):
            next_steps.finish_text({}, None)
        with self.assertRaisesRegex(TypeError, "keys must be str"):
            next_steps.finish_text({(): 1}, "x")
        with self.assertRaisesRegex(ValueError, "Circular"):
            circular = {}
            next_steps.finish_text(circular.setdefault("a", circular), "x")


class SessionTest(unittest.TestCase):
    def test_answers_misses(self):
        entry = next(each for each in os.scandir(INDEX.parent) if each.name == INDEX.name)  # no str, no Path
        session = next_steps.Session(index=entry, serves=("symbol",))
        answer = session.suggest_symbols("Symbl", action="callers", answer={"note": None, "kind": "class"})
        self.assertEqual(answer["kind"], "class")
        self.assertEqual(answer["did_you_mean"][0]["fqn"], "vantrex::models::Symbol")
        self.assertEqual(answer["next_steps"][0]["args"]["action"], "callers")
        self.assertNotIn("next_steps", session.suggest_paths("models/respository.h"))
        with self.assertRaisesRegex(next_steps.NextStepsError, '"wanted" is no miss: the index holds this symbol'):
            session.suggest_symbols("Symbol")
        with self.assertRaisesRegex(next_steps.NextStepsError, '"suggest" needs an index'):
            next_steps.Session().suggest_paths("a")

    def test_takes_a_catalogue(self):
        session = next_steps.Session(catalogue=ROOT / "examples/catalogues/issues.json")
        self.assertIn("next_steps", session.finish({"number": 7}, "issue"))

    def test_reports_wrong_options(self):
        for options, message in [({"index": "missing"}, "missing: No such file"), ({"index": 1}, "options:1:2: "),
                                 ({"index": INDEX, "catalogue": INDEX}, "models.json:2:1: "),
                                 ({"serves": [1]}, '"serves" must be a list of strings')]:
            with self.assertRaisesRegex(next_steps.NextStepsError, message):
                next_steps.Session(**options)

    def test_is_shared_by_threads(self):
        with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
            file.write(INDEX.read_text())
            file.flush()
            session = next_steps.Session(index=file.name)
            expected, failures = session.suggest_symbols("Symbl"), []

            def run():
                for count in range(200):
                    if count % 50 == 0:
                        os.utime(file.name)
                    if session.suggest_symbols("Symbl") != expected:
                        failures.append(count)
            threads = [threading.Thread(target=run) for _ in range(4)]
            for thread in threads:
                thread.start()
            for thread in threads:
                thread.join()
            self.assertEqual(failures, [])

    def test_needs_no_more_memory_for_more_calls(self):
        answer = {"a": "x" * 1000}

        def run(count):
            for _ in range(count):
                next_steps.finish_text(answer, "x")
                next_steps.Session(serves=["a"])
                try:
                    next_steps.finish_text({"a": float("nan")}, "x")
                except next_steps.NextStepsError:
                    pass
            return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
        self.assertLess(run(20000) - run(2000), 1000)  # KB; 20 MB if the replies alone were kept


if __name__ == "__main__":
    print(sys.version.split()[0], next_steps.__file__)
    unittest.main()
