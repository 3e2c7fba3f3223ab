#!/usr/bin/env bash
# Remakes the pictures of the guide and of README.md from the screens as they are now: docs/pictures.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset release >/dev/null
cmake --build --preset release --target screenshots
shots=$(mktemp -d)
trap 'rm -r "$shots"' EXIT
build/release/bin/screenshots "$shots"

# picture in docs/pictures, screen that it shows
while read -r picture shot; do
    cp "$shots/$shot-1280x720.png" "docs/pictures/$picture.png"
done <<'PICTURES'
setup setup-optFWD
menu menu
checklist prerequisites
collection collection-two-drops
drop drop-captured
fwd-data fwd-data-read
plot plot
results results-optLoadCell
certificate certificate
monthly monthly-file
monthly-results monthly-results-pair
PICTURES
