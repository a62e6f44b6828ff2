#!/usr/bin/env bash
# What terravo-batch refuses: the exit code, one sentence on standard error, and nothing written.
# Usage: refusals.sh TERRAVO-BATCH
set -uo pipefail

batch=$(realpath "${1:?usage: refusals.sh TERRAVO-BATCH}")
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/../e2e/common.sh"
cd "$base" || exit 1
mkdir out
printf '%s\n' 1,1,0 9,1,5 5,7,9 >points

refused() { # EXIT-CODE PART-OF-THE-SENTENCE ARGUMENTS...
    local code call="${*:3}"
    "$batch" "${@:3}" >said 2>sentence
    code=$?
    check "exit code $1, not $code: $call" test "$code" = "$1"
    check "a sentence with '$2', not '$(cat sentence)': $call" grep -q "^terravo-batch: .*$2" sentence
    check "one line: $call" test "$(wc -l <sentence)" = 1
    check "nothing written: $call" test -z "$(ls out)"
}

printf '1,2,3\n4,five,6\n' >bad
printf '1 2 3\n4 5 6\n7\n' >seven
printf '1,1,1,0\n2,9,1,5\n3,5,7,9\n' >numbered
printf '  0\nSECTION\n' >drawing
refused 1 'bad, line 2, field 2: "five" is not a number\. --bad-records skip' bad --out out
refused 1 'seven, line 3: 1 field where the other records have 3\.' seven --out out
refused 1 'seven, line 3: the file ends where a number is expected\.$' seven --out out --columns free
refused 1 'may be pxyz, pyxz, .*free\. --columns says which\.$' numbered --out out
refused 1 'GDAL does not know this format' drawing --out out
printf '1,2,3\n4,5,N/A\n7,8,"no, data"\n' >gaps
refused 1 "a point has three\. --void 'N/A' takes that for a missing height\." gaps --out out
cat points points points gaps >late
refused 1 "\"N/A\" is not a number\. --void 'N/A' takes that for a missing height\." late --out out
refused 1 "\. --void '\"no, data\"' takes that" late --out out --void N/A
refused 3 '1 point; three are needed' gaps --out out --void 'N/A,"no, data"'
printf 'ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 1\n1,5 2\n3 4\n' >grid
refused 1 '"1,5" is not a number\. --decimal comma' grid --out out
for option in columns=xyz separator=comma skip=3 bad-records=skip; do
    refused 2 "grid of heights (ESRI ASCII grid), for which --${option%=*} means" grid --out out --$option
done
refused 1 'none: No such file or directory\.$' none --out out
refused 1 'out: Is a directory\.$' out --out out
if [[ $EUID != 0 ]]; then
    install -m 000 points locked
    refused 1 'locked: Permission denied\.$' locked --out out
fi
finish "bad point files"

while IFS='|' read -r cause numbers; do
    tr ' ' '\n' <<<"$numbers" >few
    refused 3 "$cause" few --out out
done <<'END'
1 point; three are needed|1,2,3
2 points; three are needed|1,2,3 4,5,6
4 points: all of them lie on one line|1,1,3 2,2,6 5,5,9 7,7,1
3 points: all of them lie on one line|0,0,1 0,0,2 9,1,3
END
: >few
refused 3 "holds no points" few --out out
printf '1 1 1e200\n2 3 2e200\n4 1 1e200\n' >blanked
refused 3 'none of its 3 points has a height' blanked --out out
finish "points without triangles"

refused 2 ''
refused 2 '' points points
while read -ra options; do
    refused 2 '' points "${options[@]}"
done <<'END'
--nonsense
--levels 1
--levels 0
--levels -3
--levels 1000000000
--levels 1e9
--levels ten
--interval 0
--interval=-5
--interval five
--interval 1e999
--interval nan
--interval 1,5
--interval 1 --base inf
--base 5
--levels 5 --interval 1
--interval 1 --level-list 2
--level-list 1,two
--level-list ,
--size 0x0
--size 100000x100000
--size 300
--mode dots
--summary xml
--language xx
--map out/map.gif
--view3d out/v.gif
--map out/m.pdf --paper B7
--map out/m.svg --background grey
--view3d out/v.png --surface
--view3d-kind cubes
--columns e,n
--separator dots
--decimal dot
--skip -1
--encoding ebcdic
--bad-records keep
--check xml
--tolerance near
--tolerance 1
--check text --tolerance near
--max-side 0
--max-side 1e13
--exclude ,
--columns free --skip 1
--columns free --separator comma
--columns free --decimal point
--columns free --void x
--columns free --encoding utf-8
--columns free --bad-records skip
--void "x
--theta 360
--csv out/a.csv --csv out/b.csv
--alfa steep
--rayx 1001
--segments points
--segments out/a --mesh out/a
END
refused 2 '' points --map ''
refused 2 'points: No such level lies between the lowest point, 0, and the highest, 9\.$' points --interval 10 --out out
refused 2 'between the lowest point, 0, and the highest, 9' points --level-list 0,9,12 --out out
refused 2 'more than 100000 levels' points --interval 1e-300 --out out
refused 2 'name of a folder' points --out ''
check "the points are as they were" test "$(cat points)" = $'1,1,0\n9,1,5\n5,7,9'
finish "wrong calls"

for output in missing/map.png /proc/map.png /proc/map.svg /dev/full; do
    refused 4 "$output" points --map $output
done
refused 4 'points cannot be made: ' points --out points/out
refused 1 '' none --out missing/out
check "no folder of a failed run" test ! -e missing
finish "outputs that cannot be written"

printf '%s\n' 1e200,1e200,0 -1e200,2e200,1 3e200,-1e200,2 1e199,5e199,3 >huge
refused 5 '' huge --out out
refused 5 narrow points --size 20x20 --map out/m.png
finish "numeric failures"

refused 2 'drawing units for vector files' points --sheet out/s.pdf --dxf out/d.dxf --text-height 2
refused 2 'smooth is for contours on a sheet, a terrain or in' points --smooth 0.25 --out out
refused 2 'smooth is for contours on a sheet, a terrain or in' points --smooth 0.25 --landxml out/s.xml --content contours
refused 2 'flatten is for smooth contours in vector' points --smooth 0.25 --flatten 1 --sheet out/s.svg
for option in smoothness=1 smooth-goal=plain smooth-limit=1 flatten=1 fewer-vertices verify-smooth; do
    refused 2 "${option%=*} is for smooth contours" points --dxf out/d.dxf --smooth 0 --$option
done
while read -ra options; do
    refused 2 "${options[0]} takes " points --dxf out/d.dxf --smooth 0.25 "--${options[0]}=${options[1]}"
done <<'END'
smooth 0.5
smooth -0.1
smooth much
smooth nan
smoothness 1.5
smooth-goal curved
smooth-limit 0
smooth-limit inf
flatten 0
flatten fine
END
refused 2 'dxf-3d is for a DXF file' points --geojson out/g.json --dxf-3d
refused 2 'units is for vector files' points --units foot --out out
refused 2 'stl can hold none of "labels,hull", only: triangles' points --stl out/s.stl --content labels,hull
refused 2 'content takes contours, index, ' points --dxf out/d.dxf --content lines
refused 2 'crs takes EPSG: and a number' points --dxf out/d.dxf --crs 25832
refused 2 'decimals takes a whole number from 0 to 12' points --csv out/p.csv --decimals 13
refused 2 'named twice' points --csv out/p.csv --dxf out/p.csv
refused 2 'contours.dbf is named twice' points --shp out --dxf out/contours.dbf
mkdir -p shapes
cp points shapes/points.shp
refused 2 'points.shp is named twice' shapes/points.shp --shp shapes
refused 4 '' points --csv missing/p.csv
finish "files for CAD and GIS"

printf '0 0\n1 0\n\n5 5\n6 5\n' >lines
while IFS='|' read -r cause options; do
    # shellcheck disable=SC2086
    refused 2 "$cause" points $options --out out
done <<'END'
volume takes a height within 1e12, not "high"|--volume high
volume takes a height within 1e12, not "nan"|--volume nan
height-at takes a place x,y, not "1"|--height-at 1
height-at takes a place x,y, not "1,2,3"|--height-at 1,2,3
section takes a file of lines, or x1,y1|--section 1,2,3
section takes a file of lines, or x1,y1|--section 1,2
section takes a file of lines, or x1,y1|--section 0,0,1e300,1
section takes a file of lines, or x1,y1|--section 0,0,nan,b
section takes places that are apart|--section 1,2,1,2
there would be more than 10000|--section 1,2,3,4 --cross-sections 1e-5,1
cross-sections takes two lengths from 1e-9|--section 1,2,3,4 --cross-sections 1
cross-sections takes two lengths from 1e-9|--section 1,2,3,4 --cross-sections 1,0
cross-sections needs one --section|--cross-sections 1,1
cross-sections needs one --section|--section 1,2,3,4 --section 5,6,7,8 --cross-sections 1,1
within is for areas and volumes|--within points --height-at 1,1
section-csv needs a --section|--section-csv out/s.csv
section-picture needs a --section|--section-picture out/s.svg
section-picture takes a PDF, SVG or PNG|--section 1,2,3,4 --section-picture out/s.gif
exaggeration is for --section-picture|--section 1,2,3,4 --exaggeration 5
exaggeration takes a factor from|--section 1,2,3,4 --section-picture out/s.svg --exaggeration 0
difference-sheet needs a second survey|--difference-sheet out/d.pdf
terrain is written as PNG|--terrain out/t.jpg
view means nothing without|--view 1,2
colour means nothing without|--colour slope
view takes an azimuth|--terrain out/t.png --view 20
view takes an azimuth|--terrain out/t.png --view 20,95
colour takes height, slope, aspect|--terrain out/t.png --colour red
exaggeration takes a factor from|--terrain out/t.png --exaggeration 0
difference needs a second survey|--difference out/d.dxf
difference takes a file whose name ends in dxf, xml|--volume-to points --difference out/d.dat
stl can hold none of "labels"|--volume-to points --difference out/d.stl --content labels
named twice|--areas --within lines --section 1,2,3,4 --section-csv lines
END
refused 2 'lines: --cross-sections needs one line .* has 2' points --section lines --cross-sections 1,1 --out out
refused 1 'numbered: .* may be pxyz, .*A project of it' points --volume-to numbered --out out
refused 1 'none: No such file' points --volume-to none --out out
refused 1 'none: No such file' points --areas --within none --out out
refused 1 'none: No such file' points --section none --out out
refused 1 'missing.terravo: ' points --volume-to missing.terravo --out out
printf '1,1,0\n2,2,5\n' >two
refused 3 'two: .*three are needed' points --volume-to two --out out
refused 4 '' points --section 1,2,3,4 --section-csv missing/s.csv
export __EGL_VENDOR_LIBRARY_DIRS=$base __EGL_VENDOR_LIBRARY_FILENAMES=
refused 5 'no OpenGL 3.3 here, .* graphics driver; .*libgl1-mesa-dri' points --terrain out/t.png
unset __EGL_VENDOR_LIBRARY_DIRS __EGL_VENDOR_LIBRARY_FILENAMES
finish "measuring"

awk 'BEGIN { for (i = 0; i < 300000; ++i)
    print 1 + i * 7919 % 100003 "," 1 + i * 104729 % 99991 "," int(i * 7919 % 100003 / 1000) }' >many
# A shell has the commands that it runs in the background ignore this signal.
env --default-signal=INT "$batch" many --progress --levels 300 --out out >said 2>progress &
comes_true "the work begins" test -s progress
kill -INT $!
wait $!
check "exit code 130" test $? = 130
check "the sentence" grep -q 'stopped; no file has been written' progress
check "nothing written" test -z "$(ls out)"
finish "an interrupted run"
end
