#!/usr/bin/env bash
# Checks that the shared library LIBRARY exports the functions of its header, and nothing else: exports.sh LIBRARY
set -euo pipefail
header=$(dirname "$0")/../../apps/c/next_steps_c.h
grep -oE '\bnext_steps_[a-z_]+\(' <(grep -E '^[a-z].*\(' "$header") | tr -d '(' | sort |
  diff - <(nm -D --defined-only "$1" | awk '{print $NF}' | sort)
