# The program makes a movie of pictures and a sound of the sample, and lists it.
cmake_minimum_required(VERSION 3.24)
execute_process(
  COMMAND ${PROGRAM} movie --palette-at 2 ${PICTURES}/background.png ${PICTURES}/background2.png
          --palette-at 3 ${PICTURES}/background3.png --frame-time 20000 --ring
          --sound ${PICTURES}/sounds/waves.wav -o ${WORK}.smk
  COMMAND_ERROR_IS_FATAL ANY ERROR_VARIABLE said)
execute_process(COMMAND ${PROGRAM} list ${WORK}.smk OUTPUT_VARIABLE listed)
if(NOT said MATCHES "waves.wav: is longer than the pictures" OR NOT listed MATCHES
  "^640x480, 3 frames of 200.00 ms, a ring frame, sound of [0-9]+ Hz, 8 bits, mono, packed\n$")
  message(FATAL_ERROR "${said}${listed}")
endif()
foreach(wrong "--fps;0" "--frame-time;99" "--fps;15;--frame-time;6666")
  execute_process(COMMAND ${PROGRAM} movie ${PICTURES}/background.png -o ${WORK}.smk ${wrong}
    RESULT_VARIABLE code ERROR_QUIET)
  if(NOT code EQUAL 2)
    message(SEND_ERROR "\"${wrong}\" ended with ${code}")
  endif()
endforeach()
