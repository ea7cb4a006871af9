# Draws the curves of nanoseconds per set by path: gnuplot -e "folder='DIR'" bench/performance.gp
# reads DIR/performance.dat and writes DIR/performance.svg.

set terminal svg size 860,520 font "Arial,15" background rgb "white"
set output folder."/performance.svg"
set datafile missing "-"

data = folder."/performance.dat"
subjects = words(system("head -n 1 '".data."'")) - 1

set logscale xy
set format x "10^{%T}"
set xrange [700:*]
set xlabel "leaves in the tree"
set ylabel "nanoseconds per set by path"
set grid xtics ytics linecolor rgb "#dddddd"
set border 3 linecolor rgb "#666666"
set tics nomirror
set key outside right center reverse Left spacing 1.4

# Colours that people with any colour vision tell apart, and a shape of point each.
array colours[7] = ["#d55e00", "#0072b2", "#009e73", "#999999", "#cc79a7", "#e69f00", "#56b4e9"]
array points[7] = [7, 5, 9, 13, 11, 4, 6]
plot for [curve = 1:subjects] data using 1:(column(curve + 1)) with linespoints \
    linecolor rgb colours[curve] linewidth (curve == 1 ? 4 : 2) pointtype points[curve] pointsize 0.8 \
    title columnheader(curve + 1)
