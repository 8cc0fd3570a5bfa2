# The recorded visit to the sample game: what a person would have noticed, and a picture for every
# place. A click must be seen: the pictures before and after it differ.
cmake_minimum_required(VERSION 3.24)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/home)
execute_process(COMMAND ${PROGRAM} --headless --input ${INPUT} --seed 1 --home ${WORK}/home
  WORKING_DIRECTORY ${WORK} OUTPUT_FILE ${WORK}/report.txt RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "the program ended with ${code}")
endif()

file(READ ${WORK}/report.txt report)
string(REGEX REPLACE "[0-9]+\ttitle\t[0-9]+\n" "" report "${report}") # frames per second
file(READ ${EXPECTED} expected)
if(NOT report STREQUAL expected)
  message(SEND_ERROR "the report differs from ${EXPECTED}:\n${report}")
endif()

file(STRINGS ${INPUT} events REGEX " screenshot ")
set(seen)
foreach(event IN LISTS events)
  string(REGEX REPLACE ".* screenshot " "" picture "${event}")
  file(SHA256 ${WORK}/${picture} hash)
  if(hash IN_LIST seen)
    message(SEND_ERROR "${picture} shows nothing new")
  endif()
  list(APPEND seen ${hash})
endforeach()
