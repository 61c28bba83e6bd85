// What this program asks of the system, and all that differs between Linux and Windows.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace bench {

// The last core that this process may run on.
int lastAllowedCore();
// Keeps this process and the workers that it starts on one core; false if it cannot run there.
bool pinToCore(int core);

// This program once more, as a process whose output is read here. Throws if it cannot be started.
struct Worker {
  std::FILE* output;
  std::intptr_t process;
};
Worker startWorker(std::vector<std::string> arguments);
// Waits until it has ended; whether that was with status 0.
bool endWorker(const Worker& worker);

// What an instruction that cannot go on calls, with the number of the signal.
void onCrash(void (*call)(int));

// The file of a library of this version, as the loader looks for it.
std::string libraryFile(const std::string& name, int version);

}  // namespace bench
