// Reads a sound file from start to end as one channel, and writes sound files, by libsndfile. If
// anything is wrong with a file, a std::runtime_error is thrown whose text is one line.
#pragma once

#include <sndfile.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

class Recording {
 public:
  explicit Recording(const std::string& path);

  const std::string& path() const { return path_; }
  int rate() const { return rate_; }               // samples per second
  std::int64_t length() const { return length_; }  // samples of one channel

  // Fills `samples` with the mean of all channels and returns how many there were, which is less
  // than requested only at the end. Integer formats are scaled to -1 .. 1.
  std::size_t read(std::span<float> samples);

 private:
  struct Close {
    void operator()(SNDFILE* file) const { sf_close(file); }
  };

  std::string path_;
  std::unique_ptr<SNDFILE, Close> file_;
  int rate_ = 0;
  int channels_ = 0;
  std::int64_t length_ = 0;
  std::int64_t position_ = 0;
  std::vector<float> interleaved_;
};

// All samples of a recording, which must have at least `least`.
std::vector<float> readAll(Recording& recording, std::int64_t least);

// Writes a WAV file of 32-bit floats; `samples` has one sample of each channel in turn. Writes the
// file at `path` completely, or leaves it as it was.
void writeSound(const std::string& path, int rate, int channels, std::span<const float> samples);
