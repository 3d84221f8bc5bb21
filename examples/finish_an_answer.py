import next_steps

print(next_steps.finish_text({"results": [{"fqn": "pkg.mod.parse"}]}, "search"))
