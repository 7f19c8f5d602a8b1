# Adds the page of a program's manual, which the program itself writes. Where it cannot run, as in a
# build for another machine, there is none.
function(textmanager_add_man_page program)
  if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    return()
  endif()
  set(page ${CMAKE_CURRENT_BINARY_DIR}/${program}.1)
  add_custom_command(OUTPUT ${page}
    COMMAND ${program} __man > ${page}
    DEPENDS ${program}
    VERBATIM)
  add_custom_target(${program}-man ALL DEPENDS ${page})
  if(TEXTMANAGER_INSTALL_PROGRAMS)
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  endif()
endfunction()
