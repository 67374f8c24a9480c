# SPDX-License-Identifier: MIT
# The curves of a soak run: gnuplot -e "folder='...'" soak/curves.gnuplot
set terminal pngcairo size 1200,1400 font 'DejaVu Sans,9'
set output folder.'/curves.png'
samples = folder.'/samples.tsv'
set datafile separator tab
set offsets graph 0, graph 0, graph 0.05, graph 0 # or a constant would lie on the frame
set multiplot layout 5,2
set xlabel 'minutes'
do for [column in 'ends changes memory_kB descriptors threads children x_resources semaphores temporary_files'] {
    set title column noenhanced
    set yrange [0:*]
    if (column eq 'memory_kB') { set yrange [*:*] }
    plot samples using (column('seconds')/60):(column(column)) with lines notitle, \
        0 with dots notitle # what cannot be counted on a system has no line of its own
}
unset multiplot
