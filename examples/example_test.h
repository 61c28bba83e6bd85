// The fixture of the examples' tests: it runs a program in a directory of its own on files made
// there.
#pragma once

#include <gtest/gtest.h>
#include <sndfile.h>

#include <filesystem>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include "picture.h"
#include "recording.h"

struct Outcome {
  int status;
  std::string out, err;
};

std::string contents(const std::filesystem::path& path);
std::set<std::string> namesIn(const std::filesystem::path& directory);

// In the format that is asked for: WAV of 16 bits, 24 bits, floats.
void writeSoundAs(int format, const std::string& path, int rate, int channels,
                  const std::vector<float>& interleaved);

struct Sound {
  int rate, channels;
  std::vector<float> samples;  // interleaved
};
Sound readSound(const std::string& path);

// 20 log10 of the norm of `expected` over the norm of its difference from `found`.
double signalToNoise(std::span<const float> expected, std::span<const float> found);

class ExampleTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // `before` comes first in the shell that runs the program.
  Outcome run(const std::string& program, const std::string& arguments,
              const std::string& before = "");

  // The program says `complaint` in one line, fails, and leaves the files as they were.
  void expectRefusal(const std::string& program, const std::string& arguments,
                     const std::string& complaint);

  // The same for each of `calls`, and for an input that is missing, no sound or empty, `rest` being
  // what follows the input. good.wav, one second at 8000 Hz, is there and stays as it is.
  struct Refused {
    const char *arguments, *complaint;
  };
  void expectSoundRefusals(const std::string& program, const std::string& rest,
                           std::initializer_list<Refused> calls);

  // The program fails on a full disk, for which a file size limit stands, and keeps the old file.
  void expectOldFileKept(const std::string& program, const std::string& arguments,
                         const std::string& output);

 private:
  std::filesystem::path home_;
};
