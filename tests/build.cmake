# Builds the library once more, the project in SOURCE with OPTIONS, and compares its bits with those of
# the ordinary library, of the operations in their order, and of the record. The generator has to print
# the same text, whichever compiler built it.

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(result)
    message(FATAL_ERROR "failed: ${ARGV}")
  endif()
endfunction()

# find(RESULT NAME)  the one file of that name in the build
function(find result name)
  file(GLOB_RECURSE files ${BUILD}/${name})
  list(FILTER files EXCLUDE REGEX "/src/variants/")
  list(LENGTH files count)
  if(NOT count EQUAL 1)
    message(FATAL_ERROR "not one ${name} in ${BUILD}, but: ${files}")
  endif()
  set(${result} ${files} PARENT_SCOPE)
endfunction()

# expect_same(NAME COMMAND...)  of both builds, each with its library and its generator
function(expect_same name ordinary other)
  run(${ordinary} OUTPUT_FILE ${BUILD}/ordinary_${name})
  run(${other} OUTPUT_FILE ${BUILD}/${name})
  run(${CMAKE_COMMAND} -E compare_files ${BUILD}/ordinary_${name} ${BUILD}/${name})
endfunction()

run(${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja ${OPTIONS})
run(${CMAKE_COMMAND} --build ${BUILD} --parallel 2)
find(kernelgen kernelgen)
find(library libzvxg.so)
find(many libzvxgmany.so)
set(with_library ${CMAKE_COMMAND} -E env ZVXG_LIBRARY=${library} ZVXG_MANY_LIBRARY=${many})
if(NOT LEVEL)
  set(LEVEL base)
else()
  list(APPEND with_library ZVXG_LEVEL=${LEVEL})
endif()

expect_same(kernels.cpp "${KERNELGEN};source;0;1" "${kernelgen};source;0;1")
expect_same(hashes.csv "${HASHES};print" "${with_library};${HASHES};print")
run(${with_library} ${HASHES} check ${RECORDED})
run(${with_library} ${TESTS} --gtest_brief=1 --gtest_filter=ByHand.*:Definition.EveryImpulse:Version.*)
foreach(level IN ITEMS v3 v4)
  set(variant ${BUILD}/src/variants/x86-64-${level}/libzvxg.so)
  if(NOT EXISTS ${variant})
    continue()
  endif()
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env ZVXG_LIBRARY=${variant} ${HASHES} check ${RECORDED}
    RESULT_VARIABLE result ERROR_VARIABLE error)
  if(error MATCHES "CPU ISA level is lower than required")
    message("skipped: this processor is below ${level}")
  elseif(result)
    message(FATAL_ERROR "${variant} has other bits:\n${error}")
  endif()
endforeach()
run(${with_library} ${RELIABILITY_TESTS} --gtest_brief=1 --gtest_filter=Values.*)

# Without optimisation clang keeps constants that a reference is bound to in writable data.
if("${OPTIONS}" MATCHES "BUILD_TYPE=Debug")
  set(topics Symbols)
else()
  set(topics Symbols Hardening)
endif()
run(${PYTHON} ${CMAKE_CURRENT_LIST_DIR}/library_test.py
  --library ${library} --level ${LEVEL} --kernelgen ${KERNELGEN} --include ${INCLUDE} --interface ${INTERFACE} ${topics}
  MachineCode.test_nothing_beyond_the_level MachineCode.test_real_kernels_are_scalar)
