#include "observe.h"

// The frame: 0 the arguments on the stack, 32 seen, 40 mxcsr and 44 x87 control word of the caller, 48
// and 52 those of the call, 64 the environment of the x87; with the six registers and the return
// address on a boundary of 16.
asm(R"(
  .text
  .globl callObserved
  .type callObserved, @function
callObserved:
  .irp register, rbx, rbp, r12, r13, r14, r15
  push %\register
  .endr
  sub $104, %rsp
  mov %r8, 32(%rsp)
  stmxcsr 40(%rsp)
  fnstcw 44(%rsp)
  mov %edx, 48(%rsp)
  mov %cx, 52(%rsp)
  .irp i, 0, 1, 2, 3
  mov 48+8*\i(%rsi), %rax
  mov %rax, 8*\i(%rsp)
  .endr
  mov %rdi, %r11
  mov %rsi, %rax
  mov (%rax), %rdi
  mov 8(%rax), %rsi
  mov 16(%rax), %rdx
  mov 24(%rax), %rcx
  mov 32(%rax), %r8
  mov 40(%rax), %r9
  movabs $0x1b1b1b1b1b1b1b1b, %rbx
  movabs $0x2b2b2b2b2b2b2b2b, %rbp
  movabs $0x3c3c3c3c3c3c3c3c, %r12
  movabs $0x4d4d4d4d4d4d4d4d, %r13
  movabs $0x5e5e5e5e5e5e5e5e, %r14
  movabs $0x6f6f6f6f6f6f6f6f, %r15
  vzeroupper
  ldmxcsr 48(%rsp)
  fldcw 52(%rsp)
  call *%r11
  mov 32(%rsp), %r11
  mov %rbx, (%r11)
  mov %rbp, 8(%r11)
  mov %r12, 16(%r11)
  mov %r13, 24(%r11)
  mov %r14, 32(%r11)
  mov %r15, 40(%r11)
  pushfq
  pop %rcx
  mov %rcx, 48(%r11)
  cld
  stmxcsr 56(%r11)
  fnstenv 64(%rsp)
  movzwl 64(%rsp), %ecx
  mov %cx, 60(%r11)
  movzwl 72(%rsp), %ecx
  mov %cx, 62(%r11)
  .irp i, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15
  vextractf128 $1, %ymm\i, 64+16*\i(%r11)
  .endr
  vzeroupper
  ldmxcsr 40(%rsp)
  fldcw 44(%rsp)
  add $104, %rsp
  .irp register, r15, r14, r13, r12, rbp, rbx
  pop %\register
  .endr
  ret
  .size callObserved, . - callObserved
)");
