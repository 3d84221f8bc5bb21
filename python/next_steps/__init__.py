"""Finishes the answers of a code-index tool server: drops their null fields and appends the next steps.

A server sends `finish_text(answer, tool)`. One that has an index, a catalogue or not all tools makes a Session.
"""
from ._library import NextStepsError
from ._session import Session

__all__ = ["NextStepsError", "Session", "explain", "finish", "finish_text"]

_shared = Session()
finish = _shared.finish
finish_text = _shared.finish_text
explain = _shared.explain
