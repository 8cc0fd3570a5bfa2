# The Debian packages, by "cpack" in the build folder: zorbet, the engine with the tools of authors, and
# zorbet-sample, the game that the desktop shows. Each is a component that is only in packages.
set(debian ${made}/debian)
zorbet_layout(GAMES games MANUALS .gz ENGINE zorbet TOOLS zorbet SAMPLE zorbet-sample DOCS zorbet
  ALSO EXCLUDE_FROM_ALL)

# As debian/copyright and debian/changelog want their lines.
function(zorbet_indented variable file)
  file(READ ${file} text)
  string(STRIP "${text}" text)
  string(REGEX REPLACE "\n[ \t]*\n" "\n.\n" text "${text}")
  string(REPLACE "\n" "\n " text " ${text}")
  set(${variable} "${text}" PARENT_SCOPE)
endfunction()
zorbet_indented(engine_licence ${CMAKE_SOURCE_DIR}/LICENSE)
zorbet_indented(sample_licence ${CMAKE_SOURCE_DIR}/sample/LICENSE)
execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date -u -R -d ${ZORBET_RELEASED}
  OUTPUT_VARIABLE released OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
configure_file(debian/copyright.in ${debian}/copyright @ONLY)
configure_file(debian/changelog.in ${debian}/changelog @ONLY)
add_custom_command(OUTPUT ${debian}/changelog.Debian.gz
  COMMAND ${GZIP} -9nc ${debian}/changelog > ${debian}/changelog.Debian.gz
  DEPENDS ${debian}/changelog VERBATIM)
add_custom_target(debian-changelog ALL DEPENDS ${debian}/changelog.Debian.gz)

foreach(package zorbet zorbet-sample)
  install(FILES ${debian}/copyright ${debian}/changelog.Debian.gz DESTINATION share/doc/${package}
    COMPONENT ${package} EXCLUDE_FROM_ALL)
  install(FILES debian/${package}.lintian-overrides DESTINATION share/lintian/overrides RENAME ${package}
    COMPONENT ${package} EXCLUDE_FROM_ALL)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL zorbet zorbet-sample)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${ZORBET_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(CPACK_DEBIAN_ZORBET_PACKAGE_NAME zorbet)
set(CPACK_DEBIAN_ZORBET_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ZORBET_PACKAGE_RECOMMENDS zorbet-sample)
set(CPACK_DEBIAN_ZORBET_PACKAGE_SUGGESTS
  "zenity | kdialog, speech-dispatcher, espeak-ng") # the dialog that asks for a file; spoken texts
set(CPACK_DEBIAN_ZORBET_DESCRIPTION "engine for 2D games with pictures, sounds and scripts
Zorbet plays games that are made of pictures in 256 colours, sounds, movies
and plain-text scripts, in a window or, for tests, without one.
.
It comes with the tools of authors: zorbet-rsc packs pictures, sounds, fonts
and movies, zorbet-mps checks, lays out and compiles scripts, and zorbet itself
makes a small game to begin with and plays the tests of games.")

set(CPACK_DEBIAN_ZORBET-SAMPLE_PACKAGE_NAME zorbet-sample)
set(CPACK_DEBIAN_ZORBET-SAMPLE_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_ZORBET-SAMPLE_PACKAGE_DEPENDS "zorbet (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_ZORBET-SAMPLE_DESCRIPTION "adventure game for children, in Portuguese
Tilli the crab shows the way from the harbour to a lighthouse and a workshop
full of things to count, to spell and to put together. The game is for
children who begin to read, and shows authors what the engine zorbet can do.")
include(CPack)
