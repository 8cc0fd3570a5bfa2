# The recorded visit to the sample game: what a person would have noticed, a picture for every place,
# and what was heard. A click must be seen: the pictures before and after it differ. Who signed in must
# be remembered from visit to visit, to which chart and which levels they have come, and what is in the bag.
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

# The numbers of this property, one of each player, in the order of the players.
function(expect_numbers home property expected)
  set(file ${WORK}/${home}/ZORBET.DAT)
  file(STRINGS ${file} lines)
  set(numbers)
  set(next FALSE)
  foreach(line IN LISTS lines)
    if(next)
      list(APPEND numbers ${line})
    endif()
    string(COMPARE EQUAL "${line}" ${property} next)
  endforeach()
  if(NOT numbers STREQUAL expected)
    message(SEND_ERROR "${property} in ${file} is not ${expected} but ${numbers}")
  endif()
endfunction()

# The bytes of the first player's numbers, from there on, each so many bytes behind the one before.
function(read_numbers home from step count)
  file(READ ${WORK}/${home}/ZORBET.DAT bytes HEX)
  string(HEX "GLOBAL_END\n" globals_end)
  string(FIND "${bytes}" ${globals_end} player)
  string(LENGTH ${globals_end} length)
  math(EXPR at "${player} + ${length} + 2 * ${from}") # two digits a byte
  set(numbers)
  foreach(k RANGE 1 ${count})
    string(SUBSTRING "${bytes}" ${at} 2 digits)
    math(EXPR number "0x${digits}")
    list(APPEND numbers ${number})
    math(EXPR at "${at} + 2 * ${step}")
  endforeach()
  set(numbers "${numbers}" PARENT_SCOPE)
endfunction()

# The levels at which the first player is in the activities CWS1, CWS2 and so on: 660 bytes before the
# activities, 108 before the level of one, of 232 bytes.
function(expect_levels home expected)
  list(LENGTH expected count)
  read_numbers(${home} 768 232 ${count})
  if(NOT numbers STREQUAL expected)
    message(SEND_ERROR "the levels in ${home} are not ${expected} but ${numbers}")
  endif()
endfunction()

# Whether levels change by themselves there.
function(expect_auto home expected)
  list(LENGTH expected count)
  read_numbers(${home} 660 232 ${count})
  if(NOT numbers STREQUAL expected)
    message(SEND_ERROR "whether levels change in ${home} is not ${expected} but ${numbers}")
  endif()
endfunction()

# The first slots of the first player's bag.
function(expect_bag home expected)
  list(LENGTH expected count)
  read_numbers(${home} 240 4 ${count})
  if(NOT numbers STREQUAL expected)
    message(SEND_ERROR "in the bag in ${home} is not ${expected} but ${numbers}")
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
expect_numbers(home chartLevel 2)
expect_levels(home "3;1;1;1") # the first one chosen in the logbook
expect_auto(home "1;0;1;1")
expect_bag(home "0;0;2;0")
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
# and so random numbers are others, and puzzles too.)
tour(elsewhere again)
file(GLOB recordings RELATIVE ${WORK}/sound ${WORK}/sound/*)
foreach(recording IN LISTS recordings)
  file(SHA256 ${WORK}/sound/${recording} first)
  file(SHA256 ${WORK}/again/${recording} second)
  if(NOT first STREQUAL second)
    message(SEND_ERROR "${recording} is another one in the second visit")
  endif()
endforeach()

# Who comes back is the same player, and goes on where they were. A new name is another one, and stands in
# the book at the next visit.
visit(${CMAKE_CURRENT_LIST_DIR}/tour.comeback home back)
expect_players(home "Inês")
expect_numbers(home chartLevel 2)
expect_levels(home "3;1;1;1")
expect_bag(home "0;0;2;0")
visit(${CMAKE_CURRENT_LIST_DIR}/tour.newcomer home newcomer)
expect_players(home "Inês;Zita")
expect_numbers(home chartLevel "2;0")
visit(${CMAKE_CURRENT_LIST_DIR}/tour.farewell home farewell)
expect_players(home "Inês")
