#!/usr/bin/env bash
# The demonstration: layouts computed by the layout module, a plant-room drawing written, listed
# and exported as DXF, PNG, SVG and PDF, and a drafting session scripted at kelaz's command line
# (examples/drafting.kls) on that drawing: arcs drawn, erased and undone, ceiling lamps laid out
# in rows, along an arc and on rings and placed at a picked elevation in the default project,
# the lines that meet at a point listed, then leads with an arc, a main lead, a water riser split
# at each floor, a pipe, soft ducts with arcs and a bundle of wires and a conduit traced with
# MULTIPIPE round a corner and an arc. Files go to out/demo/.
set -euo pipefail
kelaz=${1:-kelaz}
out=${2:-out/demo}
mkdir -p "$out"

echo "== Lamps in a 3000 x 2000 room: 2 rows of 3, 500 from the row ends, 400 from the walls =="
"$kelaz" calc rect --corners "0,0 3000,0 3000,2000 0,2000" --rows 2 --per-row 3 \
    --margin-along 500 --margin-across 400

echo "== A rotated room (30 degrees), 3 rows of 4 sprinklers =="
"$kelaz" calc rect --corners "0,0 3464.1016,2000 2464.1016,3732.0508 -1000,1732.0508" \
    --rows 3 --per-row 4 --margin-along 600 --margin-across 500

echo "== A margin that does not fit is refused =="
"$kelaz" calc rect --corners "0,0 3000,0 3000,1800 0,1800" --rows 2 --per-row 3 \
    --margin-along 1000 || echo "(refused, exit status $?)"

echo "== A plant room with one of every entity class, saved, listed and exported =="
"$kelaz" sample --force "$out/plant-room.kdw"
"$kelaz" dump "$out/plant-room.kdw"
for format in dxf png svg pdf; do
    "$kelaz" export "$out/plant-room.kdw" -o "$out/plant-room.$format"
done

echo "== Lamps along a quarter arc of radius 1000, ends kept 500 clear (30 degrees each) =="
"$kelaz" calc arc --center 0,0 --radius 1000 --from 0 --to 90 --count 3 --margin 500

echo "== Sprinklers on rings of 5, 4 and 3 in a quarter annulus from radius 3000 to 1000 =="
"$kelaz" calc sector --points "3000,0 2121.3203435596424,2121.3203435596424 0,3000 1000,0" \
    --rings 3 --count 5 --decrement 1

echo "== A scripted drafting session on the plant room: arcs, then lamps on floor 2, saved =="
"$kelaz" run examples/drafting.kls --drawing "$out/plant-room.kdw" \
    --save "$out/plant-room-drafted.kdw" --dxf "$out/plant-room-drafted.dxf" \
    --png "$out/plant-room-drafted.png"
echo "== The arcs and lamps the session left in the drawing =="
"$kelaz" dump "$out/plant-room-drafted.kdw" | grep -E '"class":"AcDbArc"|吸顶灯'
echo "== and the leads, risers, pipes and soft ducts it drew (those of the sample have handles below 20) =="
"$kelaz" dump "$out/plant-room-drafted.kdw" |
    grep -E '"class":"KelAz(Lead|MainLead|MainPipe|Pipe|SoftLine)"' | grep -vE '"handle":"1?[0-9A-F]"'
