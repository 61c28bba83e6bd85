// What a command found, as text, CSV or JSON, and where it goes.
#pragma once

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace bench {

struct Column {
  std::string name;
  bool isText;
  bool isInTitle = false;  // of the section, so that text does not repeat it
};

using Row = std::vector<std::string>;  // by column; an empty field is not known

struct Section {
  std::string title;
  std::vector<Row> rows;
  std::vector<std::string> summary;  // lines; only text has them
};

struct Report {
  std::vector<std::pair<std::string, std::string>> about;  // the run
  std::vector<Column> columns;
  std::vector<Section> sections;
  std::vector<std::string> closing;  // lines; only text has them
  bool failed = false;
};

// A number as a field; empty if it is none.
std::string number(double value, int decimals);
std::string threeDigits(double value);

enum class Format {
  Text,
  Csv,
  Json
};

std::string print(const Report& report, Format format);

// Throws if a file cannot be written there; to be asked before work that takes minutes.
void requireWritable(const std::string& path);

// To standard output, or to a file, which appears when it is complete. Throws on failure.
void writeTo(const std::string& path, const std::string& text);

// A line on the terminal that tells how far a command is; nothing elsewhere.
class Progress {
 public:
  Progress();
  ~Progress();
  void show(const std::string& line);

 private:
  bool isTerminal_;
  std::size_t width_ = 0;
};

}  // namespace bench
