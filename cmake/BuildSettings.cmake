# How every target of the project is compiled.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

# CMake's own choice is -O3, with which the library is a sixth larger and a look-up no faster.
if(CMAKE_CXX_FLAGS_RELEASE STREQUAL "-O3 -DNDEBUG")
  set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
endif()

# What runs for each text is compiled for speed, the rest for size: the libraries are a fifth
# smaller so, and look-ups as fast.
option(TEXTMANAGER_COMPILE_FOR_SIZE "Compile for size (-Os) what does not run for each text" ON)

# Compiles a target for size, but for those of its sources that are named.
function(textmanager_compile_for_size target)
  if(TEXTMANAGER_COMPILE_FOR_SIZE)
    get_target_property(sources ${target} SOURCES)
    list(REMOVE_ITEM sources ${ARGN})
    set_property(SOURCE ${sources} APPEND PROPERTY
      COMPILE_OPTIONS "$<$<CONFIG:Release,RelWithDebInfo>:-Os>")
  endif()
endfunction()

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)

# Installed programs and libraries find each other wherever the prefix is moved to, and a device's
# own platform where it was found.
file(RELATIVE_PATH libdir_from_bindir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/${libdir_from_bindir}")
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)

# Else a 32-bit machine sees no file with a large inode number, and no time after January 2038.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  add_compile_definitions(_FILE_OFFSET_BITS=64 _TIME_BITS=64)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
add_compile_definitions(
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_STRICT_ITERATORS QT_NO_FOREACH
  QT_NO_URL_CAST_FROM_STRING
  # Warnings keep their file, line and function in release builds too.
  QT_MESSAGELOGCONTEXT)
