# Makes the SPDX document of what is built: which parts the libraries and programs link, read from
# themselves, and which are compiled in, with versions as the build found them.

set(spdx_document ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}.spdx.json)
set(spdx_targets TextManagerLibrary)
if(TEXTMANAGER_INSTALL_PROGRAMS)
  set(programs textmanager device-simulator)
endif()
foreach(target ReferencePlatform TextManagerMessages TextManagerQuick ${programs})
  if(TARGET ${target})
    list(APPEND spdx_targets ${target})
  endif()
endforeach()
list(TRANSFORM spdx_targets REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE spdx_files)

# Versions are asked for where the parts were found; an empty one is said to be unknown.
file(STRINGS ${XXHASH_INCLUDE_DIR}/xxhash.h xxhash_numbers
  REGEX "^ *# *define +XXH_VERSION_(MAJOR|MINOR|RELEASE) +[0-9]+")
list(TRANSFORM xxhash_numbers REPLACE ".* ([0-9]+).*" "\\1")
list(JOIN xxhash_numbers "." spdx_version_xxHash)
set(spdx_version_Qt ${${TEXTMANAGER_QT}Core_VERSION})
find_package(PkgConfig QUIET)
foreach(part dbus-1:DBus icu-i18n:ICU libutf8proc:utf8proc RapidJSON:RapidJSON)
  string(REGEX MATCH "^(.*):(.*)$" part ${part})
  set(name ${CMAKE_MATCH_2})
  if(PKG_CONFIG_FOUND)
    pkg_check_modules(spdx_${name} QUIET ${CMAKE_MATCH_1})
  endif()
  set(spdx_version_${name} ${spdx_${name}_VERSION})
endforeach()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  set(spdx_version_libstdcxx ${CMAKE_CXX_COMPILER_VERSION})
endif()

# The time of the document is that of the sources, so that the same sources give the same document.
set(spdx_time $ENV{SOURCE_DATE_EPOCH})
if(NOT spdx_time)
  execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} log -1 --format=%ct
    OUTPUT_VARIABLE spdx_time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()

set(spdx_settings ${PROJECT_BINARY_DIR}/spdx_settings.cmake)
file(GENERATE OUTPUT ${spdx_settings} CONTENT
"set(document [[${spdx_document}]])
set(package ${TEXTMANAGER_PACKAGE})
set(version ${PROJECT_VERSION})
set(time [[${spdx_time}]])
set(readelf [[${CMAKE_READELF}]])
set(files [[${spdx_files}]])
set(version_Qt [[${spdx_version_Qt}]])
set(version_DBus [[${spdx_version_DBus}]])
set(version_ICU [[${spdx_version_ICU}]])
set(version_utf8proc [[${spdx_version_utf8proc}]])
set(version_xxHash [[${spdx_version_xxHash}]])
set(version_RapidJSON [[${spdx_version_RapidJSON}]])
set(version_libstdcxx [[${spdx_version_libstdcxx}]])
")
add_custom_command(OUTPUT ${spdx_document}
  COMMAND ${CMAKE_COMMAND} -D settings=${spdx_settings} -P ${CMAKE_CURRENT_LIST_DIR}/WriteSpdx.cmake
  DEPENDS ${spdx_targets} ${spdx_settings} ${CMAKE_CURRENT_LIST_DIR}/WriteSpdx.cmake
  VERBATIM)
add_custom_target(spdx ALL DEPENDS ${spdx_document})
install(FILES ${spdx_document}
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${TEXTMANAGER_PACKAGE} COMPONENT development)
