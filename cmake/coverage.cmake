# Counts lines and branches of what is written by hand: the library but for its kernels, which are
# straight-line code, the generator, and the companion header in the program of its tests.

get_target_property(written zvxg_objects SOURCES)
foreach(target zvxg_objects_${ZVXG_LEVEL} zvxg_kernels_dct4_base_for_base)
  get_target_property(others ${target} SOURCES)
  list(APPEND written ${others})
endforeach()
list(FILTER written EXCLUDE REGEX "^/")
list(TRANSFORM written PREPEND ${PROJECT_SOURCE_DIR}/src/)
# Tests call the library on threads, and a count that two of them raise at once may go astray.
set_source_files_properties(${written} DIRECTORY src PROPERTIES
  COMPILE_OPTIONS "--coverage;-fprofile-update=atomic;-O0")
target_compile_options(zvxg_companion_tests PRIVATE --coverage -O0)
# The generator prints and interprets all kernels, which would take minutes without optimisation.
foreach(target zvxg_kernel_id zvxg_kernelgen_core zvxg_kernelgen)
  target_compile_options(${target} PRIVATE --coverage -O1)
endforeach()
foreach(target zvxg zvxg_static zvxg_kernel_id zvxg_kernelgen_core)
  target_link_options(${target} PUBLIC --coverage)
endforeach()
