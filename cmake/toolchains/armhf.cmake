# 32-bit ARM with hardware floating point. scripts/cross armhf prepares what it needs.
set(architecture armhf)
set(triplet arm-linux-gnueabihf)
set(emulator qemu-arm)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
