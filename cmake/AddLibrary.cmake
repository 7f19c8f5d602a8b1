include(GenerateExportHeader)

# textmanager_add_library(TARGET [OUTPUT_NAME NAME] [INCLUDE_DIR FOLDER]
#   EXPORT_NAME NAME EXPORT_SET SET COMPONENT COMPONENT FOLDER FOLDER HEADERS HEADER... SOURCES SOURCE...)
#
# Adds and installs one of the project's shared libraries. In this tree others link it as
# TextManagerLibrary::EXPORT_NAME, whichever Qt it is built with.
#   OUTPUT_NAME  the name of its file, by default TARGET
#   INCLUDE_DIR  where its headers stand, by default the folder include beside the caller
#   EXPORT_NAME  its target's name in the installed package
#   EXPORT_SET   which targets of the package it is installed with
#   COMPONENT    what is installed with it alone; its headers belong to the component development
#   FOLDER       where its headers are installed, below those of the package
#   HEADERS      what clients include; the header of its export macro is made, and joins them
function(textmanager_add_library target)
  cmake_parse_arguments(PARSE_ARGV 1 library ""
    "OUTPUT_NAME;INCLUDE_DIR;EXPORT_NAME;EXPORT_SET;COMPONENT;FOLDER" "HEADERS;SOURCES")
  if(NOT library_OUTPUT_NAME)
    set(library_OUTPUT_NAME ${target})
  endif()
  if(NOT library_INCLUDE_DIR)
    set(library_INCLUDE_DIR ${CMAKE_CURRENT_SOURCE_DIR}/include)
  endif()
  list(TRANSFORM library_HEADERS PREPEND ${library_INCLUDE_DIR}/)
  set(export_header ${CMAKE_CURRENT_BINARY_DIR}/include/${target}Export.h)
  cmake_path(APPEND installed_headers ${CMAKE_INSTALL_INCLUDEDIR} ${TEXTMANAGER_PACKAGE} ${library_FOLDER})

  add_library(${target} SHARED ${library_HEADERS} ${library_SOURCES})
  generate_export_header(${target} EXPORT_FILE_NAME ${export_header})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${library_OUTPUT_NAME}${TEXTMANAGER_SUFFIX}
    EXPORT_NAME ${library_EXPORT_NAME}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  target_compile_features(${target} PUBLIC cxx_std_17)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # Else a class with virtual functions is described only where its first one is compiled, and a
    # comparison of interfaces sees none of its functions that are compiled elsewhere.
    target_compile_options(${target} PRIVATE $<$<CONFIG:Debug,RelWithDebInfo>:-femit-class-debug-always>)
  endif()
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${library_INCLUDE_DIR}>
    $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}/include>
    $<INSTALL_INTERFACE:${installed_headers}>)

  install(TARGETS ${target} EXPORT ${library_EXPORT_SET}
    LIBRARY COMPONENT ${library_COMPONENT} NAMELINK_COMPONENT development)
  install(FILES ${library_HEADERS} ${export_header} DESTINATION ${installed_headers} COMPONENT development)
endfunction()
