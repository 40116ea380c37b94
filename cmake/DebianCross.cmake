# Debian's cross compiler for `hlx_triplet`, with a sysroot of Debian's packages. Programs of the target run in `hlx_emulator`,
# tests only: nothing is run for the target while building.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${hlx_triplet}-gcc)
set(CMAKE_CXX_COMPILER ${hlx_triplet}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${hlx_triplet})

get_filename_component(CMAKE_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot/${hlx_architecture}/root ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/${hlx_triplet}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)
set(CMAKE_CROSSCOMPILING_EMULATOR ${hlx_emulator} -L ${CMAKE_SYSROOT})
