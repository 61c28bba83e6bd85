#include "output.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

std::string formatted(const char* format, int digits, double value) {
  if (!std::isfinite(value)) return "";
  char text[64];
  std::snprintf(text, sizeof text, format, digits, value);
  return text;
}

void printSection(std::ostream& out, const std::vector<Column>& columns, const Section& section) {
  if (!section.title.empty()) out << '\n' << section.title << '\n';
  std::vector<std::size_t> shown, widths;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    std::size_t width = 0;
    for (const Row& row : section.rows) width = std::max(width, row[c].size());
    if (width == 0 || columns[c].isInTitle) continue;
    shown.push_back(c);
    widths.push_back(std::max(width, columns[c].name.size()));
  }
  const auto printLine = [&](const auto& fieldOf) {
    std::string line;
    for (std::size_t i = 0; i < shown.size(); ++i) {
      const std::string& field = fieldOf(shown[i]);
      const std::string space(widths[i] - field.size(), ' ');
      if (i > 0) line += "  ";
      line += columns[shown[i]].isText ? field + space : space + field;
    }
    out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
  };
  printLine([&](std::size_t c) -> const std::string& { return columns[c].name; });
  for (const Row& row : section.rows) {
    printLine([&](std::size_t c) -> const std::string& { return row[c]; });
  }
  for (const std::string& line : section.summary) out << line << '\n';
}

void printText(std::ostream& out, const Report& report) {
  for (const auto& [key, value] : report.about) out << key << ": " << value << '\n';
  for (const Section& section : report.sections) printSection(out, report.columns, section);
  for (const std::string& line : report.closing) out << line << '\n';
}

// CSV as in RFC 4180, after the description of the run as comments.
std::string csvField(const std::string& field) {
  if (field.find_first_of(",\"\n") == std::string::npos) return field;
  std::string quoted = "\"";
  for (const char c : field) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + '"';
}

void printCsv(std::ostream& out, const Report& report) {
  for (const auto& [key, value] : report.about) out << "# " << key << ": " << value << '\n';
  for (std::size_t c = 0; c < report.columns.size(); ++c) {
    out << (c ? "," : "") << report.columns[c].name;
  }
  out << '\n';
  for (const Section& section : report.sections) {
    for (const Row& row : section.rows) {
      for (std::size_t c = 0; c < row.size(); ++c) out << (c ? "," : "") << csvField(row[c]);
      out << '\n';
    }
  }
}

std::string jsonString(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned char>(c));
    const bool isPlain = static_cast<unsigned char>(c) >= ' ' && c != '"' && c != '\\';
    quoted += isPlain ? std::string(1, c) : escape;
  }
  return quoted + '"';
}

void printJson(std::ostream& out, const Report& report) {
  out << "{\n\"about\": {";
  const char* comma = "";
  for (const auto& [key, value] : report.about) {
    out << comma << '\n' << jsonString(key) << ": " << jsonString(value);
    comma = ",";
  }
  out << "},\n\"rows\": [";
  comma = "";
  for (const Section& section : report.sections) {
    for (const Row& row : section.rows) {
      out << comma << "\n{";
      comma = ",";
      for (std::size_t c = 0; c < row.size(); ++c) {
        const Column& column = report.columns[c];
        out << (c ? ", " : "") << jsonString(column.name) << ": ";
        out << (row[c].empty() ? "null" : column.isText ? jsonString(row[c]) : row[c]);
      }
      out << '}';
    }
  }
  out << "]\n}\n";
}

// Devices and pipes are written to directly.
bool isReplaceable(const std::filesystem::path& path) {
  return !std::filesystem::exists(path) || std::filesystem::is_regular_file(path);
}

std::filesystem::path unfinished(const std::filesystem::path& path) {
  std::filesystem::path part = path;
  return part += ".part";
}

}  // namespace

std::string number(double value, int decimals) { return formatted("%.*f", decimals, value); }
std::string threeDigits(double value) { return formatted("%.*g", 3, value); }

std::string print(const Report& report, Format format) {
  std::ostringstream out;
  switch (format) {
    case Format::Text: printText(out, report); break;
    case Format::Csv: printCsv(out, report); break;
    case Format::Json: printJson(out, report); break;
  }
  return out.str();
}

void requireWritable(const std::string& path) {
  const std::filesystem::path file = path, directory = file.parent_path();
  const bool replaces = isReplaceable(file);
  const std::filesystem::path asked = !replaces ? file : directory.empty() ? "." : directory;
  if (std::filesystem::is_directory(file) || access(asked.string().c_str(), W_OK) != 0) {
    throw std::runtime_error("cannot write " + path);
  }
}

void writeTo(const std::string& path, const std::string& text) {
  if (path.empty()) {
    std::cout << text << std::flush;
    if (!std::cout) throw std::runtime_error("cannot write to standard output");
    return;
  }
  const bool replaces = isReplaceable(path);
  // The target of a link is replaced, not the link.
  std::filesystem::path file = path;
  if (replaces) file = std::filesystem::weakly_canonical(file);
  const std::filesystem::path part = replaces ? unfinished(file) : file;
  std::ofstream out(part);
  out << text;
  out.close();
  if (!out) {
    if (part != file) std::filesystem::remove(part);
    throw std::runtime_error("cannot write " + path);
  }
  if (part != file) std::filesystem::rename(part, file);
}

Progress::Progress() : isTerminal_(isatty(STDERR_FILENO)) {}

void Progress::show(const std::string& line) {
  if (!isTerminal_) return;
  const std::size_t width = std::max(width_, line.size());
  std::fprintf(stderr, "\r%-*s", static_cast<int>(width), line.c_str());
  width_ = line.size();
}

Progress::~Progress() {
  if (width_ > 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(width_), "");
}

}  // namespace bench
