import next_steps

session = next_steps.Session(index="examples/index/models.json", serves=["search", "symbol:detail"])
print(session.finish_text({"results": []}, "search", action="symbols", arguments={"query": "parse"}))
missed = session.suggest_symbols("Repositry.indexedRevision", action="detail")
print(missed["did_you_mean"][0]["fqn"])

tracker = next_steps.Session(catalogue="examples/catalogues/issues.json")
print(tracker.finish_text({"issues": [{"number": 3}]}, "issues"))
