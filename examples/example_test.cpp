// ExampleTest.
#include "example_test.h"

#include <sys/wait.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

std::string contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::set<std::string> namesIn(const fs::path& directory) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(directory)) names.insert(entry.path().filename());
  return names;
}

void writeSoundAs(int format, const std::string& path, int rate, int channels,
                  const std::vector<float>& interleaved) {
  SF_INFO info{};
  info.samplerate = rate;
  info.channels = channels;
  info.format = format;
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
  const auto frames = static_cast<sf_count_t>(interleaved.size()) / channels;
  ASSERT_EQ(sf_writef_float(file, interleaved.data(), frames), frames);
  sf_close(file);
}

Sound readSound(const std::string& path) {
  SF_INFO info{};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  EXPECT_NE(file, nullptr) << sf_strerror(nullptr);
  if (file == nullptr) return {};
  Sound sound{info.samplerate, info.channels, std::vector<float>(info.frames * info.channels)};
  EXPECT_EQ(sf_readf_float(file, sound.samples.data(), info.frames), info.frames);
  sf_close(file);
  return sound;
}

double signalToNoise(std::span<const float> expected, std::span<const float> found) {
  EXPECT_EQ(expected.size(), found.size());
  double signal = 0, noise = 0;
  for (std::size_t i = 0; i < std::min(expected.size(), found.size()); ++i) {
    const double difference = static_cast<double>(found[i]) - expected[i];
    signal += static_cast<double>(expected[i]) * expected[i];
    noise += difference * difference;
  }
  return 10 * std::log10(signal / noise);
}

void ExampleTest::SetUp() {
  std::string name = fs::temp_directory_path() / "example_test.XXXXXX";
  ASSERT_NE(mkdtemp(name.data()), nullptr);
  home_ = name;
  fs::current_path(home_);
}

void ExampleTest::TearDown() {
  fs::current_path("/");
  for (const char* suffix : {"", ".out", ".err"}) fs::remove_all(home_.string() + suffix);
}

Outcome ExampleTest::run(const std::string& program, const std::string& arguments,
                         const std::string& before) {
  const std::string out = home_.string() + ".out", err = home_.string() + ".err";
  const int status = std::system((before + "exec '" + EXAMPLES_DIRECTORY "/" + program + "' " +
                                  arguments + " >" + out + " 2>" + err)
                                     .c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(out), contents(err)};
}

void ExampleTest::expectRefusal(const std::string& program, const std::string& arguments,
                                const std::string& complaint) {
  SCOPED_TRACE(program + " " + arguments);
  const auto names = namesIn(".");
  const Outcome outcome = run(program, arguments);
  EXPECT_GT(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.err.find(program), std::string::npos) << outcome.err;
  EXPECT_NE(outcome.err.find(complaint), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
  EXPECT_EQ(namesIn("."), names);
}

void ExampleTest::expectSoundRefusals(const std::string& program, const std::string& rest,
                                      std::initializer_list<Refused> calls) {
  writeSound("good.wav", 8000, 1, std::vector<float>(8000, 0.25f));
  writeSound("none.wav", 8000, 1, {});
  std::ofstream("text.wav") << "no sound\n";
  const std::string good = contents("good.wav");
  expectRefusal(program, "missing.wav " + rest, "missing.wav: no such file");
  expectRefusal(program, "text.wav " + rest, "text.wav: not a readable sound file");
  expectRefusal(program, "none.wav " + rest, "none.wav: holds no samples");
  for (const auto& [arguments, complaint] : calls) expectRefusal(program, arguments, complaint);
  EXPECT_EQ(contents("good.wav"), good);
}

void ExampleTest::expectOldFileKept(const std::string& program, const std::string& arguments,
                                    const std::string& output) {
  std::ofstream(output) << "old";
  const auto names = namesIn(".");
  const Outcome outcome = run(program, arguments, "trap '' XFSZ; ulimit -f 2; ");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err.find(program + ": " + output + ": cannot be written"), 0u) << outcome.err;
  EXPECT_EQ(contents(output), "old");
  EXPECT_EQ(namesIn("."), names);
}
