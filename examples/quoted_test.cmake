# A document shows a program word for word and then what it prints.
# cmake -D PROGRAM=program -D SOURCE=its-source -D DOCUMENT=document -P quoted_test.cmake

file(READ ${SOURCE} source)
file(READ ${DOCUMENT} document)
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
foreach(part source output)
  string(FIND "${document}" "\n${${part}}```" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "${DOCUMENT} does not show this ${part} of ${PROGRAM}:\n${${part}}")
  endif()
endforeach()
