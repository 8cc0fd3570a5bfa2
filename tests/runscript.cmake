# Plays one script and compares what it said, and what a person would have noticed, with what is
# expected. The real output stays in WORK for a look.
cmake_minimum_required(VERSION 3.24)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/content ${WORK}/home)
file(COPY ${SCRIPTS}/${NAME}.mps DESTINATION ${WORK}/content)
file(RENAME ${WORK}/content/${NAME}.mps ${WORK}/content/Startup.mps)
file(COPY ${SAMPLE}/RSC DESTINATION ${WORK}/content)
foreach(folder ${SCRIPTS}/${NAME} ${BUILT}/${NAME})
  if(IS_DIRECTORY ${folder})
    # Over files of the sample with the same name, which file(COPY) keeps when they are as old.
    execute_process(COMMAND ${CMAKE_COMMAND} -E copy_directory ${folder} ${WORK}/content)
  endif()
endforeach()

set(input)
if(EXISTS ${SCRIPTS}/${NAME}.input)
  set(input --input ${SCRIPTS}/${NAME}.input)
endif()
set(options)
if(EXISTS ${SCRIPTS}/${NAME}.options)
  file(STRINGS ${SCRIPTS}/${NAME}.options options)
  separate_arguments(options UNIX_COMMAND "${options}")
endif()
execute_process(
  COMMAND ${PROGRAM} --headless --content ${WORK}/content --home ${WORK}/home --seed 1
          --until 20000 ${input} ${options}
  WORKING_DIRECTORY ${WORK} OUTPUT_FILE ${WORK}/report.txt RESULT_VARIABLE code)

function(compare actual expected)
  if(NOT EXISTS ${expected})
    return()
  endif()
  set(got "")
  if(EXISTS ${actual})
    file(READ ${actual} got)
  endif()
  file(READ ${expected} wanted)
  if(NOT got STREQUAL wanted)
    message(SEND_ERROR "${actual} differs from ${expected}:\n${got}")
  endif()
endfunction()

compare(${WORK}/content/debug.txt ${SCRIPTS}/${NAME}.out)
compare(${WORK}/report.txt ${SCRIPTS}/${NAME}.report)
if(NOT EXISTS ${SCRIPTS}/${NAME}.report AND NOT code EQUAL 0)
  message(SEND_ERROR "the program ended with ${code}")
endif()
