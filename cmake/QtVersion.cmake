# Which Qt all of the project is built with, and what follows from it:
#   TEXTMANAGER_QT       the prefix of Qt's packages and targets: Qt5 or Qt6
#   TEXTMANAGER_SUFFIX   what the names of everything installed for Qt 6 end in, so that both builds
#                        can be installed side by side: empty or 6
#   TEXTMANAGER_PACKAGE  the CMake package and pkg-config module
#   TEXTMANAGER_IS_FIRST_QT  whether there is no lower Qt to build with, too

if(NOT TEXTMANAGER_QT_VERSION)
  find_package(Qt5 5.15 QUIET COMPONENTS Core)
  if(Qt5_FOUND)
    set(TEXTMANAGER_QT_VERSION 5)
  else()
    set(TEXTMANAGER_QT_VERSION 6)
  endif()
endif()
set(TEXTMANAGER_QT_VERSION ${TEXTMANAGER_QT_VERSION} CACHE STRING
  "Major version of Qt: 5 or 6; by default the one that is found, 5 when both are")
set_property(CACHE TEXTMANAGER_QT_VERSION PROPERTY STRINGS 5 6)

if(TEXTMANAGER_QT_VERSION EQUAL 5)
  set(TEXTMANAGER_QT_MINIMUM 5.15)
  set(TEXTMANAGER_SUFFIX "")
elseif(TEXTMANAGER_QT_VERSION EQUAL 6)
  set(TEXTMANAGER_QT_MINIMUM 6.4)
  set(TEXTMANAGER_SUFFIX 6)
else()
  message(FATAL_ERROR "TEXTMANAGER_QT_VERSION is '${TEXTMANAGER_QT_VERSION}': set it to 5 or 6.")
endif()

set(TEXTMANAGER_IS_FIRST_QT ON)
if(TEXTMANAGER_QT_VERSION EQUAL 6)
  find_package(Qt5 5.15 QUIET) # without components it only tells where it is
  if(Qt5_DIR)
    set(TEXTMANAGER_IS_FIRST_QT OFF)
  endif()
endif()

set(TEXTMANAGER_QT Qt${TEXTMANAGER_QT_VERSION})
set(TEXTMANAGER_PACKAGE TextManagerLibrary${TEXTMANAGER_SUFFIX})

find_package(${TEXTMANAGER_QT} ${TEXTMANAGER_QT_MINIMUM} REQUIRED COMPONENTS Core)
