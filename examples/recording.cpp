// Recording, readAll, writeSound: libsndfile handles the formats; this file mixes channels and
// refuses bad input.
#include "recording.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "program.h"

namespace {

// Float files can hold anything. A sample that is not a number, or so large that sums of squares
// leave the range of single precision, would spoil every frame that contains it.
constexpr float kLoudest = 1e15f;

std::string withoutLineEnds(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  while (!text.empty() && (text.back() == ' ' || text.back() == '.')) text.pop_back();
  return text;
}

}  // namespace

Recording::Recording(const std::string& path) : path_(path) {
  requireFile(path);
  SF_INFO info{};
  file_.reset(sf_open(path.c_str(), SFM_READ, &info));
  if (!file_) {
    throw std::runtime_error(path + ": not a readable sound file (" +
                             withoutLineEnds(sf_strerror(nullptr)) + ")");
  }
  rate_ = info.samplerate;
  channels_ = info.channels;
  length_ = info.frames;
  if (rate_ <= 0 || length_ <= 0) throw std::runtime_error(path + ": holds no samples");
}

std::size_t Recording::read(std::span<float> samples) {
  interleaved_.resize(samples.size() * channels_);
  const sf_count_t got =
      sf_readf_float(file_.get(), interleaved_.data(), static_cast<sf_count_t>(samples.size()));
  for (sf_count_t i = 0; i < got; ++i) {
    float sum = 0;
    for (int c = 0; c < channels_; ++c) sum += interleaved_[i * channels_ + c];
    const float mean = sum / static_cast<float>(channels_);
    if (!(std::abs(mean) <= kLoudest)) {
      throw std::runtime_error(path_ + ": sample " + std::to_string(position_ + i) +
                               " is not a usable number");
    }
    samples[i] = mean;
  }
  position_ += got;
  if (got < static_cast<sf_count_t>(samples.size()) && position_ < length_) {
    throw std::runtime_error(path_ + ": ends after " + std::to_string(position_) + " of " +
                             std::to_string(length_) + " samples");
  }
  return static_cast<std::size_t>(got);
}

std::vector<float> readAll(Recording& recording, std::int64_t least) {
  if (recording.length() < least) {
    throw std::runtime_error(recording.path() + ": " + std::to_string(recording.length()) +
                             " samples, and at least " + std::to_string(least) + " are needed");
  }
  std::vector<float> samples(recording.length());
  samples.resize(recording.read(samples));
  return samples;
}

void writeSound(const std::string& path, int rate, int channels, std::span<const float> samples) {
  replaceFile(path, [&](std::FILE* file) -> std::string {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* sound = sf_open_fd(fileno(file), SFM_WRITE, &info, SF_FALSE);
    if (sound == nullptr) return withoutLineEnds(sf_strerror(nullptr));
    const auto frames = static_cast<sf_count_t>(samples.size()) / channels;
    const sf_count_t written = sf_writef_float(sound, samples.data(), frames);
    std::string reason = written == frames ? "" : withoutLineEnds(sf_strerror(sound));
    if (sf_close(sound) != 0 && reason.empty()) reason = "closing the file failed";
    return reason;
  });
}
