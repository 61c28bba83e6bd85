// Shared by the programs here: command line, failures, output files. A failure is a
// std::runtime_error whose text is one line.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <span>
#include <string>

using Arguments = std::span<const char* const>;  // without the program's own name

struct Program {
  const char* name;
  const char* arguments;  // for the usage line
  std::size_t least, most;
  void (*run)(Arguments);
};

// The body of main(): runs the program, or prints one line that says why it cannot.
int runProgram(const Program& program, int argc, char** argv);

// The argument as a number from `least` to `most`.
double numberFrom(const std::string& argument, double least, double most);

// Checks the status of a transform: throws for anything but zvxOk.
void require(int32_t status);

// Refuses a path that is not a readable file: a directory, a device, or nothing.
void requireFile(const std::string& path);

// Refuses an output that would overwrite the input.
void requireOther(const std::string& input, const std::string& output);

// Writes the file at `path` completely, or leaves it as it was: `write` gets a new file in the same
// directory, which is renamed at the end. If `write` returns a text, that is the reason of its
// failure.
void replaceFile(const std::string& path, const std::function<std::string(std::FILE*)>& write);
