# The recorded visit to the sample game: what a person would have noticed, a picture for every place,
# and what was heard. A click must be seen: the pictures before and after it differ. Who signed in must
# be remembered.
cmake_minimum_required(VERSION 3.24)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/home)
get_filename_component(player ${PROGRAM}/../../sample/player.mps ABSOLUTE)
file(REMOVE ${player})

function(visit sound report)
  execute_process(COMMAND ${PROGRAM} --headless --input ${INPUT} --seed 1 --home ${WORK}/home
    --record-sound ${WORK}/${sound}
    WORKING_DIRECTORY ${WORK} OUTPUT_FILE ${WORK}/${report} RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "the program ended with ${code}")
  endif()
endfunction()
visit(sound report.txt)

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

# The name is Latin-1, as the accent in "Inês" shows; the lighthouse has changed the greeting.
set(remembered "")
if(EXISTS ${player})
  file(READ ${player} remembered HEX)
endif()
string(HEX "visitor=\"In" name)
string(HEX "s\"\ngreeting=\"Ol" greeting)
if(NOT remembered MATCHES "${name}ea${greeting}e1")
  message(SEND_ERROR "${player} does not tell who signed in")
endif()

execute_process(COMMAND ${LISTEN} ${WORK}/sound ${SOUNDS} ${HEARD} RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  message(SEND_ERROR "what was heard differs from ${HEARD}")
endif()

# Another visit sounds the same, to the byte.
visit(again again.txt)
file(GLOB recordings RELATIVE ${WORK}/sound ${WORK}/sound/*)
foreach(recording IN LISTS recordings)
  file(SHA256 ${WORK}/sound/${recording} first)
  file(SHA256 ${WORK}/again/${recording} second)
  if(NOT first STREQUAL second)
    message(SEND_ERROR "${recording} is another one in the second visit")
  endif()
endforeach()
