# The recorded visit to the sample game: what a person would have noticed, a picture for every place,
# and what was heard. A click must be seen: the pictures before and after it differ. Who signed in must
# be remembered from visit to visit.
cmake_minimum_required(VERSION 3.24)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/home ${WORK}/elsewhere)

# Leaves what would have been noticed in `report`, and what was heard in the folder `sound`.
function(visit input home sound)
  execute_process(COMMAND ${PROGRAM} --headless --input ${input} --seed 1 --home ${WORK}/${home}
    --record-sound ${WORK}/${sound}
    WORKING_DIRECTORY ${WORK} OUTPUT_VARIABLE report RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "the program ended with ${code}")
  endif()
  string(REGEX REPLACE "[0-9]+\ttitle\t[0-9]+\n" "" report "${report}") # frames per second
  if(report MATCHES "\tbox\t")
    message(SEND_ERROR "something is wrong with the scripts:\n${report}")
  endif()
  set(report "${report}" PARENT_SCOPE)
endfunction()

# The players in the data file must be those of the list, which is UTF-8; names there are Latin-1.
function(expect_players home expected)
  set(file ${WORK}/${home}/ZORBET.DAT)
  set(bytes)
  if(EXISTS ${file})
    file(READ ${file} bytes HEX)
  endif()
  string(HEX "playerName\n" property)
  string(REGEX MATCHALL "${property}(0[0-9b-f]|[1-9a-f][0-9a-f])*0a" players "${bytes}")
  set(wanted)
  foreach(name IN LISTS expected)
    string(HEX "${name}\n" name)
    string(REPLACE "c3aa" "ea" name "${name}")
    list(APPEND wanted ${property}${name})
  endforeach()
  if(NOT players STREQUAL wanted)
    message(SEND_ERROR "the players in ${file} are not: ${expected}")
  endif()
endfunction()

function(tour home sound)
  visit(${INPUT} ${home} ${sound})
  file(READ ${EXPECTED} expected)
  if(NOT report STREQUAL expected)
    message(SEND_ERROR "the report differs from ${EXPECTED}:\n${report}")
  endif()
  expect_players(${home} "Inês")
endfunction()

tour(home sound)
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

execute_process(COMMAND ${LISTEN} ${WORK}/sound ${SOUNDS} ${HEARD} RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  message(SEND_ERROR "what was heard differs from ${HEARD}")
endif()

# Another visit sounds the same, to the byte. (Not in the same home: no player is made there any more,
# and so random numbers are others.)
tour(elsewhere again)
file(GLOB recordings RELATIVE ${WORK}/sound ${WORK}/sound/*)
foreach(recording IN LISTS recordings)
  file(SHA256 ${WORK}/sound/${recording} first)
  file(SHA256 ${WORK}/again/${recording} second)
  if(NOT first STREQUAL second)
    message(SEND_ERROR "${recording} is another one in the second visit")
  endif()
endforeach()

# Who comes back is the same player. A new name is another one, and stands in the book at the next visit.
tour(home back)
visit(${CMAKE_CURRENT_LIST_DIR}/tour.newcomer home newcomer)
expect_players(home "Inês;Zita")
visit(${CMAKE_CURRENT_LIST_DIR}/tour.farewell home farewell)
expect_players(home "Inês")
