# Draws one SVG per family from the CSV of zvxg-bench speed:  gnuplot -c plot.gp RESULTS.csv DIRECTORY
# The upper row shows the time per transform, the lower row the ratio of the peer's time to ours, with a
# column for each precision.

if (ARGC != 2) {
  print "usage: gnuplot -c plot.gp RESULTS.csv DIRECTORY"
  exit status 2
}
csv = ARG1
rows = "grep -v '^#' '".csv."' | tail -n +2"
families = system(rows." | awk -F, '$4 != \"\" { print $1 }' | sort -u")  # that have a peer

set datafile separator ","
set datafile columnheaders
set style line 1 linecolor "#0072b2" linewidth 2 pointtype 7 pointsize 0.4  # ours
set style line 2 linecolor "#d55e00" linewidth 2 pointtype 7 pointsize 0.4  # the peer
set style line 3 linecolor "#808080" linewidth 1.2 dashtype 2               # bound, parity
set border 3 linecolor "#404040"
set tics nomirror out
set grid linecolor "#e0e0e0" linetype 1
set key bottom right reverse Left
set lmargin 10
set rmargin 2

do for [family in families] {
  ofFamily = rows." | grep '^".family.",' | cut -d, -f"
  peer = system(ofFamily."4 | head -1 | cut -d' ' -f1")  # without its variant
  precisions = system(ofFamily."2 | sort -u")
  set terminal svg size 600 * words(precisions),760 dynamic font "sans-serif,13" background "white"
  set output ARG2."/".family.".svg"
  set multiplot layout 2,words(precisions) columnsfirst title family font ",16"
  do for [bits in precisions] {
    pick(name) = strcol("family") eq family && strcol("bits") eq bits ? column(name) : NaN
    unset logscale
    set xrange [*:*]
    set yrange [*:*]
    stats csv using (pick("n")) nooutput name "n"
    stats csv using (pick("ours_ns")) nooutput name "ours"
    stats csv using (pick("peer_ns")) nooutput name "peer"
    if (n_max > 128) { set logscale x 2 }
    set xrange [n_min - 0.5 : n_max + 0.5]

    set title bits eq "32" ? "single precision" : "double precision"
    set xlabel ""
    set ylabel "ns per transform"
    set logscale y
    set yrange [0.6 * ours_min : 1.4 * (ours_max > peer_max ? ours_max : peer_max)]
    set ytics ()
    do for [k = 0:9] { set ytics add (1 * 10.0**k, 2 * 10.0**k, 5 * 10.0**k) }
    plot csv using "n":(pick("peer_ns")) with linespoints linestyle 2 title peer, \
         csv using "n":(pick("ours_ns")) with linespoints linestyle 1 title "zvxg", \
         csv using "n":(pick("bound_ns")) with lines linestyle 3 title "bound by ports"

    unset title
    set xlabel "length"
    set ylabel "time of ".peer." / time of zvxg"
    unset logscale y
    set ytics auto
    set yrange [0:*]
    plot csv using "n":(pick("ratio")) with linespoints linestyle 1 notitle, \
         1 with lines linestyle 3 notitle
  }
  unset multiplot
  unset output
}
