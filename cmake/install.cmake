# cmake --install BUILD --prefix DIR: library, command, headers, CMake package, pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS zentor EXPORT zentorTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS zentor_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY include/zentor DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT zentorTargets NAMESPACE zentor:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zentor)

configure_package_config_file(cmake/zentorConfig.cmake.in ${CMAKE_BINARY_DIR}/zentorConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zentor)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/zentorConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/zentorConfig.cmake ${CMAKE_BINARY_DIR}/zentorConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zentor)

file(RELATIVE_PATH ZENTOR_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/zentor.pc.in ${CMAKE_BINARY_DIR}/zentor.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/zentor.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
