"""Writes the finished answer of each request on standard input, as `next-steps batch` does."""
import json
import sys

import next_steps

for line in sys.stdin:
    request = json.loads(line)
    print(next_steps.finish_text(request.pop("response"), request.pop("tool"), **request))
