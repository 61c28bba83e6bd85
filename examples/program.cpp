// runProgram, numberFrom, require, requireFile, requireOther, replaceFile.
#include "program.h"

#include <unistd.h>
#include <zvxg.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <exception>
#include <filesystem>
#include <stdexcept>

namespace {

[[noreturn]] void failWriting(const std::string& path, const std::string& reason) {
  throw std::runtime_error(path + ": cannot be written (" + reason + ")");
}

}  // namespace

int runProgram(const Program& program, int argc, char** argv) {
  const Arguments arguments(argv + 1, argc > 0 ? argc - 1 : 0);
  if (arguments.size() < program.least || arguments.size() > program.most) {
    std::fprintf(stderr, "usage: %s %s\n", program.name, program.arguments);
    return 2;
  }
  try {
    program.run(arguments);
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "%s: not enough memory\n", program.name);
    return 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", program.name, error.what());
    return 1;
  }
  return 0;
}

double numberFrom(const std::string& argument, double least, double most) {
  double number = 0;
  const char* end = argument.data() + argument.size();
  const auto [rest, error] = std::from_chars(argument.data(), end, number);
  if (error != std::errc() || rest != end || !(number >= least && number <= most)) {
    char range[80];
    std::snprintf(range, sizeof range, "' is no number from %g to %g", least, most);
    throw std::runtime_error("'" + argument + range);
  }
  return number;
}

void require(int32_t status) {
  if (status != zvxOk) {
    throw std::runtime_error("a transform returned status " + std::to_string(status));
  }
}

void requireFile(const std::string& path) {
  const auto kind = std::filesystem::status(path).type();
  if (kind == std::filesystem::file_type::not_found) {
    throw std::runtime_error(path + ": no such file");
  }
  if (kind != std::filesystem::file_type::regular) {
    throw std::runtime_error(path + ": not a regular file");
  }
}

void requireOther(const std::string& input, const std::string& output) {
  std::error_code ignored;
  if (std::filesystem::equivalent(input, output, ignored)) {
    throw std::runtime_error(output + ": is the input itself");
  }
}

void replaceFile(const std::string& path, const std::function<std::string(std::FILE*)>& write) {
  // Renaming a file to the name of a device would replace the device.
  if (std::filesystem::exists(path) && !std::filesystem::is_regular_file(path)) {
    failWriting(path, "it exists and is not a regular file");
  }
  const std::string unfinished = path + "." + std::to_string(getpid()) + ".part";
  std::FILE* file = std::fopen(unfinished.c_str(), "w+bx");
  if (file == nullptr) failWriting(path, std::strerror(errno));
  std::string reason = write(file);
  if (std::fclose(file) != 0 && reason.empty()) reason = std::strerror(errno);
  if (reason.empty() && std::rename(unfinished.c_str(), path.c_str()) != 0) {
    reason = std::strerror(errno);
  }
  if (!reason.empty()) {
    std::remove(unfinished.c_str());
    failWriting(path, reason);
  }
}
