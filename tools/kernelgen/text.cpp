#include "text.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace kernelgen {

std::string literal(double value, Precision precision) {
  char digits[40];
  char* const end = digits + sizeof digits;
  const bool single = precision == Precision::Single;
  const auto written = single ? std::to_chars(digits, end, static_cast<float>(value))
                              : std::to_chars(digits, end, value);
  std::string s(digits, written.ptr);
  if (s.find_first_of(".e") == std::string::npos) s += ".0";
  return single ? s + "f" : s;
}

std::string listed(const std::vector<std::string>& items) {
  std::string s;
  for (const std::string& item : items) s += (s.empty() ? "" : ", ") + item;
  return s;
}

std::string call(const std::string& function, const std::vector<std::string>& arguments) {
  return function + "(" + listed(arguments) + ")";
}

std::string filled(const std::string& pattern, const std::map<std::string, std::string>& values) {
  std::string s;
  for (auto at = pattern.begin(); at != pattern.end();) {
    const auto name = std::find(at, pattern.end(), '$');
    s.append(at, name);
    if (name == pattern.end()) break;
    at = std::find_if(name + 1, pattern.end(), [](unsigned char c) { return !std::isalpha(c); });
    s += values.at({name + 1, at});
  }
  return s;
}

}  // namespace kernelgen
