#include "observe.h"

#include <xmmintrin.h>

#include <algorithm>

#include "../pages.h"

// How a function gets its ten arguments, which are at %rsi. On Windows four are in registers and have a
// place on the stack all the same; and two more registers are the caller's.
#ifdef _WIN32
asm(R"(
  .macro passArguments
  vmovups 32(%rsi), %ymm0
  vmovups %ymm0, 32(%rsp)
  vmovups 64(%rsi), %xmm0
  vmovups %xmm0, 64(%rsp)
  mov (%rsi), %rcx
  mov 8(%rsi), %rdx
  mov 16(%rsi), %r8
  mov 24(%rsi), %r9
  movabs $0x7a7a7a7a7a7a7a7a, %rdi
  movabs $0x8b8b8b8b8b8b8b8b, %rsi
  .endm
)");
#else
asm(R"(
  .macro passArguments
  vmovups 48(%rsi), %ymm0
  vmovups %ymm0, (%rsp)
  mov %rsi, %rax
  mov (%rax), %rdi
  mov 8(%rax), %rsi
  mov 16(%rax), %rdx
  mov 24(%rax), %rcx
  mov 32(%rax), %r8
  mov 40(%rax), %r9
  .endm
)");
#endif

// The frame: 0 the arguments on the stack, 80 seen, 88 mxcsr and 92 x87 control word of the caller, 96
// and 100 those of the call, 104 where the saved registers are, 112 the environment of the x87.
asm(R"(
  .text
  .globl callObserved
callObserved:
  .irp register, rbx, rbp, r12, r13, r14, r15
  push %\register
  .endr
  mov %rsp, %rax
  sub $152, %rsp
  sub %r9, %rsp
  mov %rax, 104(%rsp)
  mov %r8, 80(%rsp)
  stmxcsr 88(%rsp)
  fnstcw 92(%rsp)
  mov %edx, 96(%rsp)
  mov %cx, 100(%rsp)
  mov %rdi, %r11
  passArguments
  .irp i, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15
  movabs $0x0101010101010101*\i, %rax
  vmovq %rax, %xmm\i
  vmovddup %xmm\i, %xmm\i
  .endr
  movabs $0x1b1b1b1b1b1b1b1b, %rbx
  movabs $0x2b2b2b2b2b2b2b2b, %rbp
  movabs $0x3c3c3c3c3c3c3c3c, %r12
  movabs $0x4d4d4d4d4d4d4d4d, %r13
  movabs $0x5e5e5e5e5e5e5e5e, %r14
  movabs $0x6f6f6f6f6f6f6f6f, %r15
  vzeroupper
  ldmxcsr 96(%rsp)
  fldcw 100(%rsp)
  call *%r11
  mov 80(%rsp), %r11
  mov %rbx, (%r11)
  mov %rbp, 8(%r11)
  mov %r12, 16(%r11)
  mov %r13, 24(%r11)
  mov %r14, 32(%r11)
  mov %r15, 40(%r11)
  mov %rdi, 48(%r11)
  mov %rsi, 56(%r11)
  pushfq
  pop %rcx
  mov %rcx, 64(%r11)
  cld
  stmxcsr 72(%r11)
  fnstenv 112(%rsp)
  movzwl 112(%rsp), %ecx
  mov %cx, 76(%r11)
  movzwl 120(%rsp), %ecx
  mov %cx, 78(%r11)
  .irp i, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15
  vextractf128 $1, %ymm\i, 80+16*\i(%r11)
  .endr
  .irp i, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15
  vmovups %xmm\i, 336+16*(\i-6)(%r11)
  .endr
  vzeroupper
  ldmxcsr 88(%rsp)
  fldcw 92(%rsp)
  mov 104(%rsp), %rsp
  .irp register, r15, r14, r13, r12, rbp, rbx
  pop %\register
  .endr
  ret
)");

namespace tests {

void expectKept(const void* function, const Arguments& arguments, std::uint32_t mxcsr,
                std::uint16_t x87, std::uint64_t shift, std::uint32_t raised,
                std::int32_t* status) {
  Observation seen = {};
  std::int32_t returned = 1;
  const Fault fault = faultOf(
      [&] { returned = callObserved(function, arguments.data(), mxcsr, x87, &seen, shift); });
  _mm_setcsr(kMasked);
  ASSERT_EQ(fault.signal, 0) << "at " << fault.address;
  ASSERT_EQ(seen.mxcsr & ~raised, mxcsr & ~raised)
      << "control word, or an exception beside inexact";
  ASSERT_EQ(seen.x87Control, x87);
  ASSERT_EQ(seen.x87Tags, 0xffff) << "registers of the x87 in use";
  ASSERT_TRUE(std::equal(std::begin(kKeptRegisters), std::end(kKeptRegisters), seen.kept))
      << "one of rbx, rbp, r12 to r15, rdi, rsi: " << testing::PrintToString(seen.kept);
  for (std::size_t half = 0; half < 2 * kKeptVectors; ++half) {
    ASSERT_EQ(seen.vectors[half], vectorBefore(6 + half / 2)) << "xmm" << 6 + half / 2;
  }
  ASSERT_EQ(seen.flags & kDirectionFlag, 0u);
  ASSERT_EQ(std::ranges::count(seen.upperHalves, 0u), std::size(seen.upperHalves))
      << "upper halves of the vector registers in use";
  if (status != nullptr) *status = returned;
}

}  // namespace tests
