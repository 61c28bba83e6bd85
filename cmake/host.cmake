# The programs of a cross build that run during the build: the generator and the list of exported
# functions. This tree is built for them as it is on this machine, unless ZVXG_KERNELGEN names a
# generator of the same sources; then only the list is.

include(ExternalProject)
set(ZVXG_KERNELGEN "" CACHE FILEPATH "In a cross build: a generator that runs on this machine")

set(directory ${PROJECT_BINARY_DIR}/host)
set(interfaceList ${directory}/tools/interface/interface)
set(kernelgen ${ZVXG_KERNELGEN})
set(targets zvxg_interface_list)
set(programs ${interfaceList})
if(NOT kernelgen)
  set(kernelgen ${directory}/tools/kernelgen/kernelgen)
  list(APPEND targets zvxg_kernelgen)
  list(APPEND programs ${kernelgen})
endif()

ExternalProject_Add(zvxg_host
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${directory}
  CMAKE_GENERATOR Ninja
  CMAKE_ARGS -D CMAKE_BUILD_TYPE=Release -D CMAKE_CXX_FLAGS=-w -D ZVXG_MANY=OFF -D ZVXG_VARIANTS=OFF -D ZVXG_TESTS=OFF
    -D ZVXG_BENCH=OFF -D ZVXG_EXAMPLES=OFF -D ZVXG_INSTALL=OFF
  BUILD_COMMAND ${CMAKE_COMMAND} --build ${directory} --target ${targets}
  BUILD_ALWAYS ON
  BUILD_BYPRODUCTS ${programs}
  INSTALL_COMMAND "")

# host_program(TARGET FILE)
function(host_program target file)
  add_executable(${target} IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES IMPORTED_LOCATION ${file})
  add_dependencies(${target} zvxg_host)
endfunction()
host_program(zvxg_kernelgen ${kernelgen})
host_program(zvxg_interface_list ${interfaceList})
