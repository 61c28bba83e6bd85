# Builds a copy of the sources in PLACE, without a cache, and compares the libraries, byte for byte,
# with those in BUILT: neither directories nor time may leave a trace.

set(ENV{CCACHE_DISABLE} 1)
file(REMOVE_RECURSE ${PLACE})
foreach(part CMakeLists.txt cmake include src tools)
  file(COPY ${SOURCE}/${part} DESTINATION ${PLACE}/source)
endforeach()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${PLACE}/source -B ${PLACE}/build -G Ninja ${OPTIONS}
    -D ZVXG_TESTS=OFF -D ZVXG_BENCH=OFF -D ZVXG_EXAMPLES=OFF -D ZVXG_INSTALL=OFF
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${PLACE}/build --parallel 2
  COMMAND_ERROR_IS_FATAL ANY)
foreach(library zvxg.so zvxg.a zvxgmany.so zvxgmany.a zvxcore.so zvxcore.a)
  execute_process(COMMAND cmp ${BUILT}/lib${library} ${PLACE}/build/src/lib${library}
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(REMOVE_RECURSE ${PLACE})
