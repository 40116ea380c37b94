# What an integrator gets: the library, its headers, the tools, and the files that let others find them.
include(CMakePackageConfigHelpers)
set(hlx_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/hlx-system-client)

install(TARGETS hlxsystemclient EXPORT HLXSystemClientTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ ${PROJECT_BINARY_DIR}/include/ DESTINATION ${hlx_include_dir} FILES_MATCHING PATTERN "*.h")
install(FILES ${HLX_PLATFORM_PUBLIC_INCLUDE_DIR}/HLXMutex.h data/HLXSystemRecords.h DESTINATION ${hlx_include_dir})
# For the authors of the service: the generated proxy and skeleton, which the library exports. Needs gio-2.0.
install(FILES ${PROJECT_BINARY_DIR}/dbus/dbus_system.h DESTINATION ${hlx_include_dir})
install(DIRECTORY dbus/ DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/interfaces FILES_MATCHING PATTERN "com.vorn.*.xml")

set(hlx_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/HLXSystemClient)
install(EXPORT HLXSystemClientTargets NAMESPACE HLX:: DESTINATION ${hlx_cmake_dir})
configure_package_config_file(cmake/HLXSystemClientConfig.cmake.in
  ${PROJECT_BINARY_DIR}/HLXSystemClientConfig.cmake INSTALL_DESTINATION ${hlx_cmake_dir}
  PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/HLXSystemClientConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES cmake/HLXSimulatedTest.cmake ${PROJECT_BINARY_DIR}/HLXSystemClientConfig.cmake
              ${PROJECT_BINARY_DIR}/HLXSystemClientConfigVersion.cmake DESTINATION ${hlx_cmake_dir})

# pkg-config finds the prefix from where the file lies, so that an installed tree may be moved.
set(pc_prefix ${CMAKE_INSTALL_PREFIX})
cmake_path(RELATIVE_PATH pc_prefix BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
set(pc_libdir "\${prefix}")
cmake_path(APPEND pc_libdir ${CMAKE_INSTALL_LIBDIR})
set(pc_includedir "\${prefix}")
cmake_path(APPEND pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
foreach(name hlx-system-client hlx-system-service)
  configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# Documents, examples to copy, and units for those who want the simulator, or an application, started by systemd.
install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY examples/ packaging/dbus DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
        REGEX "/examples/CMakeLists.txt$" EXCLUDE PATTERN "__pycache__" EXCLUDE)
install(FILES platform/host/platform.conf.sample DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
if(HLX_BUILD_TOOLS)
  install(FILES packaging/systemd/hlx-simulator.service packaging/systemd/hlx-application@.service
          DESTINATION lib/systemd/user)
endif()
