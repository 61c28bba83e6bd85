// What the programs here share: their command line, their failures, their output files.
// A failure is a std::runtime_error whose text is one line.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <span>
#include <string>

using Arguments = std::span<const char* const>;  // without the program's own name

struct Program {
  const char* name;
  const char* arguments;  // as the usage line names them
  std::size_t least, most;
  void (*run)(Arguments);
};

// The body of main(): runs the program, or tells in one line why not.
int runProgram(const Program& program, int argc, char** argv);

// The argument as a number from `least` to `most`.
double numberFrom(const std::string& argument, double least, double most);

// What a transform returned: anything but zvxOk is thrown.
void require(int32_t status);

// Refuses what is no file to read: a directory, a device, nothing.
void requireFile(const std::string& path);

// Refuses to write over the file that is read.
void requireOther(const std::string& input, const std::string& output);

// The file at `path` is either what it was or whole: `write` gets a new file in the same directory,
// which takes the name at the end. A text that `write` returns is the reason of a failure.
void replaceFile(const std::string& path, const std::function<std::string(std::FILE*)>& write);
