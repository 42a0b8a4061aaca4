#!/usr/bin/env bash
# Builds orvante_setup if need be and runs it in the caller's working directory:
#
#   scripts/run.sh ARGUMENTS…
#
# The exit status is the program's own; 125 means that the program could not be built.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
failure_status=125

"$root/scripts/install_dependencies.sh" --run --quiet || exit "$failure_status"
build release "under a minute" orvante_setup
exec "$root/build/release/app/orvante_setup" "$@"
