#!/usr/bin/env bash
# Checks the Debian package on this machine: makes it from a Release build, installs it with
# apt-get (which brings its dependencies), starts qmr as the desktop does from the installed
# desktop entry, with a scrapbook's catalogue, and sees that the window took it (it joins
# ScrapBookStore.txt); then removes the package again. Run as root.
#
#   scripts/check-package.sh [RELEASE_BUILD_FOLDER]
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
BUILD=$(realpath -m "${1:-$ROOT/build-release}")
cmake -S "$ROOT" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQMR_BUILD_TESTS=OFF \
    -DQMR_BUILD_BENCH=OFF >/dev/null
cmake --build "$BUILD"
(cd "$BUILD" && cpack -G DEB >/dev/null)
DEB=$(ls "$BUILD"/quillmere_*.deb)
dpkg-deb --field "$DEB" Package Version Depends Recommends
apt-get install -y -qq "$DEB" >/dev/null
trap 'apt-get remove -y -qq quillmere >/dev/null' EXIT
dpkg -L quillmere | grep -E 'bin/|applications/|mime/|scalable/'

# A home of its own, a scrapbook, and an empty store for the window to add it to.
TRY=$(mktemp -d)
mkdir -p "$TRY/home" "$TRY/app" "$TRY/My Books/Cats/data/20080309000001"
echo '<RDF:RDF/>' >"$TRY/My Books/Cats/scrapbook.rdf"
: >"$TRY/app/ScrapBookStore.txt"
ENTRY=/usr/share/applications/quillmere.desktop
EXEC=$(sed -n 's/^Exec=//p' "$ENTRY")
COMMAND=${EXEC//%f/$TRY/My Books/Cats/scrapbook.rdf}
echo "desktop entry runs: $COMMAND"
HOME=$TRY/home QUILLMERE_HOME=$TRY/app QT_QPA_PLATFORM=offscreen bash -c "exec $COMMAND" &
QMR=$!
for _ in $(seq 50); do
    grep -q 'Cats\*' "$TRY/app/ScrapBookStore.txt" && break
    sleep 0.2
done
kill "$QMR"
wait "$QMR" 2>/dev/null || true
grep 'Cats\*' "$TRY/app/ScrapBookStore.txt"
echo "qmr started from its desktop entry and took the catalogue"
rm -rf "$TRY"
