#include "observe.h"

// The frame: 0 seen, 8 mxcsr and 12 x87 control word of the caller, 16 and 20 those of the call,
// 32 the environment of the x87; with the six registers and the return address on a boundary of 16.
asm(R"(
  .text
  .globl callObserved
  .type callObserved, @function
callObserved:
  push %rbx
  push %rbp
  push %r12
  push %r13
  push %r14
  push %r15
  sub $72, %rsp
  mov %r8, (%rsp)
  stmxcsr 8(%rsp)
  fnstcw 12(%rsp)
  mov %edx, 16(%rsp)
  mov %cx, 20(%rsp)
  mov %rdi, %r11
  mov %rsi, %rax
  mov (%rax), %rdi
  mov 8(%rax), %rsi
  mov 16(%rax), %rdx
  mov 24(%rax), %rcx
  mov 32(%rax), %r8
  movabs $0x1b1b1b1b1b1b1b1b, %rbx
  movabs $0x2b2b2b2b2b2b2b2b, %rbp
  movabs $0x3c3c3c3c3c3c3c3c, %r12
  movabs $0x4d4d4d4d4d4d4d4d, %r13
  movabs $0x5e5e5e5e5e5e5e5e, %r14
  movabs $0x6f6f6f6f6f6f6f6f, %r15
  vzeroupper
  ldmxcsr 16(%rsp)
  fldcw 20(%rsp)
  call *%r11
  mov (%rsp), %r11
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
  fnstenv 32(%rsp)
  movzwl 32(%rsp), %ecx
  mov %cx, 60(%r11)
  movzwl 40(%rsp), %ecx
  mov %cx, 62(%r11)
  .irp i, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15
  vextractf128 $1, %ymm\i, 64+16*\i(%r11)
  .endr
  vzeroupper
  ldmxcsr 8(%rsp)
  fldcw 12(%rsp)
  add $72, %rsp
  pop %r15
  pop %r14
  pop %r13
  pop %r12
  pop %rbp
  pop %rbx
  ret
  .size callObserved, . - callObserved
)");
