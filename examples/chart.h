// The picture of a spectrogram: the levels in a colour map, axes of time and frequency, a colour
// bar and a title.
#pragma once

#include <string>
#include <vector>

#include "picture.h"

// Where the levels are drawn. Time 0 is at its left edge and frequency 0 at its bottom edge.
constexpr Area kPlot = {90, 56, 1200, 480};
constexpr int kPictureWidth = 1420;
constexpr int kPictureHeight = 606;

struct Chart {
  std::string title;
  std::string subtitle;
  double seconds;  // length of the time axis
  double topHz;    // upper end of the frequency axis, the frequency of the last bin
  double floorDb;  // level of the darkest colour; the brightest is 0 dB
  // One column per pixel of kPlot.width, with the levels in dB of equally spaced bins from 0 Hz to
  // topHz.
  std::vector<std::vector<double>> columns;
};

Picture drawChart(const Chart& chart);
