#!/usr/bin/env bash
# Builds LinkDeck and starts the application. Without a display it runs on the offscreen
# platform; pass application options after the script's name (for example --quit-after 3000).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh >&2
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
fi
exec "${BUILD_DIR:-build}/bin/linkdeck" "$@"
