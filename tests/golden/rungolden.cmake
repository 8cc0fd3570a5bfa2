# Plays a scene and compares what was on the screen with its golden pictures, pixel by pixel. What was
# shown, and pictures of the differences, stay in WORK for a look.
#
# SCENE holds
#   Startup.mps, input   what is played, until the input's last line; or `as` with the name of the scene
#                        that has them
#   PICTURE.png          what the screenshots must show; or `same` with the name of the scene that has
#                        them. Of a screenshot PICTURE.LATER.png only the part before the dot counts.
#   said                 what the scripts say
#   boxes                the boxes that the report tells, without the times; none are shown otherwise
#   face                 the type face of the scenes (goldenface.cpp) is the only one of the machine
#   progress.map         the layout of its progress screens, if not the built-in one
#   runs                 the options of one run a line, instead of the usual runs below. Three words
#                        are no options of the program: "ini:KEY=VALUE" is a setting of ZORBET.INI,
#                        "depth:N" and "at:X,Y" tell the comparison about the screen
#                        (goldencompare.cpp).
# Scripts beside the scenes' folders are for all scenes to include.
# All runs must show the same. With ZORBET_RENEW=1 in the environment the pictures of the first run, and
# what was said in it, are stored instead.
cmake_minimum_required(VERSION 3.24)

set(runs
  " "
  "ini:UseDirectDraw=1"
  "ini:UseDirectDraw=1 ini:DisplayFullScreen=1"
  "ini:UseDirectDraw=1 --screen 640x480x16 depth:16"
  "ini:UseDirectDraw=1 --screen 640x480x24 depth:24"
  "ini:UseDirectDraw=1 --screen 640x480x32 depth:32")
if(EXISTS ${SCENE}/runs)
  file(STRINGS ${SCENE}/runs runs)
endif()
if(FEW)
  list(GET runs 0 -1 runs)
endif()

function(named_scene result mark)
  set(${result} ${SCENE} PARENT_SCOPE)
  if(EXISTS ${SCENE}/${mark})
    file(STRINGS ${SCENE}/${mark} name)
    set(${result} ${SCENE}/../${name} PARENT_SCOPE)
  endif()
endfunction()
named_scene(played as)
named_scene(golden same)

file(STRINGS ${played}/input events REGEX " screenshot ")
string(REGEX REPLACE "[0-9]+ screenshot " "" screenshots "${events}")
file(STRINGS ${played}/input times REGEX "^[0-9]")
list(TRANSFORM times REPLACE " .*" "")
list(POP_BACK times end)
math(EXPR end "${end} + 1")
set(boxes)
if(EXISTS ${played}/boxes)
  file(STRINGS ${played}/boxes boxes)
endif()

# Takes the words PREFIX:VALUE out of `words` and puts the values into `result`.
macro(take_words prefix result)
  set(${result} ${words})
  list(FILTER ${result} INCLUDE REGEX "^${prefix}:")
  list(FILTER words EXCLUDE REGEX "^${prefix}:")
  list(TRANSFORM ${result} REPLACE "^${prefix}:" "")
endmacro()

function(play work settings)
  file(MAKE_DIRECTORY ${work}/content ${work}/home)
  file(CREATE_LINK ${WORK}/RSC ${work}/content/RSC SYMBOLIC)
  file(GLOB scripts ${played}/Startup.mps ${played}/../*.mps)
  file(COPY ${scripts} DESTINATION ${work}/content)
  if(EXISTS ${played}/progress.map)
    file(COPY ${played}/progress.map DESTINATION ${work}/content/scripts)
  endif()
  if(settings)
    list(JOIN settings "\n" lines)
    file(WRITE ${work}/content/ZORBET.INI "[Zorbet Voyages - CD]\n${lines}\n")
  endif()
  # Nobody is there to be warned of large and deep screens.
  foreach(home content home)
    file(WRITE ${work}/${home}/ZORBET.DAT
      "informResolutionWarning\n0\ninformColorsWarning\n0\nGLOBAL_END\n")
  endforeach()
  execute_process(
    COMMAND ${PROGRAM} --headless --content ${work}/content --home ${work}/home --seed 1
            --input ${played}/input --until ${end} ${ARGN}
    WORKING_DIRECTORY ${work} OUTPUT_FILE ${work}/report.txt RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(SEND_ERROR "${work}: the program ended with ${code}")
  endif()
  file(STRINGS ${work}/report.txt shown REGEX "\t(box|dialog)\t")
  list(TRANSFORM shown REPLACE "^[0-9]+\t" "")
  if(NOT "${shown}" STREQUAL "${boxes}")
    message(SEND_ERROR "${work}: it showed the boxes\n${shown}\nand not\n${boxes}")
  endif()
endfunction()

function(compare_said actual)
  if(NOT EXISTS ${played}/said)
    return()
  endif()
  set(got "")
  if(EXISTS ${actual})
    file(READ ${actual} got)
  endif()
  file(READ ${played}/said wanted)
  if(NOT got STREQUAL wanted)
    message(SEND_ERROR "${actual} differs from ${played}/said:\n${got}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/RSC)
execute_process(COMMAND ${LIBRARY} ${WORK}/RSC RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "the library cannot be written")
endif()
if(EXISTS ${played}/face)
  file(MAKE_DIRECTORY ${WORK}/fonts)
  execute_process(COMMAND ${FACE} ${WORK}/fonts/golden.ttf RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "the type face cannot be written")
  endif()
  file(WRITE ${WORK}/fonts.conf
    "<fontconfig><dir>${WORK}/fonts</dir><cachedir>${WORK}/cache</cachedir></fontconfig>\n")
  set(ENV{FONTCONFIG_FILE} ${WORK}/fonts.conf)
endif()
file(GLOB stored RELATIVE ${golden} ${golden}/*.png)
set(number 0)
foreach(run IN LISTS runs)
  math(EXPR number "${number} + 1")
  set(work ${WORK}/${number})
  separate_arguments(words UNIX_COMMAND "${run}")
  take_words(ini settings)
  take_words(depth depth)
  take_words(at at)
  list(TRANSFORM depth PREPEND "--depth;")
  list(TRANSFORM at PREPEND "--at;")
  play(${work} "${settings}" ${words})
  if("$ENV{ZORBET_RENEW}" STREQUAL "1" AND number EQUAL 1 AND EXISTS ${played}/said)
    file(COPY_FILE ${work}/content/debug.txt ${played}/said)
  endif()
  compare_said(${work}/content/debug.txt)
  foreach(screenshot IN LISTS screenshots)
    string(REGEX REPLACE "\\..*" ".png" picture ${screenshot})
    list(REMOVE_ITEM stored ${picture})
    if("$ENV{ZORBET_RENEW}" STREQUAL "1" AND number EQUAL 1 AND golden STREQUAL SCENE
       AND screenshot STREQUAL picture)
      file(COPY ${work}/${picture} DESTINATION ${SCENE})
    endif()
    execute_process(
      COMMAND ${COMPARE} ${work}/${screenshot} ${golden}/${picture}
              ${work}/difference-${screenshot} ${depth} ${at}
      OUTPUT_VARIABLE told ERROR_VARIABLE told RESULT_VARIABLE code)
    if(NOT code EQUAL 0)
      message(SEND_ERROR
        "${work}/${screenshot} differs from ${golden}/${picture} (run \"${run}\")\n${told}")
    endif()
  endforeach()
endforeach()
if(stored)
  message(SEND_ERROR "nothing is compared with ${stored}")
endif()
