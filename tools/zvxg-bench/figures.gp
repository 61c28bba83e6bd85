# Draws the pictures of docs/figures.md from the CSV files there, as figures.py has them:
#   gnuplot -c figures.gp DIRECTORY

if (ARGC != 1) {
  print "usage: gnuplot -c figures.gp DIRECTORY"
  exit status 2
}
directory = ARG1
file(name) = directory."/".name.".csv"
speed = file("speed")
many = file("many")
accuracy = file("accuracy")
# What was measured of the library and its variants.
runs = "speed"
do for [run in "speed_v3 speed_v4"] {
  if (int(system("test -e ".file(run)." && echo 1 || echo 0"))) { runs = runs." ".run }
}
variant(run) = run eq "speed" ? "base" : run[7:8]

set datafile separator ","
set datafile columnheaders
set style line 1 linecolor "#0072b2" linewidth 1.6 pointtype 7 pointsize 0.35
set style line 2 linecolor "#d55e00" linewidth 1.6 pointtype 7 pointsize 0.35
set style line 3 linecolor "#009e73" linewidth 1.6 pointtype 7 pointsize 0.35
set style line 4 linecolor "#cc79a7" linewidth 1.6 pointtype 7 pointsize 0.35
set style line 5 linecolor "#606060" linewidth 1.6 pointtype 7 pointsize 0.35
set style line 9 linecolor "#808080" linewidth 1.2 dashtype 2  # parity
set border 3 linecolor "#404040"
set tics nomirror out
set grid linecolor "#e4e4e4" linetype 1
set lmargin 9
set rmargin 2

precision(bits) = bits eq "32" ? "single precision" : "double precision"
of(family, bits, name) = strcol("family") eq family && strcol("bits") eq bits ? column(name) : NaN
# In units of half the distance from 1 to the next number.
roundoffs(family, bits) = of(family, bits, "rms") / (bits eq "32" ? 2.0**-24 : 2.0**-53)

array names = ["complex DFT", "real DFT (CCS)", "Hartley"]
array forwards = ["complex-forward", "real-forward-ccs", "hartley"]

set terminal svg size 1080,680 dynamic font "sans-serif,13" background "white"
set output directory."/speed.svg"
set multiplot layout 2,3 title "time of FFTW / time of zvxg, forward, by length" font ",16"
set xrange [0:66]
set xtics 16
set logscale y 2
set yrange [0.5:16]
set key outside top center horizontal reverse Left samplen 2
do for [bits in "32 64"] {
  do for [i = 1:3] {
    set title names[i].", ".precision(bits)
    set xlabel bits eq "64" ? "length" : ""
    set ylabel i == 1 ? "ratio" : ""
    plot 1 with lines linestyle 9 notitle, \
         for [k = 1:words(runs)] file(word(runs, k)) \
           using "n":(of(forwards[i], bits, "ratio")) with lines linestyle k \
           title variant(word(runs, k))
  }
}
unset multiplot

set terminal svg size 1080,380 dynamic font "sans-serif,13" background "white"
set output directory."/speed_powers.svg"
set multiplot layout 1,2 title "time of the peer / time of zvxg, by length" font ",16"
set logscale x 2
set xtics 4
set format x "2^{%L}"
set xlabel "length"
set ylabel "ratio"
set xrange [1.6:2**13.4]
set yrange [0.25:40]
set ytics (0.25, 0.5, 1, 2, 4, 8, 16, 32)
set title "Walsh-Hadamard, against a plain loop of 256-bit code"
plot 1 with lines linestyle 9 notitle, \
     speed using "n":(of("wht", "32", "ratio")) with linespoints linestyle 1 title "single", \
     speed using "n":(of("wht", "64", "ratio")) with linespoints linestyle 2 title "double"
set xrange [1.6:2**22.6]
set xtics 16
set title "DCT-IV, against FFTW and (dotted) FFTW of half length"
plot 1 with lines linestyle 9 notitle, \
     speed using "n":(of("dct4", "32", "ratio")) with linespoints linestyle 1 title "single", \
     speed using "n":(of("dct4", "64", "ratio")) with linespoints linestyle 2 title "double", \
     speed using "n":(of("dct4-half", "32", "ratio")) with linespoints linestyle 1 \
       pointtype 6 dashtype 3 notitle, \
     speed using "n":(of("dct4-half", "64", "ratio")) with linespoints linestyle 2 \
       pointtype 6 dashtype 3 notitle
unset multiplot

set terminal svg size 1080,680 dynamic font "sans-serif,13" background "white"
set output directory."/many.svg"
set multiplot layout 2,3 title "time of FFTW (lines) and of single calls (dots) / time of a batch of zvxg, by length" font ",16"
unset logscale x
set format x "%g"
set xtics 16
set xrange [0:66]
set yrange [0.25:32]
set ytics (0.25, 0.5, 1, 2, 4, 8, 16, 32)
do for [bits in "32 64"] {
  do for [i = 1:3] {
    set title names[i].", ".precision(bits)
    set xlabel bits eq "64" ? "length" : ""
    set ylabel i == 1 ? "ratio" : ""
    plot 1 with lines linestyle 9 notitle, \
         many using "n":(of("many-rows-L1-".forwards[i], bits, "second_ratio")) with lines \
           linestyle 1 title "element-major", \
         many using "n":(of("many-rows-L1-".forwards[i], bits, "first_ratio")) with lines \
           linestyle 1 dashtype 3 notitle, \
         many using "n":(of("many-contiguous-L1-".forwards[i], bits, "second_ratio")) with lines \
           linestyle 2 title "contiguous", \
         many using "n":(of("many-contiguous-L1-".forwards[i], bits, "first_ratio")) with lines \
           linestyle 2 dashtype 3 notitle
  }
}
unset multiplot

set terminal svg size 1080,680 dynamic font "sans-serif,13" background "white"
set output directory."/accuracy.svg"
set multiplot layout 2,2 columnsfirst \
  title "relative error (rms), in units of roundoff" font ",16"
do for [bits in "32 64"] {
  unset logscale
  set format x "%g"
  set ytics auto
  set xtics 16
  set xrange [0:66]
  set yrange [0:3.5]
  set xlabel "length"
  set ylabel "error / ".(bits eq "32" ? "2^{-24}" : "2^{-53}")
  set title precision(bits)
  plot accuracy using "n":(roundoffs("complex-forward", bits)) with lines linestyle 1 \
         title "complex, forward", \
       accuracy using "n":(roundoffs("complex-inverse", bits)) with lines linestyle 2 \
         title "complex, inverse", \
       accuracy using "n":(roundoffs("real-forward-ccs", bits)) with lines linestyle 3 \
         title "real to CCS", \
       accuracy using "n":(roundoffs("real-inverse-ccs", bits)) with lines linestyle 4 \
         title "CCS to real", \
       accuracy using "n":(roundoffs("hartley", bits)) with lines linestyle 5 \
         title "Hartley"
  set logscale x 2
  set xtics 4
  set format x "2^{%L}"
  set xrange [1.6:2**16.4]
  unset title
  plot accuracy using "n":(roundoffs("dct4", bits)) with linespoints linestyle 1 title "DCT-IV", \
       accuracy using "n":(roundoffs("wht", bits)) with linespoints linestyle 2 \
         title "Walsh-Hadamard"
}
unset multiplot
unset output
