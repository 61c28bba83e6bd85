// The results of a command as text, CSV or JSON, and where they are written.
#pragma once

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace bench {

struct Column {
  std::string name;
  bool isText;
  bool isInTitle = false;  // it is in the title of the section, so text does not repeat it
};

using Row = std::vector<std::string>;  // by column; an empty field is unknown

struct Section {
  std::string title;
  std::vector<Row> rows;
  std::vector<std::string> summary;  // lines, in text only
};

struct Report {
  std::vector<std::pair<std::string, std::string>> about;  // a description of the run
  std::vector<Column> columns;
  std::vector<Section> sections;
  std::vector<std::string> closing;  // lines, in text only
  bool failed = false;
};

// A number as a field, empty for NaN.
std::string number(double value, int decimals);
std::string threeDigits(double value);

enum class Format {
  Text,
  Csv,
  Json
};

std::string print(const Report& report, Format format);

// Throws if a file cannot be written there. Call it before work that takes minutes.
void requireWritable(const std::string& path);

// Writes to standard output, or to a file, which appears when it is complete. Throws on failure.
void writeTo(const std::string& path, const std::string& text);

// A line on the terminal that shows the progress of a command; elsewhere nothing is printed.
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
