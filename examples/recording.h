// A sound file read from front to back as one channel, and sound written, by libsndfile.
// Whatever is wrong with the file is thrown as a std::runtime_error of one line.
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

  // Fills `samples` with the mean of all channels and returns how many there were; fewer than asked
  // for only at the end. Integer formats arrive in -1 .. 1.
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

// All samples of a recording that has at least `least`.
std::vector<float> readAll(Recording& recording, std::int64_t least);

// Writes a WAV file of 32-bit floats, one channel behind the other in each sample. The file at
// `path` is either what it was or whole.
void writeSound(const std::string& path, int rate, int channels, std::span<const float> samples);
