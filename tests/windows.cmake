# The tests of a build for Windows. Programs run under Wine, as the toolchain says, and have all they
# need but the DLLs of the library in themselves.

link_libraries(-static -lpthread)

if(NOT WINE)
  message(FATAL_ERROR "the tests need Wine")
endif()
# A first run of Wine fills its directory. The others then start without questions.
add_test(NAME Wine.Start COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} wineboot --init)
set_tests_properties(Wine.Start PROPERTIES FIXTURES_SETUP wine)

# windows_test(NAME PROGRAM ARGUMENT...)
function(windows_test name)
  add_test(NAME ${name} COMMAND ${ARGN})
  set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED wine)
endfunction()

# ---- The bits of all results, of functions found by name in the DLL.
set(hashes ${CMAKE_CURRENT_SOURCE_DIR}/hashes)
test_program(zvxg_hashes reliability/hashes.cpp)
hashes_of_many(zvxg_hashes)
windows_test(Bits.AsRecorded zvxg_hashes check ${hashes}.csv ${hashes}_x87.csv)

# ---- Definitions and sizes.
test_program(zvxg_tests by_hand_test.cpp definition_test.cpp sizes_test.cpp spectrum_test.cpp)
target_link_libraries(zvxg_tests PRIVATE zvxcore)
add_custom_target(zvxg_core_for_tests
  COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:zvxcore> ${CMAKE_CURRENT_BINARY_DIR}
  DEPENDS zvxcore VERBATIM)
add_dependencies(zvxg_tests zvxg_core_for_tests)
windows_test(Definitions zvxg_tests)

# ---- Reliability. The library has the zvxMalloc and zvxFree of the tests, by a zvxcore.dll that is in
# the place of its own.
set(place ${CMAKE_CURRENT_BINARY_DIR}/own_core)
add_library(zvxg_own_core SHARED pages.cpp reliability/allocator.cpp)
target_compile_features(zvxg_own_core PRIVATE cxx_std_20)
target_compile_options(zvxg_own_core PRIVATE ${ZVXG_WARNINGS})
set_target_properties(zvxg_own_core PROPERTIES
  PREFIX "" OUTPUT_NAME zvxcore RUNTIME_OUTPUT_DIRECTORY ${place})
# with_own_core(PROGRAM LIBRARY)  a program of this kind, which opens a copy of the library
function(with_own_core program library)
  if(NOT TARGET ${library}_with_own_core)
    add_custom_target(${library}_with_own_core
      COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:${library}> ${place}
      DEPENDS ${library} VERBATIM)
  endif()
  add_dependencies(${program} ${library}_with_own_core)
  target_link_libraries(${program} PRIVATE zvxg_own_core)
  set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${place})
endfunction()
test_program(zvxg_reliability_tests
  reliability/allocation_test.cpp
  reliability/contract_test.cpp
  reliability/memory_test.cpp
  reliability/observe.cpp
  reliability/state_test.cpp)
with_own_core(zvxg_reliability_tests zvxg)
windows_test(Reliability zvxg_reliability_tests)
test_program(zvxg_many_tests many_test.cpp reliability/observe.cpp)
target_compile_definitions(zvxg_many_tests PRIVATE
  ZVXG_MANY_FILE="${place}/$<TARGET_FILE_NAME:zvxgmany>")
with_own_core(zvxg_many_tests zvxg)
with_own_core(zvxg_many_tests zvxgmany)
windows_test(Many zvxg_many_tests)
set_property(TEST Reliability Many PROPERTY
  ENVIRONMENT "ZVXG_LIBRARY=${place}/$<TARGET_FILE_NAME:zvxg>")

# ---- The library as files, and what is in the zip. Python by its path: as a target, it would be run
# under Wine, too.
set(interface ${PROJECT_BINARY_DIR}/tools/interface/interface.json)
set(byGxx)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  set(byGxx --by-gxx)
endif()
foreach(topic Headers Symbols Stack)
  add_test(NAME Library.${topic}
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/windows_test.py
      --library $<TARGET_FILE:zvxg> --archive $<TARGET_FILE:zvxg_static>
      --many-library $<TARGET_FILE:zvxgmany> --many-archive $<TARGET_FILE:zvxgmany_static>
      --core $<TARGET_FILE:zvxcore> --include ${PROJECT_SOURCE_DIR}/include --interface ${interface}
      --clang "clang++;${ZVXG_CLANG_FOR_MINGW}" ${byGxx} ${topic})
endforeach()
add_test(NAME Consume
  COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_CURRENT_SOURCE_DIR}/consume/windows_test.py
    --build ${PROJECT_BINARY_DIR} --wine "${CMAKE_CROSSCOMPILING_EMULATOR}"
    "--clang=${ZVXG_CLANG_FOR_MINGW};${ZVXG_CLANG_LINKS_MINGW}")
set_tests_properties(Consume PROPERTIES FIXTURES_REQUIRED wine)
