# 64-bit ARM. scripts/cross arm64 prepares what it needs.
set(architecture arm64)
set(triplet aarch64-linux-gnu)
set(emulator qemu-aarch64)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
