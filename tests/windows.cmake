# The tests of a build for Windows. Programs run under Wine, as the toolchain says, and have all they
# need but the DLLs of the library in themselves.

link_libraries(-static)

# A first run of Wine fills its directory. The others then start without questions.
add_test(NAME Wine.Start COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} wineboot --init)
set_tests_properties(Wine.Start PROPERTIES FIXTURES_SETUP wine)

# windows_test(NAME PROGRAM ARGUMENT...)
function(windows_test name)
  add_test(NAME ${name} COMMAND ${ARGN})
  set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED wine)
endfunction()

# ---- The bits of all results, of functions found by name in the DLL.
test_program(zvxg_hashes reliability/hashes.cpp)
windows_test(Bits.AsRecorded zvxg_hashes check ${CMAKE_CURRENT_SOURCE_DIR}/hashes.csv)
