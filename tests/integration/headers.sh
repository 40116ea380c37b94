#!/usr/bin/env bash
# Every public header by itself: C++11 and C++17, both compilers, no warning, and no GLib on the include path.
set -euo pipefail
source=$1
shift
for header in "$source"/include/*.h; do
  for compiler in g++ clang++; do
    for standard in c++11 c++17; do
      echo "#include <$(basename "$header")>" |
        "$compiler" -std=$standard -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I"$source/include" "$@" -x c++ -
    done
  done
done
