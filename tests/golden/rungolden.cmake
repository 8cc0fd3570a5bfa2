# Plays a scene and compares what was on the screen with its golden pictures, pixel by pixel.
#
# SCENE holds Startup.mps and `input`, or `as` with the name of the scene that has them; `runs`, with
# the options of one run a line, a word "ini:KEY=VALUE" being a setting of ZORBET.INI; and the
# pictures, or `same` with the name of the scene that has them. Every run must show the same
# pictures. With ZORBET_RENEW in the environment the pictures of the first run are stored instead.
cmake_minimum_required(VERSION 3.24)

function(named_scene result mark)
  set(${result} ${SCENE} PARENT_SCOPE)
  if(EXISTS ${SCENE}/${mark})
    file(STRINGS ${SCENE}/${mark} name)
    set(${result} ${SCENE}/../${name} PARENT_SCOPE)
  endif()
endfunction()
named_scene(played as)
named_scene(golden same)

set(runs " ")
if(EXISTS ${SCENE}/runs)
  file(STRINGS ${SCENE}/runs runs)
endif()
file(STRINGS ${played}/input events REGEX " screenshot ")
string(REGEX REPLACE "[0-9]+ screenshot " "" pictures "${events}")

function(play work run)
  file(REMOVE_RECURSE ${work})
  file(MAKE_DIRECTORY ${work}/content/RSC ${work}/home)
  execute_process(COMMAND ${LIBRARY} ${work}/content/RSC RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "the library cannot be written")
  endif()
  file(COPY ${played}/Startup.mps DESTINATION ${work}/content)
  separate_arguments(words UNIX_COMMAND "${run}")
  set(settings ${words})
  list(FILTER settings INCLUDE REGEX "^ini:")
  list(FILTER words EXCLUDE REGEX "^ini:")
  if(settings)
    list(TRANSFORM settings REPLACE "^ini:" "")
    list(JOIN settings "\n" lines)
    file(WRITE ${work}/content/ZORBET.INI "[Zorbet Voyages - CD]\n${lines}\n")
  endif()
  execute_process(
    COMMAND ${PROGRAM} --headless --content ${work}/content --home ${work}/home --seed 1
            --input ${played}/input --until 5000 ${words}
    WORKING_DIRECTORY ${work} OUTPUT_VARIABLE report RESULT_VARIABLE code)
  if(NOT code EQUAL 0 OR report MATCHES "\tbox\t")
    message(SEND_ERROR "the program ended with ${code} and told\n${report}")
  endif()
endfunction()

set(number 0)
foreach(run IN LISTS runs)
  math(EXPR number "${number} + 1")
  set(work ${WORK}/${number})
  play(${work} "${run}")
  foreach(picture IN LISTS pictures)
    if(number EQUAL 1 AND golden STREQUAL SCENE AND DEFINED ENV{ZORBET_RENEW})
      file(COPY ${work}/${picture} DESTINATION ${SCENE})
    endif()
    execute_process(COMMAND ${COMPARE} ${work}/${picture} ${golden}/${picture}
      RESULT_VARIABLE code)
    if(NOT code EQUAL 0)
      message(SEND_ERROR "${work}/${picture} differs from ${golden}/${picture} (run \"${run}\")")
    endif()
  endforeach()
endforeach()
