# What the toolchain files of this folder share: Debian's cross compiler for `triplet`, what
# scripts/sysroot unpacked for `architecture`, and the program `emulator` to run what is built.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${triplet})

get_filename_component(CMAKE_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/${architecture} ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# pkg-config knows the packages of this machine else.
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/${triplet}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})

set(CMAKE_CROSSCOMPILING_EMULATOR ${emulator};-L;${CMAKE_SYSROOT})
