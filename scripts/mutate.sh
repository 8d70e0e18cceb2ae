#!/usr/bin/env bash
# Measures what the suite catches: plants one fault at a time in src/, builds, and runs the
# tests until one fails. Options are those of scripts/mutation/run.py (--help); the table is
# left in build/mutation/table.md.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-deps.sh
exec python3 scripts/mutation/run.py "$@"
