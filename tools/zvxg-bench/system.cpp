#include "system.h"

#include <bit>
#include <csignal>
#include <stdexcept>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <windows.h>
#else
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace bench {
namespace {

constexpr char kNoWorker[] = "cannot start a worker process";

std::vector<char*> asArgv(std::vector<std::string>& arguments) {
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  return argv;
}

}  // namespace

#ifdef _WIN32

int lastAllowedCore() {
  DWORD_PTR ours, all;
  if (!GetProcessAffinityMask(GetCurrentProcess(), &ours, &all)) {
    throw std::runtime_error("no affinity mask");
  }
  return static_cast<int>(std::bit_width(ours)) - 1;
}

bool pinToCore(int core) {
  return core < 64 && SetProcessAffinityMask(GetCurrentProcess(), DWORD_PTR{1} << core);
}

namespace {

// A program gets one line, which its start-up code takes apart again: a quotation mark, and the
// backslashes before one, need a backslash each.
std::string quoted(const std::string& argument) {
  std::string text = "\"";
  std::size_t backslashes = 0;
  for (const char c : argument) {
    if (c == '"') text.append(backslashes + 1, '\\');
    backslashes = c == '\\' ? backslashes + 1 : 0;
    text += c;
  }
  return text.append(backslashes, '\\') + '"';
}

}  // namespace

Worker startWorker(std::vector<std::string> arguments) {
  for (std::string& argument : arguments) argument = quoted(argument);
  int ends[2];
  if (_pipe(ends, 4096, _O_TEXT | _O_NOINHERIT) != 0) throw std::runtime_error(kNoWorker);
  // The worker inherits standard output, which is the pipe meanwhile.
  const int ours = _dup(STDOUT_FILENO);
  _dup2(ends[1], STDOUT_FILENO);
  const std::intptr_t process = _spawnv(_P_NOWAIT, _pgmptr, asArgv(arguments).data());
  _dup2(ours, STDOUT_FILENO);
  _close(ours);
  _close(ends[1]);
  if (process == -1) throw std::runtime_error(kNoWorker);
  return {_fdopen(ends[0], "r"), process};
}

bool endWorker(const Worker& worker) {
  std::fclose(worker.output);
  int status;
  return _cwait(&status, worker.process, 0) != -1 && status == 0;
}

void onCrash(void (*call)(int)) {
  for (const int crash : {SIGSEGV, SIGILL, SIGFPE}) std::signal(crash, call);
}

std::string libraryFile(const std::string& name, int version) {
  return "lib" + name + "-" + std::to_string(version) + ".dll";
}

#else

int lastAllowedCore() {
  cpu_set_t set;
  if (sched_getaffinity(0, sizeof set, &set) != 0) throw std::runtime_error("no affinity mask");
  int core = CPU_SETSIZE - 1;
  while (core > 0 && !CPU_ISSET(core, &set)) --core;
  return core;
}

bool pinToCore(int core) {
  cpu_set_t set;
  CPU_ZERO(&set);
  CPU_SET(core, &set);
  return sched_setaffinity(0, sizeof set, &set) == 0;
}

Worker startWorker(std::vector<std::string> arguments) {
  const std::vector<char*> argv = asArgv(arguments);
  int ends[2];
  const pid_t child = pipe(ends) == 0 ? fork() : -1;
  if (child < 0) throw std::runtime_error(kNoWorker);
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
    execv("/proc/self/exe", argv.data());
    _exit(127);
  }
  close(ends[1]);
  return {fdopen(ends[0], "r"), child};
}

bool endWorker(const Worker& worker) {
  std::fclose(worker.output);
  int status;
  waitpid(static_cast<pid_t>(worker.process), &status, 0);
  return status == 0;
}

void onCrash(void (*call)(int)) {
  for (const int crash : {SIGSEGV, SIGBUS, SIGILL, SIGFPE}) std::signal(crash, call);
}

std::string libraryFile(const std::string& name, int version) {
  return "lib" + name + ".so." + std::to_string(version);
}

#endif

}  // namespace bench
