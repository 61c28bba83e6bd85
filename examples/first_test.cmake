# README.md shows first.c word for word and then what it prints.
# cmake -D FIRST=program -D SOURCE=first.c -D README=README.md -P first_test.cmake

file(READ ${SOURCE} source)
file(READ ${README} readme)
execute_process(COMMAND ${FIRST} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
foreach(part source output)
  string(FIND "${readme}" "\n${${part}}```" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "README.md does not show this ${part} of first:\n${${part}}")
  endif()
endforeach()
