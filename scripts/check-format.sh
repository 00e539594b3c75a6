#!/usr/bin/env bash
# Fails, naming the files, when a C++ file differs from what the project's .clang-format makes
# of it. Run clang-format -i on them to mend.
set -euo pipefail
cd "$(dirname "$0")/.."
files=$(git ls-files -- '*.cpp' '*.h')
unformatted=()
for file in $files; do
    clang-format --dry-run -Werror "$file" >/dev/null 2>&1 || unformatted+=("$file")
done
if [ ${#unformatted[@]} -gt 0 ]; then
    echo "These files are not formatted as .clang-format asks (run clang-format -i on them):" >&2
    printf '  %s\n' "${unformatted[@]}" >&2
    exit 1
fi
