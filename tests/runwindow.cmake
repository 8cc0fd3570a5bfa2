# The same program in a real window, on a screen without a monitor: a script runs and ends it.
cmake_minimum_required(VERSION 3.24)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/content ${WORK}/home)
file(COPY ${SCRIPTS}/scene.mps DESTINATION ${WORK}/content)
file(RENAME ${WORK}/content/scene.mps ${WORK}/content/Startup.mps)
file(COPY ${SAMPLE}/RSC DESTINATION ${WORK}/content)
execute_process(
  COMMAND ${XVFB_RUN} -a -s "-screen 0 800x600x24" ${PROGRAM} --content ${WORK}/content
          --home ${WORK}/home --seed 1
  RESULT_VARIABLE code TIMEOUT 60)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "the program ended with ${code}")
endif()
file(READ ${WORK}/content/debug.txt got)
file(READ ${SCRIPTS}/scene.out wanted)
if(NOT got STREQUAL wanted)
  message(FATAL_ERROR "debug.txt differs from scene.out:\n${got}")
endif()
