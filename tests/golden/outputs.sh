#!/usr/bin/env bash
# What terravo-batch writes, byte by byte. Usage: outputs.sh TERRAVO-BATCH FOLDER-OF-DATA
set -uo pipefail

batch=$(realpath "${1:?usage: outputs.sh TERRAVO-BATCH FOLDER-OF-DATA}")
data=$(realpath "${2:?usage: outputs.sh TERRAVO-BATCH FOLDER-OF-DATA}")
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/../e2e/common.sh"
cd "$base" || exit 1
cp "$data/small.dat" .

draws() { # ARGUMENTS...: without a word
    "$batch" --quiet "$@" >said 2>&1
    check "exit code 0: $*" test $? = 0
    check "not a word: $*" test ! -s said
}
# FILE: as it is kept
as_kept() { check "the bytes of $1" cmp "$1" "$data/small.$(basename "$1")"; }
size_of() { # PNG-FILE: width and height, of its header
    od -An -tu4 --endian=big -j16 -N8 "$1" | xargs
}

draws small.dat --levels 4 --out deep/all # folders that are to be made
ln -s deep/all all
for file in livelli.txt point_qrw.txt triangles.qrz levels.qrz; do as_kept all/$file; done
check "two pictures beside them" test "$(ls all | wc -l)" = 6
check "the size of the map" test "$(size_of all/map.png)" = "1200 900"
check "the size of the view" test "$(size_of all/view3d.png)" = "1200 900"
finish "every output"

left_out() { # PICTURES ARGUMENTS...: told, one sentence each; the exit code is 5
    local picture
    "$batch" --quiet small.dat "${@:2}" >said 2>sentences
    check "exit code 5: $*" test $? = 5
    for picture in $1; do
        check "a sentence: $picture" grep -q "^terravo-batch: $picture is not drawn: small.dat: " sentences
    done
    check "no other sentence: $(cat sentences)" test "$(wc -l <sentences)" = "$(wc -w <<<"$1")"
}
for mode in lines areas; do
    left_out "few/map.png few/v.svg" --levels 4 --size 20x20 --mode $mode --out few --view3d few/v.svg
    for file in livelli.txt point_qrw.txt triangles.qrz levels.qrz; do as_kept few/$file; done
done
check "nothing else" test "$(ls few | wc -l)" = 4
finish "the other outputs beside pictures that are too small"

mkdir areas
draws small.dat --levels 4 --mode areas --out areas
as_kept areas/livelli.txt
as_kept areas/levels.qrz
check "another map" not cmp -s areas/map.png all/map.png
finish "the same segments beside a map of areas"

sed '1,/^ 6 /d' all/point_qrw.txt >back.dat
check "six points" test "$(wc -l <back.dat)" = 6
draws back.dat --mesh mesh
check "the same triangles" cmp mesh all/point_qrw.txt
finish "its own points come back"

map() { # NAME OPTIONS...
    draws small.dat --map "$1.png" "${@:2}"
}
map english
map again --language en
map italian --language it
map comma --decimal-comma
check "the same map every time" cmp again.png english.png
check "another language" not cmp -s italian.png english.png
check "another separator" not cmp -s comma.png english.png
finish "maps"

# A system with no font, one with another font of the same names, one that changes all fonts.
fonts() { # NAME RULES
    echo "<fontconfig><dir>/usr/share/fonts</dir><cachedir>$base/cache</cachedir>$2</fontconfig>" |
        sed "${3-}" >"$1.conf"
}
names='<edit name="family" mode="assign"><string>Liberation Sans</string>
    <string>Liberation Mono</string><string>MS Sans Serif</string><string>Courier New</string></edit>'
fonts no '' 's/<dir>.*<.dir>//'
fonts same '<match target="scan"><test name="family"><string>Liberation Serif</string></test>'"$names</match>"
fonts changed '<match target="pattern"><edit name="family" mode="prepend" binding="strong">
    <string>Liberation Serif</string></edit></match>
    <match target="font"><edit name="autohint"><bool>true</bool></edit></match>'
written_with() { # NAME: pictures and a file that measures texts
    draws small.dat --labels --map "$1.png" --view3d "$1-3d.png"
    draws small.dat --labels --map "$1.svg"
    draws small.dat --labels --map "$1.pdf"
    pdftoppm -r 50 "$1.pdf" >"$1.ppm"
}
written_with usual
for kind in no same changed; do
    FONTCONFIG_FILE=$PWD/$kind.conf written_with $kind
    for file in .png -3d.png .svg .ppm; do
        check "the same $file with $kind fonts" cmp $kind$file usual$file
    done
done
finish "the same bytes whatever fonts are installed"

printf '%s\n' 2,1,5 1,2,3 1,1,4 3,2,9 2,2,6 3,1,7 >grid.dat # in no particular order
while read -ra options; do
    draws grid.dat --view3d view.png "${options[@]}"
    check "a picture of its own: ${options[*]}" not grep -q "$(md5sum <view.png)" seen
    md5sum <view.png >>seen
done <<'END'

--view3d-kind points
--surface
--theta 40
--bw
--alfa 100
--rayx 0.3
END
check "seven pictures" test "$(wc -l <seen)" = 7
finish "every kind of axonometric picture"

# Millimetres of the page are pixels.
colour_at() { # X Y: red, green, blue
    pdftoppm -r 25.4 -x "$1" -y "$2" -W 1 -H 1 m.pdf | tail -c 3 | od -An -tu1 | xargs
}
draws small.dat --mode areas --paper a3 --map m.pdf --view3d v.PDF --background black
check "a PDF by an ending in capitals" test "$(head -c 5 v.PDF)" = %PDF-
check "the title as text" grep -q 'Contour map : small.dat' <(pdftotext m.pdf -)
check "the title of the document" grep -q 'Contour map : small.dat' <(pdfinfo m.pdf)
check "an A3 page across" grep -q '1191 x 842' <(pdfinfo m.pdf)
check "white margins" test "$(colour_at 210 5)" = "255 255 255"
check "black to the edge of the picture" test "$(colour_at 210 285)" = "0 0 0"
finish "pages"

# A field of 80 by 80 m: 160 mm at 1:500.
printf '%s\n' 1000,2000,1 1080,2000,11 1080,2080,21 1000,2080,6 1050,2050,9 >field.dat
sheet() { # FILE OPTIONS...
    draws field.dat --scale 500 --title 'A<B>' --interval 2 --sheet "$@"
}
sheet s.svg --portrait --layers contours,hull,grid,title-block
check "millimetres" grep -q '<svg .*width="210mm" height="297mm" viewBox="0 0 210 297">' s.svg
for layer in paper grid frame hull contours index-contours labels title-block; do
    check "the group $layer" test "$(grep -c "<g id=\"$layer\"" s.svg)" = 1
done
check "no group of what is switched off" test "$(grep -c '<g id="[lps][echou]' s.svg)" = 0
check "levels" test "$(grep -o 'data-level="[^"]*"' s.svg | sort -u | wc -l)" = 10
hull=$(grep -A1 '<g id="hull"' s.svg | grep -o ' d="[^"]*"' | tr 'dMLZ="' '\n')
for axis in 1 2; do
    side=$(awk -v n=$axis 'NF == 2 { print $n }' <<<"$hull" | sort -g | awk 'NR == 1 { a = $1 } END { print $1 - a }')
    check "1:500 along axis $axis, not $side mm" awk -v d="$side" 'BEGIN { exit !(d > 159.9 && d < 160.1) }'
done
sheet s.pdf --paper 500x300 --landscape
check "the page in points" grep -q '1417 x 850' <(pdfinfo s.pdf)
check "the title of the block" grep -q 'A<B>' <(pdftotext s.pdf -)
check "two fonts, embedded" test "$(pdffonts s.pdf | grep -c ' yes no  yes ')" = 2
sheet s.png --portrait --dpi 100
check "pixels of a sheet" test "$(size_of s.png)" = "827 1169"
for again in {1..6}; do # the order of the fonts in a PDF is no matter of chance
    sheet again.pdf --paper 500x300 --landscape
    check "the same PDF, $again" cmp again.pdf s.pdf
done
sheet again.svg --portrait --layers contours,hull,grid,title-block
check "the same SVG" cmp again.svg s.svg
finish "sheets"

# Names, codes and missing heights; a pit of a point among its neighbours.
{
    echo 'Point;Est;Nord;Quota;Codice'
    for i in {1..100}; do
        echo "P$i;$((500000 + 10 * (i % 10))),5;$((4500000 + 10 * (i / 10)));$((100 + i % 10 + i / 10));t"
    done
    echo 'P101;500031,5;4500033;12;x'
    echo 'P102;500041,5;4500043;-9999;x'
} >named.csv
"$batch" --check json --quiet named.csv >named.json
flat=$(tr -d ' \n' <named.json)
check "how it was read" grep -q '"input":{"bad_records":0,"blank_lines":0,"columns":"penzd","comment_lines":0,"decimal":"comma","encoding":"utf-8","header_lines":1,"records":102,"separator":"semicolon","void_heights":1}' <<<"$flat"
check "the pit" grep -q '"kind":"height-outlier","lines":\[102\],"names":\["P101"\],"points":\[101\]' <<<"$flat"
check "the missing height" grep -q '"kind":"void-height","lines":\[103\]' <<<"$flat"
check "as text" grep -q '^2 findings$' <("$batch" --check text named.csv)
finish "reading and survey check"

check "help" grep -q -- --perimeter <("$batch" --help)
check "version" grep -q '^terravo-batch [0-9]' <("$batch" --version)
finish "help and version"
"$batch" small.dat --summary json --interval 1 --dxf d.dxf --landxml s.xml --geojson g.json --csv p.csv \
    --contours-csv c.csv --triangles-csv t.csv --obj o.obj --ply o.ply --stl o.stl >summary 2>said
check "exit code 0" test $? = 0
check "six of them are verified" test "$(grep -c '"verified": true' summary)" = 6
check "a sentence on the missing coordinate system" grep -q 'names no coordinate system' summary
"$batch" --quiet p.csv --mesh again
check "the table of points comes back" cmp again "$data/small.point_qrw.txt"
draws small.dat --dxf r12.dxf --dxf-version r12 --no-verify
check "R12" grep -q AC1009 r12.dxf
finish "files for CAD and GIS"

# Without the times, which differ, and the name of the file, which may.
smoothing_in() { tr -d ' \n' <"$1" | grep -o '"smoothing":{[^}]*}'; }
smooth=(small.dat --interval 2 --smooth 0.3 --flatten 0.05 --decimals 4 --content contours,bands)
"$batch" "${smooth[@]}" --verify-smooth --summary json --dxf smooth.dxf --contours-csv smooth.csv --geojson g.json \
    --landxml smooth.xml >summary 2>said
check "exit code 0" test $? = 0
as_kept smooth.csv
check "all four are verified" test "$(tr -d ' \n' <summary | grep -o '"format":[^}]*"verified":true' | wc -l)" = 4
check "the figures: $(smoothing_in summary)" grep -q '"fraction":0.3,"verified":true,"vertices":15,"worst_height_error":0\.[0-9]*,"worst_interval_part":0\.[0-2]' <(smoothing_in summary)
check "the vertices of the drawing" cmp <(awk -F, 'NR > 1 { print $3 + 0, $4 + 0 }' smooth.csv) \
    <(awk '/ENTITIES/ { on = 1 } NR % 2 { code = $1 + 0 } NR % 2 == 0 && on && code == 10 { x = $1 + 0 }
        NR % 2 == 0 && on && code == 20 { print x, $1 + 0 }' smooth.dxf)
draws small.dat --interval 2 --content contours --landxml straight.xml --decimals 4
check "LandXML keeps its lines" cmp smooth.xml straight.xml
"$batch" "${smooth[@]}" --decimals 3 --fewer-vertices --verify-smooth --contours-csv few.csv >said
check "a remark on few decimals" grep -q '^Rounding to 3 decimals could make smooth lines touch' said
check "fewer vertices" test "$(wc -l <few.csv)" -lt "$(wc -l <smooth.csv)"
draws small.dat --interval 2 --contours-csv straight.csv
draws small.dat --interval 2 --smooth 0 --contours-csv off.csv
check "0 is off" cmp straight.csv off.csv

sheet_of() { # SMOOTH: how the sheet of a project is smoothed
    "$batch" p.terravo --summary json --sheet p.svg --smooth "$1" >summary 2>said
    check "exit code 0: $(cat said)" test $? = 0
}
cat >p.terravo <<'END'
{ "terravo_project": 1, "exact_triangulation": false, "first_points_rule": false,
  "source": { "path": "small.dat", "relative_path": "small.dat", "bytes": BYTES, "points": 6,
    "read_as": { "reader": "free list", "encoding": "utf-8" } },
  "surface": { "excluded": [], "heights": [], "breaklines": [], "boundary": [], "holes": [], "held_sides": [],
    "crossing_tolerance": 0.05, "earlier_line_wins": false },
  "sheets": [ { "theme": "black" } ] }
END
sed -i "s/BYTES/$(wc -c <small.dat)/" p.terravo
sheet_of 0.4
check "another fraction" grep -q '"fraction":0.4,' <(smoothing_in summary)
sheet_of 0
check "switched off" test -z "$(smoothing_in summary)"
finish "smooth contours"

for y in 0 10 20 30 40; do
    for x in 0 10 20 30 40; do echo "$x $y $((x * y / 40 + x % 7))"; done
done >site.txt
printf 'WALL\n-3 15 9\n22 16 9\n45 12 9\n\nBRIDGE\n12 3 40\n14 33 40\n' >breaklines.txt
printf '2 2\n38 2\n38 22\n22 22\n22 38\n2 38\n' >boundary.txt
printf '5 25\n9 25\n9 29\n5 29\n5 25\n' >holes.txt
shape=(site.txt --breaklines breaklines.txt --boundary boundary.txt --holes holes.txt --verify-surface)
"$batch" "${shape[@]}" --check json --mesh site.mesh --dxf f.dxf --landxml f.xml --geojson f.json --csv f.csv \
    --content contours,bands,triangles,points,hull,boundary,breaklines >summary 2>said
check "exit code 0" test $? = 0
flat=$(tr -d ' \n' <summary)
check "the surface" grep -q '"surface":{"constrained_edges":[1-9][0-9]*,"crossings":[1-9][0-9]*,"hidden_triangles":[1-9][0-9]*,"plan_area":1024,.*"rings":2,"verified":true' <<<"$flat"
check "four of them are verified" test "$(grep -c '"verified": true' summary)" = 5
check "the bridge is left out" grep -q '"kind":"crossing","lines":\[\],"names":\[\],"points":\[\],"severity":"error"' <<<"$flat"
check "the summary says so too" grep -q '"remarks":\[[^]]*isleftout:itcrosses' <<<"$flat"
check "an open ring is told of" grep -q 'boundary.txt, line 1: the line was open' summary
check "the mesh is the visible part" test "$(sed -n 's/.*"visible_triangles": \([0-9]*\).*/\1/p' summary)" = "$(head -n 1 site.mesh | tr -cd 0-9)"
check "only points of the survey" test "$(wc -l <f.csv)" = 26
printf '\357\273\277\r\n13\r\n14\r\n' >out.txt
for list in 13,14 out.txt; do
    "$batch" --summary json site.txt --exclude $list >summary
    check "left out: $list" grep -q '"points": 23' summary
done
check "a proposal" grep -q '^The longest side is 30.0, three times 10.0, ' <("$batch" site.txt --max-side auto)
finish "breaklines, rings and points left out"

end
