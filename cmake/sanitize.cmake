# The library for sanitizers, with clang: ZVXG_SANITIZE is what follows -fsanitize=. They are compiled
# into the library and the programs that call it, not into the generator.

set(sanitize -gline-tables-only -fno-omit-frame-pointer
  -fsanitize=${ZVXG_SANITIZE} -fno-sanitize-recover=all)
# With a check at every access, unrolled code is quickest to compile without optimisation, but for
# MemorySanitizer, which would follow each local variable.
get_target_property(all zvxg ZVXG_OBJECTS)
get_target_property(many zvxgmany ZVXG_OBJECTS)
foreach(objects IN LISTS all many)
  if(ZVXG_SANITIZE STREQUAL memory)
    target_compile_options(${objects} PRIVATE ${sanitize} -O1
      "SHELL:-mllvm -msan-instrumentation-with-call-threshold=0")
  else()
    target_compile_options(${objects} PRIVATE ${sanitize} -O0)
  endif()
endforeach()

# sanitized(TARGET OPTION...)  what is linked with it; the options for both steps.
function(sanitized target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_compile_options(${target} PRIVATE
    ${ZVXG_WARNINGS} -ffp-contract=off ${sanitize} ${ARGN})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${target} PRIVATE zvxg_interface_linked)
  target_link_options(${target} PRIVATE -fsanitize=${ZVXG_SANITIZE} ${ARGN})
endfunction()

add_executable(zvxg_every_call tests/sanitize/every_call.cpp)
sanitized(zvxg_every_call)
