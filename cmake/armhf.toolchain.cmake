# 32-bit ARM: needs the sysroot that "scripts/make-sysroot armhf build/sysroot/armhf" makes.
set(CMAKE_SYSTEM_PROCESSOR arm)
set(hlx_architecture armhf)
set(hlx_triplet arm-linux-gnueabihf)
set(hlx_emulator qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/DebianCross.cmake)
# Of a change of g++ 7 in passing arguments: all here is built with one compiler.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
