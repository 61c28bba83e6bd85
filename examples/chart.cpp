// drawChart.
#include "chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr Color kPaper = {255, 255, 255};
constexpr Color kInk = {30, 30, 36};
constexpr Color kFaintInk = {105, 105, 115};

// Nine equidistant colours of the map magma, by Nathaniel Smith and Stefan van der Walt (CC0).
// Equal steps of level look like equal steps of lightness.
constexpr std::array<Color, 9> kMagma = {{{0x00, 0x00, 0x04},
                                          {0x1d, 0x11, 0x47},
                                          {0x51, 0x12, 0x7c},
                                          {0x82, 0x26, 0x81},
                                          {0xb6, 0x36, 0x79},
                                          {0xe6, 0x51, 0x64},
                                          {0xfb, 0x88, 0x61},
                                          {0xfe, 0xc2, 0x87},
                                          {0xfc, 0xfd, 0xbf}}};

Color magma(double level) {
  const double place = std::clamp(level, 0.0, 1.0) * (kMagma.size() - 1);
  const std::size_t below = std::min<std::size_t>(static_cast<std::size_t>(place), 7);
  const double part = place - static_cast<double>(below);
  const auto mix = [part](int a, int b) {
    return static_cast<std::uint8_t>(std::lround(a + part * (b - a)));
  };
  const Color a = kMagma[below], b = kMagma[below + 1];
  return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue)};
}

// A cubic curve through all bins that rises and falls only where they do, so that no peak appears
// between bins. Its slopes are those of Fritsch and Butland: harmonic means of the steps on both
// sides.
double levelAt(const std::vector<double>& bins, double place) {
  const int last = static_cast<int>(bins.size()) - 1;
  const int k = std::min(static_cast<int>(place), last - 1);
  const auto step = [&](int i) {  // from bin i to the next
    return bins[std::clamp(i + 1, 0, last)] - bins[std::clamp(i, 0, last)];
  };
  const auto slope = [&](int i) {
    const double before = step(i - 1), after = step(i);
    return before * after > 0 ? 2 * before * after / (before + after) : 0;
  };
  const double t = place - k;
  return bins[k] + t * t * (3 - 2 * t) * step(k) +
         t * (1 - t) * ((1 - t) * slope(k) - t * slope(k + 1));
}

struct Unit {
  const char* name;
  double perUnit;  // seconds or Hz in one unit
};

// The largest step of the form 1, 2 or 5 times a power of ten that gives at least `ticks` ticks.
double tickStep(double range, int ticks) {
  const double power = std::pow(10.0, std::floor(std::log10(range / ticks)));
  const double mantissa = range / ticks / power;
  return power * (mantissa >= 5 ? 5 : mantissa >= 2 ? 2 : 1);
}

// Calls mark(place in 0 .. 1, label) for the ticks from `from` to `to`.
template <class Mark>
void eachTick(double from, double to, int ticks, Mark mark) {
  const double step = tickStep(to - from, ticks);
  const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
  const auto first = std::llround(std::ceil(from / step - 1e-9));
  const auto last = std::llround(std::floor(to / step + 1e-9));
  for (auto i = first; i <= last; ++i) {
    const double value = static_cast<double>(i) * step;
    char label[32];
    std::snprintf(label, sizeof label, "%.*f", decimals, value);
    mark((value - from) / (to - from), label);
  }
}

// The text, or an ellipsis and as much of its end as fits.
std::string shortened(Font& font, std::string text, int width) {
  if (font.width(text) <= width) return text;
  while (!text.empty() && font.width("\u2026" + text) > width) {
    do {
      text.erase(0, 1);
    } while (!text.empty() && (text.front() & 0xc0) == 0x80);
  }
  return "\u2026" + text;
}

void outline(Picture& picture, const Area& area) {
  picture.fill(area.left - 1, area.top - 1, area.width + 2, 1, kInk);
  picture.fill(area.left - 1, area.top + area.height, area.width + 2, 1, kInk);
  picture.fill(area.left - 1, area.top - 1, 1, area.height + 2, kInk);
  picture.fill(area.left + area.width, area.top - 1, 1, area.height + 2, kInk);
}

}  // namespace

Picture drawChart(const Chart& chart) {
  constexpr int kTick = 6;
  const int bottom = kPlot.top + kPlot.height;
  const int right = kPlot.left + kPlot.width;
  Picture picture(kPictureWidth, kPictureHeight, kPaper);

  for (int x = 0; x < kPlot.width; ++x) {
    const std::vector<double>& bins = chart.columns[x];
    for (int y = 0; y < kPlot.height; ++y) {
      const double place =
          (kPlot.height - y - 0.5) / kPlot.height * static_cast<double>(bins.size() - 1);
      picture.set(kPlot.left + x, kPlot.top + y, magma(1 - levelAt(bins, place) / chart.floorDb));
    }
  }
  outline(picture, kPlot);

  Font titleFont(22), labelFont(15);
  const int subtitleWidth = labelFont.width(chart.subtitle);
  titleFont.draw(picture, kPlot.left, kPlot.top - 20,
                 shortened(titleFont, chart.title, kPlot.width - subtitleWidth - 40), Anchor::Left,
                 kInk);
  labelFont.draw(picture, right, kPlot.top - 20, chart.subtitle, Anchor::Right, kFaintInk);

  const Unit time = chart.seconds < 0.2 ? Unit{"ms", 1e-3} : Unit{"s", 1};
  eachTick(0, chart.seconds / time.perUnit, 8, [&](double place, const std::string& label) {
    const int x = kPlot.left + static_cast<int>(std::lround(place * kPlot.width));
    picture.fill(x, bottom + 1, 1, kTick, kInk);
    labelFont.draw(picture, x, bottom + 24, label, Anchor::Centre, kInk);
  });
  labelFont.draw(picture, kPlot.left + kPlot.width / 2, bottom + 52,
                 std::string("time (") + time.name + ")", Anchor::Centre, kInk);

  const Unit frequency = chart.topHz < 2000 ? Unit{"Hz", 1} : Unit{"kHz", 1e3};
  eachTick(0, chart.topHz / frequency.perUnit, 6, [&](double place, const std::string& label) {
    const int y = bottom - static_cast<int>(std::lround(place * kPlot.height));
    picture.fill(kPlot.left - 1 - kTick, y, kTick, 1, kInk);
    labelFont.draw(picture, kPlot.left - kTick - 6, y + 5, label, Anchor::Right, kInk);
  });
  labelFont.draw(picture, 26, kPlot.top + kPlot.height / 2,
                 std::string("frequency (") + frequency.name + ")", Anchor::Centre, kInk,
                 Run::Upward);

  const Area bar = {right + 24, kPlot.top, 18, kPlot.height};
  for (int y = 0; y < bar.height; ++y) {
    picture.fill(bar.left, bar.top + y, bar.width, 1, magma((bar.height - y - 0.5) / bar.height));
  }
  outline(picture, bar);
  eachTick(chart.floorDb, 0, 7, [&](double place, const std::string& label) {
    const int y = bottom - static_cast<int>(std::lround(place * bar.height));
    picture.fill(bar.left + bar.width + 1, y, kTick, 1, kInk);
    labelFont.draw(picture, bar.left + bar.width + 48, y + 5, label, Anchor::Right, kInk);
  });
  labelFont.draw(picture, bar.left + bar.width + 72, kPlot.top + kPlot.height / 2,
                 "level (dB, 0 is the loudest)", Anchor::Centre, kInk, Run::Upward);
  return picture;
}
