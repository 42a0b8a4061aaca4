#!/usr/bin/env bash
# Builds everything with warnings as errors and assertions on, and runs every test:
#
#   scripts/test.sh [CTEST ARGUMENTS…]      e.g. scripts/test.sh -R jsv
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$root/scripts/install_dependencies.sh" --quiet || exit
build dev "about 2 minutes"
exec ctest --test-dir "$root/build/dev" --output-on-failure --timeout 600 -j "$(nproc)" "$@"
