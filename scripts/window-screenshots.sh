#!/usr/bin/env bash
# Pictures of the real window drawn on an X server (Xvfb), for a person to look at: the list
# after start-up (with a scrapbook named in Chinese), an e-book build under way and finished,
# the property page and the about box. Needs xvfb and fonts-noto-cjk.
#
#   scripts/window-screenshots.sh [BUILD_FOLDER] [OUTPUT_FOLDER]
set -euo pipefail
BUILD=${1:-build}
OUT=$(realpath -m "${2:-$BUILD/screenshots}")
mkdir -p "$OUT"
QMR_SCREENSHOTS=$OUT QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x800x24" \
    "$BUILD/tests/ui_tests" --gtest_filter='Screenshots.*'
ls "$OUT"
