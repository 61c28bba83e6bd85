# Builds the library with another COMPILER and build TYPE and runs the tests of bits on it. They
# compare with the interpreter of the ordinary build, or with loops of the test, so what passes has
# the same bits as the ordinary library. The generator has to print the same text, whichever compiler built it.

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(result)
    message(FATAL_ERROR "failed: ${ARGV}")
  endif()
endfunction()

run(${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja
  -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_BUILD_TYPE=${TYPE}
  -D ZVXG_TESTS=OFF -D ZVXG_BENCH=OFF -D ZVXG_EXAMPLES=OFF)
run(${CMAKE_COMMAND} --build ${BUILD} --target zvxg --parallel 2)

run(${KERNELGEN} source 0 1 OUTPUT_FILE ${BUILD}/ordinary_kernels.cpp)
run(${BUILD}/tools/kernelgen/kernelgen source 0 1 OUTPUT_FILE ${BUILD}/kernels.cpp)
run(${CMAKE_COMMAND} -E compare_files ${BUILD}/ordinary_kernels.cpp ${BUILD}/kernels.cpp)

file(GLOB_RECURSE library ${BUILD}/libzvxg.so)
list(LENGTH library count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "not one libzvxg.so in ${BUILD}, but: ${library}")
endif()
run(${CMAKE_COMMAND} -E env ZVXG_LIBRARY=${library} ${HASHES} check ${SOURCE}/tests/hashes.csv)
run(${CMAKE_COMMAND} -E env ZVXG_LIBRARY=${library}
  ${TESTS} --gtest_brief=1 --gtest_filter=Interpreter.*:ByHand.*:Frame.*:Wht.*)
run(${CMAKE_COMMAND} -E env ZVXG_LIBRARY=${library}
  ${DCT4_TESTS} --gtest_brief=1 --gtest_filter=Dct4Direct*:Dct4Run*.Same*)

# Without optimisation nothing packs scalar statements into vectors.
if(TYPE STREQUAL Release)
  run(${PYTHON} ${SOURCE}/tests/library_test.py --library ${library}
    --kernelgen ${KERNELGEN} --include ${SOURCE}/include
    MachineCode.test_real_kernels_are_scalar)
endif()
