# textmanager_add_keys(TARGET FOLDER [HEADER NAME] [NAMESPACE NAME] [BASE KEY])
#
# Makes a header in which each text URL of a folder of language files is a constant, and adds it to
# a target, so that a misspelt URL does not compile:
#
#   textmanager_add_keys(application ${CMAKE_CURRENT_SOURCE_DIR}/languages)
#
#   #include <TextKeys.h>
#   texts.getText(TextKeys::Menu::Save, QString());
#
# The header is made again when a language file changes, and written only where a constant does. The
# program textmanager of the build machine makes it; TEXTMANAGER_EXECUTABLE says where that is.
function(textmanager_add_keys target folder)
  cmake_parse_arguments(PARSE_ARGV 2 keys "" "HEADER;NAMESPACE;BASE" "")
  if(keys_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "textmanager_add_keys: unexpected arguments: ${keys_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT keys_HEADER)
    set(keys_HEADER TextKeys.h)
  endif()
  set(options)
  if(keys_NAMESPACE)
    list(APPEND options --namespace ${keys_NAMESPACE})
  endif()
  if(keys_BASE)
    list(APPEND options --base ${keys_BASE})
  endif()

  if(NOT CMAKE_CROSSCOMPILING) # else the one beside the library is the device's
    set(hints HINTS ${TextManagerLibrary_PROGRAM_DIR})
  endif()
  find_program(TEXTMANAGER_EXECUTABLE textmanager ${hints})
  if(NOT TEXTMANAGER_EXECUTABLE)
    message(FATAL_ERROR "textmanager_add_keys: the program textmanager is not there. Install the tools of "
      "TextManagerLibrary for the build machine, or set TEXTMANAGER_EXECUTABLE to it.")
  endif()

  get_filename_component(folder ${folder} ABSOLUTE)
  file(GLOB language_files CONFIGURE_DEPENDS ${folder}/*.*) # a platform may call them otherwise than .json
  if(NOT language_files)
    message(FATAL_ERROR "textmanager_add_keys: there is no file in ${folder}.")
  endif()
  set(header_folder ${CMAKE_CURRENT_BINARY_DIR}/${target}_keys)
  file(MAKE_DIRECTORY ${header_folder})
  add_custom_command(
    OUTPUT ${header_folder}/${keys_HEADER}
    COMMAND ${TEXTMANAGER_EXECUTABLE} keys ${folder} --header ${header_folder}/${keys_HEADER} ${options}
    DEPENDS ${language_files} ${TEXTMANAGER_EXECUTABLE}
    COMMENT "Making ${keys_HEADER} of the texts in ${folder}"
    VERBATIM)
  target_sources(${target} PRIVATE ${header_folder}/${keys_HEADER})
  target_include_directories(${target} PRIVATE ${header_folder})
endfunction()
