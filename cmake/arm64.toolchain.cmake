# 64-bit ARM: needs the sysroot that "scripts/make-sysroot arm64 build/sysroot/arm64" makes.
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(hlx_architecture arm64)
set(hlx_triplet aarch64-linux-gnu)
set(hlx_emulator qemu-aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/DebianCross.cmake)
