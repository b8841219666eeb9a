#!/usr/bin/env bash
# Renders the SVGs of src/resources/pictures into the icons and strips that the
# program's resources include, and into the pictures of the help page.
#
# A developer's step, for when a picture has changed: the results are committed,
# so a build needs none of this. The same librsvg gives the same bytes.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v rsvg-convert >/dev/null || {
    echo "rsvg-convert is missing (on Debian the package librsvg2-bin)" >&2
    exit 1
}
python3 scripts/render_pictures.py src/resources/pictures src/resources/rendered help/zKR
