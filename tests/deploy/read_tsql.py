#!/usr/bin/python3
"""Reads T-SQL scripts with sqlfluff's parser and prints what it cannot read: FILE:LINE: text.

All scripts in one process and its fork. The parser matches the same words again at each level of
nesting; what it has found once is kept here for the rest of the script, which takes a third of
the time (minutes, where lists are long).
"""
import gc
import multiprocessing
import sys
import types

MATCHER = 'sqlfluff.core.parser.match_wrapper'
found = {}


def match_wrapper(v_level=3):
    def wrap(match):
        def remembering(self, segments, parse_context):
            if not segments:
                return match(self, segments, parse_context=parse_context)
            key = (id(self), id(match), len(segments), id(segments[0]), id(segments[-1]),
                   parse_context.recurse)
            known = found.get(key)
            if known is None or known[0] != segments:
                # The segments are kept too, so that no other ones get their place in memory.
                known = found[key] = (segments, match(self, segments, parse_context=parse_context))
            return known[1]
        return remembering
    return wrap


# In place before the parser is loaded, which wraps each of its matchers in it.
sys.modules[MATCHER] = types.ModuleType(MATCHER)
sys.modules[MATCHER].match_wrapper = match_wrapper

from sqlfluff.core import FluffConfig, Linter  # noqa: E402
from sqlfluff.core.parser.segments.base import BaseSegment  # noqa: E402
from sqlfluff.core.parser.segments.raw import RawSegment  # noqa: E402

# Made millions of times for a log that nobody reads.
BaseSegment.__repr__ = RawSegment.__repr__ = lambda self: ''
linter = Linter(config=FluffConfig(overrides={'dialect': 'tsql'}))


def faults(path):
    found.clear()
    with open(path, encoding='utf-8') as script:
        read = linter.parse_string(script.read(), fname=path)
    return [f'{path}:{fault.line_no}: {fault.desc()}' for fault in read.violations]


if __name__ == '__main__':
    gc.disable()
    with multiprocessing.Pool(2) as pool:
        lines = [line for part in pool.imap(faults, sys.argv[1:], 4) for line in part]
    print('\n'.join(lines))
    sys.exit(1 if lines else 0)
