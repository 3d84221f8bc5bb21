"""The functions of the shared library libnext_steps_c, and where it is found."""
from __future__ import annotations

import ctypes
import glob
import os
import shutil
import sys
from collections.abc import Iterator

_NAME = "libnext_steps_c.so.1"


def _places() -> Iterator[str]:
    """Yields where the library may be; a name without a directory is for the system's loader."""
    if os.environ.get("NEXT_STEPS_LIBRARY"):
        yield os.environ["NEXT_STEPS_LIBRARY"]
        return
    beside = os.path.join(os.path.dirname(__file__), _NAME)
    if os.path.exists(beside):
        yield beside
    yield _NAME
    program = shutil.which("next-steps")
    prefixes = [os.path.dirname(os.path.dirname(os.path.realpath(program)))] if program else []
    for prefix in [*prefixes, sys.prefix, "/usr/local"]:
        for folder in ("lib*", "lib/*"):
            yield from glob.glob(os.path.join(glob.escape(prefix), folder, _NAME))


def _loaded() -> ctypes.CDLL:
    errors = []
    for place in _places():
        try:
            return ctypes.CDLL(place)
        except OSError as error:
            errors.append(str(error))
    raise ImportError("libnext_steps_c cannot be loaded; NEXT_STEPS_LIBRARY may name its file: " + "; ".join(errors))


def _function(name: str, result, *arguments):
    function = getattr(_LIBRARY, name)
    function.restype = result
    function.argtypes = arguments
    return function


_LIBRARY = _loaded()
_SIZE = ctypes.c_size_t
_open = _function("next_steps_open", ctypes.c_void_p, ctypes.c_char_p, _SIZE)
close = _function("next_steps_close", None, ctypes.c_void_p)
_reply = _function("next_steps_reply", ctypes.c_void_p, ctypes.c_void_p, ctypes.c_char_p, _SIZE, ctypes.POINTER(_SIZE))
_free = _function("next_steps_free", None, ctypes.c_void_p)
_last_error = _function("next_steps_last_error", ctypes.c_char_p)
_bytes = ctypes.PYFUNCTYPE(ctypes.py_object, ctypes.c_void_p, ctypes.c_ssize_t)(
    ("PyBytes_FromStringAndSize", ctypes.pythonapi))


class NextStepsError(ValueError):
    """A wrong request or wrong options. The text is the library's, and says where the error is."""


def _checked(result: int | None) -> int:
    if not result:
        raise NextStepsError(_last_error().decode("utf-8", "replace"))
    return result


def open_session(options: bytes) -> int:
    return _checked(_open(options, len(options)))


def reply_to(session: int, request: bytes) -> bytes:
    """Returns the reply. Other threads run Python meanwhile."""
    size = _SIZE()
    reply = _checked(_reply(session, request, len(request), ctypes.byref(size)))
    try:
        return _bytes(reply, size.value)
    finally:
        _free(reply)
