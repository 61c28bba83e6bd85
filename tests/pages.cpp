#include "pages.h"

#include <setjmp.h>

#include <csignal>
#include <initializer_list>
#include <new>

#ifdef _WIN32
#include <windows.h>
#else
#include <signal.h>
#include <sys/mman.h>
#endif

namespace tests {
namespace {

Fault lastFault;
volatile std::sig_atomic_t faultIsAwaited = 0;

}  // namespace

#ifdef _WIN32

std::byte* takePages(std::size_t bytes) {
  void* const pages = VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS);
  if (pages == nullptr) throw std::bad_alloc();
  return static_cast<std::byte*>(pages);
}

void setAccess(std::byte* pages, std::size_t bytes, Access access) {
  constexpr DWORD kProtections[] = {PAGE_NOACCESS, PAGE_READONLY, PAGE_READWRITE};
  DWORD before;
  VirtualProtect(pages, bytes, kProtections[static_cast<int>(access)], &before);
}

void returnPages(std::byte* pages, std::size_t) { VirtualFree(pages, 0, MEM_RELEASE); }

namespace {

jmp_buf afterFault;

// Where a thread goes on after a fault.
[[noreturn]] void leave() { longjmp(afterFault, 1); }

LONG CALLBACK onException(EXCEPTION_POINTERS* exception) {
  const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
  const DWORD code = record.ExceptionCode;
  const bool isAccess =
      code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_DATATYPE_MISALIGNMENT;
  const bool isArithmetic =
      code >= EXCEPTION_FLT_DENORMAL_OPERAND && code <= EXCEPTION_INT_OVERFLOW;
  const int signal =
      isAccess                                ? SIGSEGV
      : code == EXCEPTION_ILLEGAL_INSTRUCTION ? SIGILL
      : isArithmetic || code == STATUS_FLOAT_MULTIPLE_FAULTS || code == STATUS_FLOAT_MULTIPLE_TRAPS
          ? SIGFPE
          : 0;
  if (faultIsAwaited == 0 || signal == 0) return EXCEPTION_CONTINUE_SEARCH;
  lastFault = {signal, isAccess && record.NumberParameters > 1
                           ? reinterpret_cast<const void*>(record.ExceptionInformation[1])
                           : record.ExceptionAddress};
  // As if the instruction had called leave().
  CONTEXT& context = *exception->ContextRecord;
  context.Rsp = ((context.Rsp - 128) & ~DWORD64{15}) - 8;
  context.Rip = reinterpret_cast<DWORD64>(&leave);
  return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

Fault faultOfCall(void (*call)(const void* body), const void* body) {
  static const void* const kHandler = AddVectoredExceptionHandler(1, onException);
  static_cast<void>(kHandler);
  lastFault = {};
  // Without a frame, longjmp unwinds nothing.
  if (_setjmp(afterFault, nullptr) == 0) {
    faultIsAwaited = 1;
    call(body);
  }
  faultIsAwaited = 0;
  return lastFault;
}

#else

std::byte* takePages(std::size_t bytes) {
  void* const pages =
      mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (pages == MAP_FAILED) throw std::bad_alloc();
  return static_cast<std::byte*>(pages);
}

void setAccess(std::byte* pages, std::size_t bytes, Access access) {
  constexpr int kProtections[] = {PROT_NONE, PROT_READ, PROT_READ | PROT_WRITE};
  mprotect(pages, bytes, kProtections[static_cast<int>(access)]);
}

void returnPages(std::byte* pages, std::size_t bytes) { munmap(pages, bytes); }

namespace {

sigjmp_buf afterFault;

void awaitFaults() {
  struct sigaction caught = {};
  caught.sa_flags = SA_SIGINFO | SA_NODEFER;
  caught.sa_sigaction = [](int signal, siginfo_t* info, void*) {
    if (faultIsAwaited == 0) {  // the test's own: it happens again, and ends the program
      std::signal(signal, SIG_DFL);
      return;
    }
    lastFault = {signal, info->si_addr};
    siglongjmp(afterFault, 1);
  };
  for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) sigaction(signal, &caught, nullptr);
}

}  // namespace

Fault faultOfCall(void (*call)(const void* body), const void* body) {
  [[maybe_unused]] static const bool kAwaited = (awaitFaults(), true);
  lastFault = {};
  if (sigsetjmp(afterFault, 0) == 0) {
    faultIsAwaited = 1;
    call(body);
  }
  faultIsAwaited = 0;
  return lastFault;
}

#endif

}  // namespace tests
