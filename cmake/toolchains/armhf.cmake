# 32-bit ARM with hardware floating point. scripts/cross armhf prepares what it needs.
set(architecture armhf)
set(triplet arm-linux-gnueabihf)
set(emulator qemu-arm)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
# What gcc notes of calls changed before Qt 5.15 was built.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
