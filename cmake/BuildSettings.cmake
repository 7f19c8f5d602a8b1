# How every target of the project is compiled.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

# CMake's own choice is -O3, with which the library is a sixth larger and a look-up no faster. Flags that
# the integrator gave stay as they are.
if(has_no_release_flags AND CMAKE_CXX_FLAGS_RELEASE STREQUAL "-O3 -DNDEBUG")
  set_property(CACHE CMAKE_CXX_FLAGS_RELEASE PROPERTY VALUE "-O2 -DNDEBUG")
endif()

# What runs for each text is compiled for speed, the rest for size: the libraries are a fifth
# smaller so, and look-ups as fast.
option(TEXTMANAGER_COMPILE_FOR_SIZE "Compile for size (-Os) what does not run for each text" ON)

# textmanager_compile_for_size(TARGET [EXCEPT SOURCE...]): compiles a target for size, but for the
# sources that run for each text.
function(textmanager_compile_for_size target)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" EXCEPT)
  if(TEXTMANAGER_COMPILE_FOR_SIZE)
    get_target_property(sources ${target} SOURCES)
    list(REMOVE_ITEM sources ${ARG_EXCEPT})
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

# Installed programs and libraries find each other wherever the prefix is moved to, unless the
# integrator says where they shall look.
if(NOT DEFINED CMAKE_INSTALL_RPATH)
  file(RELATIVE_PATH libdir_from_bindir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/${libdir_from_bindir}")
endif()
if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
  message(FATAL_ERROR "BUILD_SHARED_LIBS is off, but TextManagerLibrary is built as shared libraries only: "
    "the QML module and a device's own platform rely on it. Leave BUILD_SHARED_LIBS on, or unset it.")
endif()

set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
# What is built names no folder of the build machine, and is the same in every folder. Ninja names a
# source from where it builds, the debug information by its whole path.
file(RELATIVE_PATH source_from_build ${PROJECT_BINARY_DIR} ${PROJECT_SOURCE_DIR})
add_compile_options(
  -ffile-prefix-map=${source_from_build}=
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
  -ffile-prefix-map=${PROJECT_BINARY_DIR}=.)
# Else moc names a header by the way that leads from its own output, out of a build beside the sources.
set(CMAKE_AUTOMOC_PATH_PREFIX ON)

if(CMAKE_COMPILE_WARNING_AS_ERROR AND CMAKE_VERSION VERSION_LESS 3.24)
  add_compile_options(-Werror)
endif()
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
