# Builds the library by a PRESET for a sanitizer and runs every function of it, on so many THREADS
# besides the first. A report ends the program.

foreach(command
    "${CMAKE_COMMAND} --preset ${PRESET} --log-level=WARNING"
    "${CMAKE_COMMAND} --build --preset ${PRESET} --parallel 2 --target zvxg_every_call"
    "${SOURCE}/build/${PRESET}/zvxg_every_call ${THREADS}")
  separate_arguments(words UNIX_COMMAND ${command})
  execute_process(COMMAND ${words} WORKING_DIRECTORY ${SOURCE} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed: ${command}")
  endif()
endforeach()
