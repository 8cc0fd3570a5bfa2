# Libraries that are unpacked and packed again are the same files, and so are their maps.
cmake_minimum_required(VERSION 3.24)
file(REMOVE_RECURSE ${WORK})
file(GLOB files ${RSC}/*)
list(LENGTH files count)
if(count LESS 2)
  message(FATAL_ERROR "there are no libraries in ${RSC}")
endif()
foreach(command "extract;${files};-o;${WORK}/unpacked"
                "pack;${WORK}/unpacked/resources.manifest;-o;${WORK}/RSC"
                "map;${WORK}/RSC/harbour.rsc;${WORK}/RSC/light.rsc;${WORK}/RSC/sounds.rsc;--name;ZORBET-SAMPLE;-o;${WORK}")
  execute_process(COMMAND ${PROGRAM} ${command} RESULT_VARIABLE code OUTPUT_VARIABLE said)
  if(NOT code EQUAL 0 OR said)
    message(FATAL_ERROR "${command}: ended with ${code}\n${said}")
  endif()
endforeach()
foreach(file IN LISTS files)
  get_filename_component(name ${file} NAME)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${file} ${WORK}/RSC/${name}
    RESULT_VARIABLE differs)
  if(differs)
    message(SEND_ERROR "${name} came back with other bytes")
  endif()
endforeach()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${RSC}/resource.map ${WORK}/resource.map
  RESULT_VARIABLE differs)
if(differs)
  message(SEND_ERROR "\"map\" writes another map than \"pack\"")
endif()

file(READ ${WORK}/unpacked/resources.manifest manifest)
if(manifest MATCHES "file ASEQ|file RRGB|layout")
  message(SEND_ERROR "something of ours was not unpacked")
endif()
