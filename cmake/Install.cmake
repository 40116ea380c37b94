# What an integrator gets: the library, its headers, the tools, and the files that let others find them.
include(CMakePackageConfigHelpers)
set(hlx_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/hlx-system-client)

install(TARGETS hlxsystemclient EXPORT HLXSystemClientTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ DESTINATION ${hlx_include_dir} FILES_MATCHING PATTERN "*.h")
install(FILES ${HLX_PLATFORM_PUBLIC_INCLUDE_DIR}/HLXMutex.h data/HLXSystemRecords.h DESTINATION ${hlx_include_dir})
# For the authors of the service: the generated proxy and skeleton, which the library exports. Needs gio-2.0.
install(FILES ${PROJECT_BINARY_DIR}/dbus/dbus_system.h DESTINATION ${hlx_include_dir})

set(hlx_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/HLXSystemClient)
install(EXPORT HLXSystemClientTargets NAMESPACE HLX:: DESTINATION ${hlx_cmake_dir})
configure_package_config_file(cmake/HLXSystemClientConfig.cmake.in
  ${PROJECT_BINARY_DIR}/HLXSystemClientConfig.cmake INSTALL_DESTINATION ${hlx_cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/HLXSystemClientConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/HLXSystemClientConfig.cmake
              ${PROJECT_BINARY_DIR}/HLXSystemClientConfigVersion.cmake DESTINATION ${hlx_cmake_dir})

configure_file(cmake/hlx-system-client.pc.in ${PROJECT_BINARY_DIR}/hlx-system-client.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/hlx-system-client.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
