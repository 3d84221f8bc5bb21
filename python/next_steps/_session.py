"""Requests to the library, and the answers in its replies."""
from __future__ import annotations

import json
import os
import weakref
from collections.abc import Iterable
from functools import partial
from typing import Any

from . import _library
from ._library import NextStepsError

_ANSWER = b'{"id":0,"answer":'


def _text_of(value: object, errors: str) -> str:
    """The text of a value that JSON has no form for. Bytes are text in UTF-8."""
    if isinstance(value, (bytes, bytearray, memoryview)):
        return bytes(value).decode("utf-8", errors)
    return str(value)


def _encoded(value: object, lossy: bool = False) -> bytes:
    # Ill-formed bytes become lone surrogates, which are escaped: the library reports or replaces them. Text in ASCII,
    # as code is, is written faster with escapes than without.
    default = partial(_text_of, errors="replace" if lossy else "surrogateescape")
    return json.dumps(value, separators=(",", ":"), default=default).encode()


def _listed(serves: Iterable[str] | None) -> object:
    return serves if serves is None or isinstance(serves, str) else list(serves)


def _file(name: object) -> object:
    return os.fspath(name) if isinstance(name, os.PathLike) else name


def _error(reply: bytes, request: bytes) -> NextStepsError:
    error = json.loads(reply)["error"]
    at = error["column"] - 1
    near = request[max(0, at - 30) : at + 20].decode("utf-8", "replace")
    return NextStepsError(f"{error['message']} (byte {at + 1} of the request, near {near!r})")


class Session:
    """Answers requests; any number of threads may use one.

    index: the file of an index of Universal Ctags, for misses. It is read again when the file is replaced.
    catalogue: the file of the server's own catalogue.
    serves: the tools and actions that the server has: ["search", "symbol:detail"]. None stands for all.

    Raises NextStepsError for a wrong file or list, as all calls do for a wrong request. The answers may hold any
    value, under keys that json.dumps takes: one that JSON has no form for becomes its str, and bytes are text in
    UTF-8. What is no UTF-8, and lone surrogates, are replaced by U+FFFD with lossy=True; otherwise they are errors.
    NaN and infinities are errors.
    """

    def __init__(self, *, index: str | os.PathLike[str] | None = None,
                 catalogue: str | os.PathLike[str] | None = None, serves: Iterable[str] | None = None) -> None:
        self._handle = _library.open_session(
            _encoded({"index": _file(index), "catalogue": _file(catalogue), "serves": _listed(serves)}))
        weakref.finalize(self, _library.close, self._handle).atexit = False  # other threads may still use it

    def finish(self, answer: dict[str, Any], tool: str, *, action: str | None = None,
               arguments: dict[str, Any] | None = None, freshness: dict[str, Any] | None = None,
               serves: Iterable[str] | None = None, lossy: bool = False) -> dict[str, Any]:
        """Returns the finished answer of `tool`, as a new object. `arguments` are those of the call."""
        return json.loads(self.finish_text(answer, tool, action=action, arguments=arguments, freshness=freshness,
                                           serves=serves, lossy=lossy))

    def finish_text(self, answer: dict[str, Any], tool: str, *, action: str | None = None,
                    arguments: dict[str, Any] | None = None, freshness: dict[str, Any] | None = None,
                    serves: Iterable[str] | None = None, lossy: bool = False) -> str:
        """Returns the finished answer as the compact JSON text that is sent. Faster than finish."""
        return self._ask({"id": 0, "tool": tool, "action": action, "arguments": arguments, "freshness": freshness,
                          "serves": _listed(serves), "lossy": lossy, "response": answer}).decode()

    def explain(self, answer: dict[str, Any], tool: str, *, action: str | None = None,
                arguments: dict[str, Any] | None = None, freshness: dict[str, Any] | None = None,
                serves: Iterable[str] | None = None, lossy: bool = False) -> dict[str, Any]:
        """Returns why the answer gets its steps, as `next-steps explain --json` prints it."""
        return json.loads(self._ask(
            {"id": 0, "tool": tool, "action": action, "arguments": arguments, "freshness": freshness,
             "serves": _listed(serves), "lossy": lossy, "explain": True, "response": answer}))

    def suggest_symbols(self, wanted: str, *, action: str | None = None, answer: dict[str, Any] | None = None,
                        arguments: dict[str, Any] | None = None, freshness: dict[str, Any] | None = None,
                        serves: Iterable[str] | None = None, lossy: bool = False) -> dict[str, Any]:
        """Returns the answer to a call for the symbol `wanted`, which the index does not hold: the nearest ones are
        added to `answer`. An index that holds it is an error."""
        return self._suggest("symbol", wanted, action, answer, arguments, freshness, serves, lossy)

    def suggest_paths(self, wanted: str, *, action: str | None = None, answer: dict[str, Any] | None = None,
                      arguments: dict[str, Any] | None = None, freshness: dict[str, Any] | None = None,
                      serves: Iterable[str] | None = None, lossy: bool = False) -> dict[str, Any]:
        """The same for the path of a file."""
        return self._suggest("path", wanted, action, answer, arguments, freshness, serves, lossy)

    def _suggest(self, kind, wanted, action, answer, arguments, freshness, serves, lossy) -> dict[str, Any]:
        return json.loads(self._ask(
            {"id": 0, "suggest": kind, "wanted": wanted, "action": action, "arguments": arguments,
             "freshness": freshness, "serves": _listed(serves), "lossy": lossy, "response": answer}))

    def _ask(self, request: dict[str, Any]) -> bytes:
        """Returns the answer in the reply as text. The request has the id 0 as its first member."""
        encoded = _encoded(request, request["lossy"])
        reply = _library.reply_to(self._handle, encoded)
        if not reply.startswith(_ANSWER):
            raise _error(reply, encoded)
        return reply[len(_ANSWER) : -1]
