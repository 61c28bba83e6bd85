# Builds the library once more, the project in SOURCE with OPTIONS, and runs the tests of bits on it.
# They compare with the interpreter of the ordinary build, or with loops of the test, so what passes
# has the same bits as the ordinary library. The generator has to print the same text, whichever
# compiler built it.

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(result)
    message(FATAL_ERROR "failed: ${ARGV}")
  endif()
endfunction()

# find(RESULT NAME)  the one file of that name in the build
function(find result name)
  file(GLOB_RECURSE files ${BUILD}/${name})
  list(LENGTH files count)
  if(NOT count EQUAL 1)
    message(FATAL_ERROR "not one ${name} in ${BUILD}, but: ${files}")
  endif()
  set(${result} ${files} PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja ${OPTIONS})
run(${CMAKE_COMMAND} --build ${BUILD} --parallel 2)

find(kernelgen kernelgen)
run(${KERNELGEN} source 0 1 OUTPUT_FILE ${BUILD}/ordinary_kernels.cpp)
run(${kernelgen} source 0 1 OUTPUT_FILE ${BUILD}/kernels.cpp)
run(${CMAKE_COMMAND} -E compare_files ${BUILD}/ordinary_kernels.cpp ${BUILD}/kernels.cpp)

find(library libzvxg.so)
run(${CMAKE_COMMAND} -E env ZVXG_LIBRARY=${library} ${HASHES} check ${RECORDED})
run(${CMAKE_COMMAND} -E env ZVXG_LIBRARY=${library}
  ${TESTS} --gtest_brief=1 --gtest_filter=Interpreter.*:ByHand.*:Frame.*:Wht.*)
run(${CMAKE_COMMAND} -E env ZVXG_LIBRARY=${library}
  ${DCT4_TESTS} --gtest_brief=1 --gtest_filter=Dct4Direct*:Dct4Run*.Same*)

# Without optimisation clang keeps constants that a reference is bound to in writable data.
if("${OPTIONS}" MATCHES "BUILD_TYPE=Debug")
  set(topics Symbols)
else()
  set(topics Symbols Hardening)
endif()
run(${PYTHON} ${CMAKE_CURRENT_LIST_DIR}/library_test.py
  --library ${library} --kernelgen ${KERNELGEN} --include ${INCLUDE} ${topics}
  MachineCode.test_plain_avx_without_fused_products MachineCode.test_real_kernels_are_scalar)
