#!/usr/bin/env bash
# The demonstration: a lighting layout of one room computed by the layout module.
set -euo pipefail
kelaz=${1:-kelaz}

echo "== Lamps in a 3000 x 2000 room: 2 rows of 3, 500 from the row ends, 400 from the walls =="
"$kelaz" calc rect --corners "0,0 3000,0 3000,2000 0,2000" --rows 2 --per-row 3 \
    --margin-along 500 --margin-across 400

echo "== A rotated room (30 degrees), 3 rows of 4 sprinklers =="
"$kelaz" calc rect --corners "0,0 3464.1016,2000 2464.1016,3732.0508 -1000,1732.0508" \
    --rows 3 --per-row 4 --margin-along 600 --margin-across 500

echo "== A margin that does not fit is refused =="
"$kelaz" calc rect --corners "0,0 3000,0 3000,1800 0,1800" --rows 2 --per-row 3 \
    --margin-along 1000 || echo "(refused, exit status $?)"
